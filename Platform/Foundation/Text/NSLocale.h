// The language and region whose conventions numbers and dates follow. Immutable; any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

enum class NSLocaleCategory { Numbers, Dates };

/// An ICU identifier such as "de_DE", from the environment as it is now: the first of LC_ALL, LC_NUMERIC or
/// LC_TIME, and LANG that is not empty. Where none chooses a language, English as of the United States.
std::string NSLocaleCurrentIdentifier(NSLocaleCategory category);

class NSLocale : public NSObject {
    NS_CLASS(NSLocale, NSObject)
public:
    /// An identifier such as "de_DE", "th_TH" or "zh_CN@calendar=chinese".
    explicit NSLocale(std::string identifier) : identifier_(std::move(identifier)) {}

    /// That of dates.
    static Ref<NSLocale> currentLocale() {
        return make<NSLocale>(NSLocaleCurrentIdentifier(NSLocaleCategory::Dates));
    }
    /// English for machines: its names and digits never change.
    static Ref<NSLocale> posixLocale() { return make<NSLocale>("en_US_POSIX"); }

    const std::string &localeIdentifier() const { return identifier_; }
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

private:
    const std::string identifier_;
};
