// Percent-encoding.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

Ref<NSCharacterSet> unreservedCharacterSet() {
    static const auto &set = *new Ref<NSCharacterSet>(
        NSCharacterSet::URLQueryAllowedCharacterSet()->setByRemovingCharactersInString(
            u"!#$&'()*+,/:;=?@[]"));
    return set;
}

} // namespace

Ref<NSString> qn::URLEncode(const Ref<NSString> &text) {
    return text ? text->stringByAddingPercentEncodingWithAllowedCharacters(
                      NSCharacterSet::URLQueryAllowedCharacterSet())
                : nullptr;
}

Ref<NSString> qn::URLDecode(const Ref<NSString> &text) {
    return text ? text->stringByRemovingPercentEncoding() : nullptr;
}

Ref<NSString> qn::URLEntityEncode(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    const auto encoded = text->stringByAddingPercentEncodingWithAllowedCharacters(unreservedCharacterSet());
    return encoded ? encoded : text;
}

Ref<NSString> qn::URLEntityDecode(const Ref<NSString> &text) {
    const auto decoded = URLDecode(text);
    return decoded ? decoded : text;
}
