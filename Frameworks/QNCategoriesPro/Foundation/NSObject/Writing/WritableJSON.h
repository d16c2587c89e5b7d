// Makes a tree of dictionaries, arrays, texts and numbers writable as JSON text when single values in it are
// not.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

namespace qn {

/// A copy of the tree. A number that is not finite becomes null in a dictionary and is left out of an array,
/// as does a container within itself; an unpaired surrogate becomes U+FFFD.
id writableJSON(const id &json);

} // namespace qn
