// What is asked of passwords. Any thread.
//
//     qn::PasswordRules rules;
//     rules.words = {userName};
//     if (const auto faults = qn::passwordFaults(password, rules); !faults.empty())
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <vector>

class NSString;

namespace qn {

/// Lengths are in characters of Unicode.
struct PasswordRules {
    NSUInteger leastLength = 12, mostLength = 128;
    NSUInteger leastKinds = 1; ///< of lower case, upper case, digits and everything else
    NSUInteger longestRun = 3; ///< of the same or of successive characters, such as "aaa", "abc", "321"
    std::vector<Ref<NSString>> words; ///< that may not be in it, in any case: names, known passwords
};

enum class PasswordFault { tooShort, tooLong, tooFewKinds, longRun, knownWord };

/// Which rules the password breaks, each once, in the order above; none is an empty one. Time grows with the
/// length of the password times the number of words.
std::vector<PasswordFault> passwordFaults(const Ref<NSString> &password, const PasswordRules &rules = {});

} // namespace qn
