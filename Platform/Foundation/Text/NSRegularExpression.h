// Regular expressions in ICU's syntax. Immutable, so any thread may use one.
//
//     const auto expression = NSRegularExpression::regularExpressionWithPattern(u"(\\d+)%"_ns);
//     expression->stringByReplacingMatchesInString(u"toner 5%"_ns, u"$1 of 100"_ns);    // "toner 5 of 100"
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSRegularExpression : public NSObject {
    NS_CLASS(NSRegularExpression, NSObject)
public:
    /// Owns ICU's expression.
    explicit NSRegularExpression(void *expression) : expression_(expression) {}
    ~NSRegularExpression() override;

    /// None when the pattern is none or malformed.
    static Ref<NSRegularExpression> regularExpressionWithPattern(const Ref<NSString> &pattern);

    /// The text with every match replaced; "$1" stands for what the first group matched. None when an
    /// argument is none, when the replacement refers to a missing group, when a text has more than 2^29 code
    /// units, and when matching takes too many steps (as catastrophic backtracking does) or too much memory.
    Ref<NSString> stringByReplacingMatchesInString(const Ref<NSString> &text,
                                                   const Ref<NSString> &replacement) const;

private:
    void *const expression_; ///< never used itself: every search clones it, so threads need no lock
};

#pragma GCC visibility pop
