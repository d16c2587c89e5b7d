// Rules that tie the time of day of a place to time, by their names in the system's time-zone database
// ("Europe/Berlin", "GMT") or as an offset ("GMT+05:30"). The rules are the database's as it was when a zone
// was first used. Immutable; any thread.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"
#include "Platform/Foundation/Text/NSString.h"

class NSTimeZone : public NSObject {
    NS_CLASS(NSTimeZone, NSObject)
public:
    /// `timeZoneWithName` finds the rules of a name.
    NSTimeZone(std::u16string name, std::shared_ptr<const TimeZoneRules> rules);

    /// Returns none if the argument is none or a name that is not known.
    static Ref<NSTimeZone> timeZoneWithName(const Ref<NSString> &name);
    /// What the process set, or else the machine's: the zone that the environment's TZ means to the C library
    /// (a name, ":" and the path of a file, or rules such as "CET-1CEST,M3.5.0,M10.5.0/3", by which it is
    /// then named), and without TZ that of /etc/localtime. Where there is none, and for a TZ that means
    /// nothing, UTC; the log says so.
    static Ref<NSTimeZone> defaultTimeZone();
    /// None for the machine's, as found at its first use.
    static void setDefaultTimeZone(const Ref<NSTimeZone> &zone);

    Ref<NSString> name() const { return make<NSString>(name_); }
    const std::u16string &nameUnits() const { return name_; }
    const std::shared_ptr<const TimeZoneRules> &rules() const { return rules_; }

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override { return name(); }
    id copy() const override { return self(); }

private:
    const std::u16string name_;
    const std::shared_ptr<const TimeZoneRules> rules_;
};
