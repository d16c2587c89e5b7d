// The named character references of HTML 4.01, and "&apos;". Both maps are sorted by code unit.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

namespace qn {

struct HTMLEscape {
    const char16_t *text; ///< "&amp;", zero-terminated
    unichar unit;
};
static_assert(sizeof(HTMLEscape) == 16);

/// The special characters: markup, spaces and punctuation, and a few letters beyond Latin-1.
extern const HTMLEscape gUnicodeHTMLEscapeMap[33];
/// All named characters.
extern const HTMLEscape gAsciiHTMLEscapeMap[253];

/// -1 when the key comes before the entry's unit, 1 when after it, 0 when they are equal.
constexpr int EscapeMapCompare(unichar key, const HTMLEscape &entry) {
    return (key > entry.unit) - (key < entry.unit);
}

} // namespace qn

#pragma GCC visibility pop
