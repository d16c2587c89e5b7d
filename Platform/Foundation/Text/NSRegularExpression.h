// Regular expressions, as ICU writes them. Immutable; any thread.
//
//     const auto expression = NSRegularExpression::regularExpressionWithPattern(u"(\\d+)%"_ns);
//     expression->stringByReplacingMatchesInString(u"toner 5%"_ns, u"$1 of 100"_ns);    // "toner 5 of 100"
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSRegularExpression : public NSObject {
    NS_CLASS(NSRegularExpression, NSObject)
public:
    /// Owns ICU's expression.
    explicit NSRegularExpression(void *expression) : expression_(expression) {}
    ~NSRegularExpression() override;

    /// Returns none if the argument is none or a malformed pattern.
    static Ref<NSRegularExpression> regularExpressionWithPattern(const Ref<NSString> &pattern);

    /// The text with every match replaced; "$1" stands for what the first group matched. None when a match
    /// takes too many steps or too much memory, both of which are bounded.
    Ref<NSString> stringByReplacingMatchesInString(const Ref<NSString> &text,
                                                   const Ref<NSString> &replacement) const;

private:
    void *const expression_; ///< only ever cloned
};
