// Sets of UTF-16 code units. Immutable, so they may be used on any thread. A set takes 8 KB.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <bitset>
#include <string_view>

#pragma GCC visibility push(default)

class NSCharacterSet : public NSObject {
    NS_CLASS(NSCharacterSet, NSObject)
public:
    using Members = std::bitset<0x10000>;

    explicit NSCharacterSet(const Members &members) : members_(members) {}

    static Ref<NSCharacterSet> characterSetWithCharactersInString(std::u16string_view characters);
    /// The characters that need no escape in the query of a URL: ASCII letters, digits and
    /// "-._~!$&'()*+,;=:@/?".
    static Ref<NSCharacterSet> URLQueryAllowedCharacterSet();

    /// Unicode's separators (categories Zs, Zl and Zp), U+0009 to U+000D and U+0085.
    static Ref<NSCharacterSet> whitespaceAndNewlineCharacterSet();

    Ref<NSCharacterSet> invertedSet() const { return make<NSCharacterSet>(~members_); }
    Ref<NSCharacterSet> setByRemovingCharactersInString(std::u16string_view characters) const;

    bool characterIsMember(unichar unit) const { return members_[unit]; }

    id copy() const override { return self(); }

private:
    const Members members_;
};

#pragma GCC visibility pop
