// The language and region whose conventions numbers and dates follow.
#pragma once

#include <string>

/// An ICU identifier such as "de_DE", from the environment. Where no language was chosen, English as of the
/// United States. Any thread.
std::string NSLocaleCurrentIdentifier();
