// Rules for passwords. Any thread.
//
//     qn::PasswordRules rules;
//     rules.words = {userName};
//     if (const auto faults = qn::passwordFaults(password, rules); !faults.empty())
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <vector>

class NSString;

namespace qn {

/// Lengths are in Unicode characters.
struct PasswordRules {
    NSUInteger leastLength = 12, mostLength = 128;
    NSUInteger leastKinds = 1; ///< of lower case, upper case, digits and everything else
    NSUInteger longestRun = 3; ///< the most equal or successive characters in a row ("aaa", "abc", "321")
    std::vector<Ref<NSString>> words; ///< that it may not contain, ignoring case: names, known passwords
};

enum class PasswordFault { tooShort, tooLong, tooFewKinds, longRun, knownWord };

/// The rules that the password breaks, each once, in the order above. A password of none counts as an empty
/// one. The time is proportional to the length of the password times the number of words.
std::vector<PasswordFault> passwordFaults(const Ref<NSString> &password, const PasswordRules &rules = {});

} // namespace qn
