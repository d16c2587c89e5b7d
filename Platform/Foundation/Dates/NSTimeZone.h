// Time zones, by their names in the system's time-zone database ("Europe/Berlin", "GMT") or as an offset
// ("GMT+05:30"). A zone is read from the database once, at its first use. Immutable, so any thread may use
// one.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"
#include "Platform/Foundation/Text/NSString.h"

#pragma GCC visibility push(default)

class NSTimeZone : public NSObject {
    NS_CLASS(NSTimeZone, NSObject)
public:
    /// For `timeZoneWithName`, which finds the rules of a name.
    NSTimeZone(std::u16string name, std::shared_ptr<const TimeZoneRules> rules);

    /// None for none and for an unknown name.
    static Ref<NSTimeZone> timeZoneWithName(const Ref<NSString> &name);
    /// The zone set by `setDefaultTimeZone`, or else the machine's: that of the environment's TZ, understood
    /// as by the C library (a name, ":" and the path of a file, or rules such as
    /// "CET-1CEST,M3.5.0,M10.5.0/3", which are then the zone's name); without TZ that of /etc/localtime. UTC,
    /// with a log entry, when that yields no zone.
    static Ref<NSTimeZone> defaultTimeZone();
    /// With none, the default is again the machine's, which is determined once.
    static void setDefaultTimeZone(const Ref<NSTimeZone> &zone);

    Ref<NSString> name() const { return make<NSString>(name_); }
    const std::u16string &nameUnits() const { return name_; }
    const std::shared_ptr<const TimeZoneRules> &rules() const { return rules_; }

    /// By name.
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override { return name(); }
    id copy() const override { return self(); }

private:
    const std::u16string name_;
    const std::shared_ptr<const TimeZoneRules> rules_;
};

#pragma GCC visibility pop
