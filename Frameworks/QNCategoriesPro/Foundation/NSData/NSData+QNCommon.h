// Conversions of byte buffers. Any thread.
#pragma once

#include "Platform/Runtime/Ref.h"

class NSData;
class NSString;

namespace qn {

/// The text that the bytes hold as UTF-8 up to the first zero byte, or up to their end when there is none.
/// Empty data gives the empty text; none gives none, and so do bytes that are not valid UTF-8.
Ref<NSString> UTF8String(const Ref<NSData> &data);

} // namespace qn
