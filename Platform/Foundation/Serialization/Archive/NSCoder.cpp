#include "Platform/Foundation/Serialization/Archive/NSCoder.h"

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

NS_IMPLEMENTATION(NSCoder) {
    cls.method<&NSCoder::encodeObject>("encodeObject:forKey:")
        .method<&NSCoder::decodeObjectForKey>("decodeObjectForKey:")
        .method<&NSCoder::containsValueForKey>("containsValueForKey:");
}

namespace {

[[gnu::init_priority(101)]] const runtime::Agreement agreements[] = {
    runtime::Agreement(coding::encodeWithCoder),
    runtime::Agreement(coding::initWithCoder),
};

[[noreturn]] void raiseMissing(const NSCoder &coder, const char *operation) {
    throw NSException(NSInvalidArgumentException,
                      "-[" + coder.isa()->name() + " " + operation + "]: not an operation of this coder");
}

Ref<NSError> mismatch(const Ref<NSString> &key, const char *wanted) {
    const auto reason = NSString::stringWithFormat("The value of \"%@\" is not %s.", key, wanted);
    return cocoaError(NSCoderReadCorruptError, reason);
}

} // namespace

void NSCoder::encodeObject(const id &, const Ref<NSString> &) {
    raiseMissing(*this, "encodeObject:forKey:");
}
id NSCoder::decodeObjectForKey(const Ref<NSString> &) {
    raiseMissing(*this, "decodeObjectForKey:");
}
void NSCoder::encodePropertyList(const id &, const Ref<NSString> &) {
    raiseMissing(*this, "encodePropertyList:forKey:");
}
id NSCoder::decodePropertyListForKey(const Ref<NSString> &) {
    raiseMissing(*this, "decodePropertyListForKey:");
}
bool NSCoder::containsValueForKey(const Ref<NSString> &) {
    raiseMissing(*this, "containsValueForKey:");
}
void NSCoder::failWithError(const Ref<NSError> &) {
    raiseMissing(*this, "failWithError:");
}

void NSCoder::encodeBool(bool value, const Ref<NSString> &key) {
    encodePropertyList(NSNumber::numberWithBool(value), key);
}
void NSCoder::encodeInt32(std::int32_t value, const Ref<NSString> &key) {
    encodePropertyList(NSNumber::numberWithInt(value), key);
}
void NSCoder::encodeInt64(std::int64_t value, const Ref<NSString> &key) {
    encodePropertyList(NSNumber::numberWithLongLong(value), key);
}
void NSCoder::encodeFloat(float value, const Ref<NSString> &key) {
    encodePropertyList(NSNumber::numberWithFloat(value), key);
}
void NSCoder::encodeDouble(double value, const Ref<NSString> &key) {
    encodePropertyList(NSNumber::numberWithDouble(value), key);
}
void NSCoder::encodeBytes(const void *bytes, NSUInteger length, const Ref<NSString> &key) {
    encodePropertyList(NSData::dataWithBytes(bytes, length), key);
}

Ref<NSNumber> NSCoder::decodeNumber(const Ref<NSString> &key) {
    const id value = decodePropertyListForKey(key);
    if (auto number = as<NSNumber>(value))
        return number;
    if (value)
        failWithError(mismatch(key, "a number"));
    return NSNumber::numberWithInt(0);
}

bool NSCoder::decodeBoolForKey(const Ref<NSString> &key) {
    return decodeNumber(key)->boolValue();
}

std::int32_t NSCoder::decodeInt32ForKey(const Ref<NSString> &key) {
    const std::int64_t value = decodeInt64ForKey(key);
    if (value == static_cast<std::int32_t>(value))
        return static_cast<std::int32_t>(value);
    failWithError(mismatch(key, "a whole number of 32 bits"));
    return 0;
}

std::int64_t NSCoder::decodeInt64ForKey(const Ref<NSString> &key) {
    const auto number = decodeNumber(key);
    const std::int64_t value = number->longLongValue();
    if (number->isEqual(NSNumber::numberWithLongLong(value)))
        return value;
    failWithError(mismatch(key, "a whole number of 64 bits"));
    return 0;
}

float NSCoder::decodeFloatForKey(const Ref<NSString> &key) {
    return decodeNumber(key)->floatValue();
}
double NSCoder::decodeDoubleForKey(const Ref<NSString> &key) {
    return decodeNumber(key)->doubleValue();
}

Ref<NSData> NSCoder::decodeBytesForKey(const Ref<NSString> &key) {
    const id value = decodePropertyListForKey(key);
    auto bytes = as<NSData>(value);
    if (value && !bytes)
        failWithError(mismatch(key, "data"));
    return bytes;
}
