// Splits a pattern of Unicode's date fields: runs of the same letter are fields, the rest is text, in which
// letters are quoted with ' ('' is a quotation mark).
#pragma once

#include "Platform/Ascii/Ascii.h"

#include <algorithm>
#include <string_view>

/// Calls `field(letter, count)` and `text(unit)` in the order of the pattern. False when a quotation is not
/// closed.
template <class Field, class Text>
bool walkDatePattern(std::u16string_view pattern, Field field, Text text) {
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size();) {
        const char16_t unit = pattern[i];
        std::size_t end = i + 1;
        if (unit == u'\'' && pattern.substr(end).starts_with(u'\'')) {
            text(unit);
            ++end;
        } else if (unit == u'\'') {
            quoted = !quoted;
        } else if (quoted || !ascii::isLetter(unit)) {
            text(unit);
        } else {
            end = std::min(pattern.find_first_not_of(unit, i), pattern.size());
            field(unit, end - i);
        }
        i = end;
    }
    return !quoted;
}
