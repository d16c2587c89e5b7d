#include "Platform/Foundation/Dates/NSTimeZone.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Dates/TimeZoneDatabase.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/Class.h"

#include <cstdlib>
#include <unicode/timezone.h>

namespace {

constexpr NSUInteger longestName = 128;

using Rules = TimeZoneDatabase::Rules;

/// The rules for names that only ICU knows, such as "PST", and for offsets.
Rules rulesOfICU(const icu::UnicodeString &name) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString canonical;
    UBool isZone = false;
    icu::TimeZone::getCanonicalID(name, canonical, isZone, status);
    if (U_FAILURE(status))
        return nullptr;
    if (std::string file; isZone)
        return TimeZoneDatabase::system().rules(canonical.toUTF8String(file));
    const std::unique_ptr<icu::TimeZone> offset(icu::TimeZone::createTimeZone(canonical));
    if (*offset == icu::TimeZone::getUnknown())
        return nullptr;
    return std::make_shared<const TimeZoneRules>(TimeZoneRules::Offset{offset->getRawOffset() / 1000});
}

Ref<NSTimeZone> makeZone(const TimeZoneDatabase::Zone &zone) {
    const auto name = NSString::stringWithUTF8String(zone.name);
    return zone.rules && name ? make<NSTimeZone>(name->units(), zone.rules) : nullptr;
}

Ref<NSTimeZone> machinesZone() {
    TimeZoneDatabase &database = TimeZoneDatabase::system();
    const char *text = std::getenv("TZ");
    if (auto zone = makeZone(text ? database.zoneOfEnvironment(text) : database.zoneOfFile("/etc/localtime")))
        return zone;
    NSLog("time zone %s is not known; times are in UTC", text ? text : "/etc/localtime");
    return makeZone(database.zoneOfEnvironment(""));
}

struct Chosen {
    locking::Mutex lock;
    Ref<NSTimeZone> zone ZK_GUARDED_BY(lock);
};

Chosen &chosen() {
    static auto &made = *new Chosen;
    return made;
}

} // namespace

NS_IMPLEMENTATION(NSTimeZone) {}

NSTimeZone::NSTimeZone(std::u16string name, std::shared_ptr<const TimeZoneRules> rules)
    : name_(std::move(name)), rules_(std::move(rules)) {}

Ref<NSTimeZone> NSTimeZone::timeZoneWithName(const Ref<NSString> &name) {
    if (!name || name->length() > longestName)
        return nullptr;
    const icu::UnicodeString units(false, name->units().data(), static_cast<std::int32_t>(name->length()));
    std::string file;
    Rules rules = TimeZoneDatabase::system().rules(units.toUTF8String(file));
    if (!rules)
        rules = rulesOfICU(units);
    return rules ? make<NSTimeZone>(name->units(), std::move(rules)) : nullptr;
}

Ref<NSTimeZone> NSTimeZone::defaultTimeZone() {
    static const auto &machines = *new Ref<NSTimeZone>(machinesZone());
    const locking::MutexLock guard(chosen().lock);
    return chosen().zone ? chosen().zone : machines;
}

void NSTimeZone::setDefaultTimeZone(const Ref<NSTimeZone> &zone) {
    const locking::MutexLock guard(chosen().lock);
    chosen().zone = zone;
}

bool NSTimeZone::isEqual(const id &other) const {
    const auto zone = as<NSTimeZone>(other);
    return zone && zone->name_ == name_;
}

NSUInteger NSTimeZone::hash() const {
    return keyedHash(name_);
}
