#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/PasswordRules.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <bitset>
#include <unicode/uchar.h>

namespace {

using Characters = std::vector<qn::han::Character>;

std::size_t kindOf(char32_t character) {
    const auto value = static_cast<UChar32>(character);
    return u_isULowercase(value) ? 0 : u_isUUppercase(value) ? 1 : u_isdigit(value) ? 2 : 3;
}

NSUInteger kindsOf(const Characters &characters) {
    std::bitset<4> kinds;
    for (const auto &one : characters)
        kinds.set(kindOf(one.value));
    return kinds.count();
}

/// The most characters in a row, each of which follows the one before it by the same step of -1, 0 or 1.
NSUInteger longestRunOf(const Characters &characters) {
    NSUInteger longest = characters.empty() ? 0 : 1, run = 1;
    std::int64_t step = 0;
    for (std::size_t i = 1; i < characters.size(); ++i) {
        const auto next = std::int64_t{characters[i].value} - std::int64_t{characters[i - 1].value};
        run = next < -1 || next > 1 ? 1 : run > 1 && next == step ? run + 1 : 2;
        step = next;
        longest = std::max(longest, run);
    }
    return longest;
}

bool hasWord(const Ref<NSString> &password, const std::vector<Ref<NSString>> &words) {
    const auto folded = password->lowercaseString();
    return std::ranges::any_of(words, [&](const Ref<NSString> &word) {
        return word && folded->containsString(word->lowercaseString());
    });
}

} // namespace

std::vector<qn::PasswordFault> qn::passwordFaults(const Ref<NSString> &password, const PasswordRules &rules) {
    const auto text = password ? password : NSString::string();
    const Characters characters = han::charactersOf(text->units());
    const std::pair<PasswordFault, bool> findings[] = {
        {PasswordFault::tooShort, characters.size() < rules.leastLength},
        {PasswordFault::tooLong, characters.size() > rules.mostLength},
        {PasswordFault::tooFewKinds, kindsOf(characters) < rules.leastKinds},
        {PasswordFault::longRun, longestRunOf(characters) > rules.longestRun},
        {PasswordFault::knownWord, hasWord(text, rules.words)}};
    std::vector<PasswordFault> faults;
    for (const auto &[fault, isFound] : findings)
        if (isFound)
            faults.push_back(fault);
    return faults;
}
