// Numbers from texts. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSNumber;
class NSString;

namespace qn {

/// The number that the text stands for, white space and line ends around it and case left aside:
///
///     "true" "yes" / "false" "no"    the boolean number
///     "nil" "null" "<null>" ""       none
///     "0x1F…"                        the hexadecimal digits, at most 0xFFFFFFFF; what follows is ignored
///     "-0x…"                         none
///
/// Every other text is read as it is, white space included, by NSNumberFormatter: from end to end a number by
/// the conventions of the current locale, or none.
Ref<NSNumber> numberWithString(const Ref<NSString> &text);

} // namespace qn
