// Rules that tie the time of day of a place to time, by their names in the time-zone database
// ("Europe/Berlin", "GMT", "GMT+05:30"). Immutable; any thread.
#pragma once

#include "Platform/Foundation/NSString.h"

class NSTimeZone : public NSObject {
    NS_CLASS(NSTimeZone, NSObject)
public:
    /// `timeZoneWithName` looks first whether the zone exists.
    explicit NSTimeZone(std::u16string name) : name_(std::move(name)) {}

    /// None for none and for a name that is not known.
    static Ref<NSTimeZone> timeZoneWithName(const Ref<NSString> &name);
    /// The machine's, or what the process set in its place.
    static Ref<NSTimeZone> defaultTimeZone();

    Ref<NSString> name() const { return make<NSString>(name_); }
    const std::u16string &nameUnits() const { return name_; }

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override { return name(); }
    id copy() const override { return self(); }

private:
    const std::u16string name_;
};
