#include "Platform/Foundation/NSCharacterSet.h"

#include "Platform/Runtime/Class.h"

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
