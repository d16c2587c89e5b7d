// Conversions of texts. Any thread.
#pragma once

#include "Platform/Runtime/Ref.h"

class NSData;
class NSString;

namespace qn {

/// The text with every character that may not stand in the query of a URL percent-encoded, so that
/// "a b/ü?" becomes "a%20b/%C3%BC?". None for none, and for a text with a surrogate that stands alone.
Ref<NSString> URLEncode(const Ref<NSString> &text);

/// The UTF-8 bytes, without a terminating zero. None for none, and for a text with a surrogate that stands
/// alone.
Ref<NSData> dataValue(const Ref<NSString> &text);

} // namespace qn
