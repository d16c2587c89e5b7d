// Taking entries out of dictionaries. Each is one step on a guarded dictionary; a receiver of none gives
// none.
#pragma once

#include "Platform/Foundation/Collections/NSDictionary.h"

namespace qn {

/// Removes the entry and gives its value. Returns none if an argument is none or there is no such key.
id popObjectForKey(const Ref<NSMutableDictionary> &dictionary, const id &key);
/// Removes the entries of those of the keys that have one and gives them.
Ref<NSMutableDictionary> popEntriesForKeys(const Ref<NSMutableDictionary> &dictionary,
                                           const Ref<NSArray> &keys);

} // namespace qn
