// URL query strings from nested parameters.
//
//     {"b": 1, "a": {"y": "2", "x": ["p", "q"]}, "c": null}
//     a%5Bx%5D%5B%5D=p&a%5Bx%5D%5B%5D=q&a%5By%5D=2&b=1&c
//
// Any thread, on collections that do not change meanwhile and do not hold themselves. A text with an
// unpaired surrogate raises NSInvalidArgumentException.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

class NSArray;
class NSDictionary;
class NSString;

/// The text with every character but ASCII letters, digits and "-._~/?" percent-encoded; empty for none.
Ref<NSString> QNPercentEscapedStringFromString(const Ref<NSString> &text);

/// The escaped pairs "key=value" of the value, in order. A dictionary gives the pairs of its values under
/// `key[entry's key]`, sorted by the keys' descriptions; an array those of its elements under `key[]`; a set
/// those of its elements, sorted by their descriptions, under the same key. Anything else gives one pair, the
/// null marker the key alone. Without a key such a value gives the empty text.
Ref<NSArray> QNQueryStringPairsFromKeyAndValue(const id &key, const id &value);

/// The pairs of the parameters, joined with "&".
Ref<NSString> QNQueryStringFromParameters(const Ref<NSDictionary> &parameters);

namespace qn {

/// `QNQueryStringFromParameters` of the dictionary. Returns none if the argument is none.
Ref<NSString> queryStringFromParameters(const Ref<NSDictionary> &parameters);

} // namespace qn

#pragma GCC visibility pop
