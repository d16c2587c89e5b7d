#include "Platform/Foundation/NSLocale.h"

#include <unicode/uloc.h>

std::string NSLocaleCurrentIdentifier() {
    const std::string identifier = uloc_getDefault();
    return identifier == "en_US_POSIX" ? "en_US" : identifier;
}
