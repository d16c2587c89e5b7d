#include "Platform/Foundation/Text/NSCharacterSet.h"

#include "Platform/Runtime/Object/Class.h"

#include <unicode/uchar.h>

NS_IMPLEMENTATION(NSCharacterSet) {}

Ref<NSCharacterSet> NSCharacterSet::characterSetWithCharactersInString(std::u16string_view characters) {
    Members members;
    for (const char16_t unit : characters)
        members.set(unit);
    return make<NSCharacterSet>(members);
}

Ref<NSCharacterSet> NSCharacterSet::URLQueryAllowedCharacterSet() {
    static const auto &set = *new Ref<NSCharacterSet>(characterSetWithCharactersInString(
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/?"));
    return set;
}

Ref<NSCharacterSet> NSCharacterSet::whitespaceAndNewlineCharacterSet() {
    static const auto &set = *new Ref<NSCharacterSet>([] {
        Members members;
        for (UChar32 unit = 0; unit < 0x10000; ++unit)
            members[static_cast<std::size_t>(unit)] = (U_GET_GC_MASK(unit) & U_GC_Z_MASK) != 0;
        for (const char16_t control : std::u16string_view(u"\t\n\v\f\r\u0085"))
            members.set(control);
        return make<NSCharacterSet>(members);
    }());
    return set;
}

Ref<NSCharacterSet> NSCharacterSet::setByRemovingCharactersInString(std::u16string_view characters) const {
    Members members = members_;
    for (const char16_t unit : characters)
        members.reset(unit);
    return make<NSCharacterSet>(members);
}
