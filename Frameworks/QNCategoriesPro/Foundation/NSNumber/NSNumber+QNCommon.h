// Numbers from texts. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

class NSNumber;
class NSString;

namespace qn {

/// The number that the text stands for. Case, and white space around the text, do not matter for these:
///
///     "true" "yes" / "false" "no"    the boolean number
///     "nil" "null" "<null>" ""       none
///     "0x1F…"                        the hexadecimal digits, at most 0xFFFFFFFF; what follows is ignored
///     "-0x…"                         none
///
/// Any other text goes unchanged, white space included, to NSNumberFormatter: all of it has to be a number by
/// the conventions of the current locale, otherwise the result is none.
Ref<NSNumber> numberWithString(const Ref<NSString> &text);

} // namespace qn

#pragma GCC visibility pop
