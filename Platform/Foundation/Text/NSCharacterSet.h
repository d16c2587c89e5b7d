// Sets of UTF-16 code units. Immutable; any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <bitset>
#include <string_view>

class NSCharacterSet : public NSObject {
    NS_CLASS(NSCharacterSet, NSObject)
public:
    using Members = std::bitset<0x10000>;

    explicit NSCharacterSet(const Members &members) : members_(members) {}

    static Ref<NSCharacterSet> characterSetWithCharactersInString(std::u16string_view characters);
    /// What may stand in the query of a URL as it is: ASCII letters, digits and "-._~!$&'()*+,;=:@/?".
    static Ref<NSCharacterSet> URLQueryAllowedCharacterSet();

    /// Blanks of every kind, tabs and line ends.
    static Ref<NSCharacterSet> whitespaceAndNewlineCharacterSet();

    Ref<NSCharacterSet> invertedSet() const { return make<NSCharacterSet>(~members_); }
    Ref<NSCharacterSet> setByRemovingCharactersInString(std::u16string_view characters) const;

    bool characterIsMember(unichar unit) const { return members_[unit]; }

    id copy() const override { return self(); }

private:
    const Members members_;
};
