// Arrays as property lists and JSON text. Any thread, on arrays that do not change meanwhile; the JSON texts
// are one step on a guarded array.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/CollectionText.h"
#include "Platform/Foundation/Collections/NSArray.h"

#include <type_traits>

#pragma GCC visibility push(default)

namespace qn {

/// The array in a property list of any format. Returns none if the argument is none, not a property list, or
/// its root is not an array.
/// `arrayWithPlistData<NSMutableArray>` makes all of it mutable: arrays, dictionaries, texts and data.
template <class Array = NSArray>
Ref<Array> arrayWithPlistData(const Ref<NSData> &data) {
    return as<Array>(collection::propertyList(data, std::is_same_v<Array, NSMutableArray>));
}
/// The same from the UTF-8 bytes of the text.
template <class Array = NSArray>
Ref<Array> arrayWithPlistString(const Ref<NSString> &text) {
    return as<Array>(collection::propertyList(text, std::is_same_v<Array, NSMutableArray>));
}

/// The array as a binary property list, and as the text of an XML one; none when it cannot be one.
Ref<NSData> plistData(const Ref<NSArray> &array);
Ref<NSString> plistString(const Ref<NSArray> &array);

/// Compact JSON text; none when the array is not valid JSON or contains an unpaired surrogate.
Ref<NSString> jsonStringEncoded(const Ref<NSArray> &array);
/// The same, pretty-printed with sorted keys and plain slashes.
Ref<NSString> jsonPrettyStringEncoded(const Ref<NSArray> &array);

} // namespace qn

#pragma GCC visibility pop
