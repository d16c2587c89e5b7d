#include "Platform/Foundation/NSLocale.h"

#include "Platform/Foundation/KeyedHash.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Runtime/Class.h"

#include <unicode/uloc.h>

NS_IMPLEMENTATION(NSLocale) {}

std::string NSLocaleCurrentIdentifier() {
    const std::string identifier = uloc_getDefault();
    return identifier == "en_US_POSIX" ? "en_US" : identifier;
}

bool NSLocale::isEqual(const id &other) const {
    const auto locale = as<NSLocale>(other);
    return locale && locale->identifier_ == identifier_;
}

NSUInteger NSLocale::hash() const {
    return keyedHash(identifier_);
}

Ref<NSString> NSLocale::description() const {
    return NSString::stringWithUTF8String(identifier_);
}
