// The named character references of HTML 4.01, and "&apos;". Each map is sorted by code unit.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

namespace qn {

struct HTMLEscape {
    const char16_t *text; ///< "&amp;", with a zero at its end
    unichar unit;
};
static_assert(sizeof(HTMLEscape) == 16);

/// The special characters: markup, punctuation and blanks beyond Latin-1.
extern const HTMLEscape gUnicodeHTMLEscapeMap[33];
/// All that have a name.
extern const HTMLEscape gAsciiHTMLEscapeMap[253];

/// -1 when the key comes before the entry, 1 when it comes after, 0 when it is the entry's.
constexpr int EscapeMapCompare(unichar key, const HTMLEscape &entry) {
    return (key > entry.unit) - (key < entry.unit);
}

} // namespace qn
