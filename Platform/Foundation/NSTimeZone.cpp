#include "Platform/Foundation/NSTimeZone.h"

#include "Platform/Foundation/KeyedHash.h"
#include "Platform/Runtime/Class.h"

#include <unicode/ucal.h>

namespace {

constexpr std::int32_t longestName = 128;

} // namespace

NS_IMPLEMENTATION(NSTimeZone) {}

Ref<NSTimeZone> NSTimeZone::timeZoneWithName(const Ref<NSString> &name) {
    if (!name || name->length() > longestName)
        return nullptr;
    char16_t canonical[longestName];
    UErrorCode status = U_ZERO_ERROR;
    ucal_getCanonicalTimeZoneID(name->units().data(), static_cast<std::int32_t>(name->length()), canonical,
                                longestName, nullptr, &status);
    return U_SUCCESS(status) ? make<NSTimeZone>(name->units()) : nullptr;
}

Ref<NSTimeZone> NSTimeZone::defaultTimeZone() {
    char16_t name[longestName];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = ucal_getDefaultTimeZone(name, longestName, &status);
    return make<NSTimeZone>(U_SUCCESS(status) ? std::u16string(name, static_cast<std::size_t>(length))
                                              : u"GMT");
}

bool NSTimeZone::isEqual(const id &other) const {
    const auto zone = as<NSTimeZone>(other);
    return zone && zone->name_ == name_;
}

NSUInteger NSTimeZone::hash() const {
    return keyedHash(name_);
}
