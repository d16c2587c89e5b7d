#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/System/Localization.h"
#include "Platform/Foundation/System/NSBundle.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

Ref<NSString> resourceText(const Ref<NSString> &name, const std::string &type) {
    const auto data = NSBundle::mainBundle().dataForResource(name->utf8(), type);
    return data ? NSString::stringWithUTF8String(
                      {reinterpret_cast<const char *>(data->bytes()), data->length()})
                : nullptr;
}

} // namespace

Ref<NSData> qn::dataValue(const Ref<NSString> &text) {
    return text ? text->dataUsingUTF8() : nullptr;
}

Ref<NSString> qn::stringByTrim(const Ref<NSString> &text) {
    return text ? text->stringByTrimmingCharactersInSet(NSCharacterSet::whitespaceAndNewlineCharacterSet())
                : nullptr;
}

bool qn::isAllNum(const Ref<NSString> &text) {
    return text && text->units().find_first_not_of(u"0123456789") == std::u16string::npos;
}

NSRange qn::rangeOfAll(const Ref<NSString> &text) {
    return {0, text ? text->length() : 0};
}

Ref<NSString> qn::localized(const Ref<NSString> &key) {
    return key ? NSLocalizedString(key) : nullptr;
}

id qn::jsonValueDecoded(const Ref<NSString> &text) {
    return jsonValueDecoded(dataValue(text));
}

Ref<NSString> qn::stringNamed(const Ref<NSString> &name) {
    if (!name)
        return nullptr;
    const auto text = resourceText(name, "");
    return text ? text : resourceText(name, "txt");
}
