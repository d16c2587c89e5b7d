// The language and region whose conventions numbers and dates follow. Immutable, so any thread may use one.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

#pragma GCC visibility push(default)

enum class NSLocaleCategory { Numbers, Dates };

/// The ICU identifier, e.g. "de_DE", that the environment selects at this moment: the first of LC_ALL,
/// LC_NUMERIC or LC_TIME (by the category), and LANG that is not empty; "en_US" when all are empty or select
/// no language.
std::string NSLocaleCurrentIdentifier(NSLocaleCategory category);

class NSLocale : public NSObject {
    NS_CLASS(NSLocale, NSObject)
public:
    /// An ICU identifier such as "de_DE", "th_TH" or "zh_CN@calendar=chinese". It is not checked.
    explicit NSLocale(std::string identifier) : identifier_(std::move(identifier)) {}

    /// The environment's locale for dates.
    static Ref<NSLocale> currentLocale() {
        return make<NSLocale>(NSLocaleCurrentIdentifier(NSLocaleCategory::Dates));
    }
    /// "en_US_POSIX", for texts read by machines: its names and digits are the same everywhere.
    static Ref<NSLocale> posixLocale() { return make<NSLocale>("en_US_POSIX"); }

    const std::string &localeIdentifier() const { return identifier_; }
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

private:
    const std::string identifier_;
};

#pragma GCC visibility pop
