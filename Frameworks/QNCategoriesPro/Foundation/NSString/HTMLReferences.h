// The character references of HTML within a text: "&amp;", "&#38;", "&#x26;". Any thread.
#pragma once

#include <string>

namespace qn::html {

/// Replaces, once, every reference of 4 to 10 units by its code unit, in place.
void resolveReferences(std::u16string &text);

} // namespace qn::html
