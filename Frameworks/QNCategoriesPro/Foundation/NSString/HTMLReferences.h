// The character references of HTML within a text: "&amp;", "&#38;", "&#x26;". Any thread.
#pragma once

#include <string>

#pragma GCC visibility push(default)

namespace qn::html {

/// Replaces every reference of 4 to 10 units by its code unit, in place and without looking at the result
/// again; see `stringByUnescapingFromHTML`.
void resolveReferences(std::u16string &text);

} // namespace qn::html

#pragma GCC visibility pop
