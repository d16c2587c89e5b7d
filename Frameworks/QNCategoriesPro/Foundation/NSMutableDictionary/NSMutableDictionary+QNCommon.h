// Taking entries out of dictionaries. Each is one step on a guarded dictionary; a dictionary of none gives
// none.
#pragma once

#include "Platform/Foundation/Collections/NSDictionary.h"

#pragma GCC visibility push(default)

namespace qn {

/// Removes the entry and returns its value; none if an argument is none or there is no such key.
id popObjectForKey(const Ref<NSMutableDictionary> &dictionary, const id &key);
/// Removes the entries of those keys that are present and returns them in a new dictionary.
Ref<NSMutableDictionary> popEntriesForKeys(const Ref<NSMutableDictionary> &dictionary,
                                           const Ref<NSArray> &keys);

} // namespace qn

#pragma GCC visibility pop
