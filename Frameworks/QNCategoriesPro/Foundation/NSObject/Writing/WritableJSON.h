// What a JSON text can hold of a tree of dictionaries, arrays, texts and numbers in which something has no
// text: one value does not cost a document.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

namespace qn {

/// The tree anew. A number that is not finite becomes null in a dictionary and is left out of an array; in a
/// text, a surrogate that stands alone becomes U+FFFD.
id writableJSON(const id &json);

} // namespace qn
