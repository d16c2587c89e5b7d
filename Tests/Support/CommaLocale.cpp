// Programs with this file run in the locale that ZK_TEST_LOCALE names, if it is there: one whose numbers have
// a decimal comma, or the program ends at once. The language stays that of the environment.
#include "Tests/Support/Testing.h"
#include <clocale>

namespace {

[[maybe_unused]] const bool entered = [] {
    const char *const name = std::getenv("ZK_TEST_LOCALE");
    if (!name)
        return false;
    for (const int category : {LC_CTYPE, LC_NUMERIC, LC_TIME, LC_COLLATE, LC_MONETARY})
        if (!std::setlocale(category, name))
            std::abort();
    if (std::localeconv()->decimal_point != std::string_view(","))
        std::abort();
    return true;
}();

} // namespace
