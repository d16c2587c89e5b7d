// Numbers and bytes that texts write out.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSNumber/NSNumber+QNCommon.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

template <class Value>
Value valueOrZero(const Ref<NSString> &text, Value (NSNumber::*value)() const) {
    const auto number = qn::numberValue(text);
    return number ? (number.get()->*value)() : Value{0};
}

} // namespace

Ref<NSNumber> qn::numberValue(const Ref<NSString> &text) {
    return numberWithString(text);
}

std::int8_t qn::charValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::charValue);
}

std::uint8_t qn::unsignedCharValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::unsignedCharValue);
}

std::int16_t qn::shortValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::shortValue);
}

std::uint16_t qn::unsignedShortValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::unsignedShortValue);
}

std::uint32_t qn::unsignedIntValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::unsignedIntValue);
}

std::int64_t qn::longValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::longLongValue);
}

std::uint64_t qn::unsignedLongValue(const Ref<NSString> &text) {
    return unsignedLongLongValue(text);
}

std::uint64_t qn::unsignedLongLongValue(const Ref<NSString> &text) {
    return valueOrZero(text, &NSNumber::unsignedLongLongValue);
}

NSUInteger qn::unsignedIntegerValue(const Ref<NSString> &text) {
    return unsignedLongLongValue(text);
}

Ref<NSData> qn::hexData(const Ref<NSString> &text) {
    return dataWithHexString(text);
}
