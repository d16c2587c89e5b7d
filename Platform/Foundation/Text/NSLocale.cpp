#include "Platform/Foundation/Text/NSLocale.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <unicode/uloc.h>

NS_IMPLEMENTATION(NSLocale) {}

namespace {

/// Turns "sr_RS.UTF-8@latin" into ICU's "sr_Latn_RS". A modifier that is a keyword is kept
/// ("@calendar=chinese"); others are dropped ("@euro").
std::string identifierOf(std::string_view environment) {
    static constexpr std::pair<std::string_view, const char *> scripts[] = {
        {"latin", "_Latn"}, {"cyrillic", "_Cyrl"}, {"devanagari", "_Deva"}};
    const auto at = std::min(environment.find('@'), environment.size());
    const auto modifier = environment.substr(std::min(at + 1, environment.size()));
    std::string name(environment.substr(0, std::min(at, environment.find('.'))));
    if (name == "C" || name == "POSIX")
        name = "en_US";
    for (const auto &[word, script] : scripts)
        if (modifier == word)
            name.insert(std::min(name.find('_'), name.size()), script);
    if (modifier.find('=') != modifier.npos)
        name.append("@").append(modifier);
    char identifier[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    const auto length = uloc_getName(name.c_str(), identifier, sizeof identifier, &status);
    const std::string_view found(identifier, U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return found.empty() || found == "en_US_POSIX" ? "en_US" : std::string(found);
}

} // namespace

std::string NSLocaleCurrentIdentifier(NSLocaleCategory category) {
    const char *chosen = "";
    for (const char *name :
         {"LC_ALL", category == NSLocaleCategory::Dates ? "LC_TIME" : "LC_NUMERIC", "LANG"})
        if (const char *value = std::getenv(name); value && !*chosen)
            chosen = value;
    thread_local std::string environment = "C", identifier = "en_US";
    if (environment != chosen) {
        identifier = identifierOf(*chosen ? chosen : "C");
        environment = chosen;
    }
    return identifier;
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
