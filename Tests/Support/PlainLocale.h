// C's own numbers, to compare with, whatever locale the program runs in.
#pragma once

#include "Tests/Support/Testing.h"

#include <locale.h>

/// C's own locale on this thread while it lives.
class PlainLocale : NoCopies {
public:
    ~PlainLocale() {
        uselocale(previous_);
        freelocale(plain_);
    }

private:
    const locale_t plain_ = newlocale(LC_ALL_MASK, "C", nullptr), previous_ = uselocale(plain_);
};

/// By the C library, which rounds correctly.
inline double plainDouble(const std::string &text) {
    const PlainLocale plain;
    return std::strtod(text.c_str(), nullptr);
}
