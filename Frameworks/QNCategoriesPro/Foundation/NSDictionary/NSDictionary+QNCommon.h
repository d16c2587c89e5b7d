// Dictionaries: typed reading with a default, parts of them, and their text as property list and JSON.
//
//     qn::intValueForKey(settings, u"threshold"_ns, 10)
//
// Any thread, on dictionaries that do not change meanwhile; `entriesForKeys` and the JSON texts are one step
// on a guarded dictionary. A dictionary of none gives none, zero or false, even where a default is passed.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/CollectionText.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Numbers/NSNumber.h"

#include <optional>
#include <type_traits>

#pragma GCC visibility push(default)

class NSArray;

/// The value as a number; none for anything that is neither number nor text.
///
/// | text, in any case | number |
/// |---|---|
/// | true, yes / false, no | the booleans |
/// | nil, null | none |
/// | any other with a "." | the double at its beginning, 0 when there is none |
/// | any other | the 64-bit integer at its beginning, 0 when there is none |
Ref<NSNumber> NSNumberFromID(const id &value);

namespace qn {

/// The number in the entry, or that of its text. `std::nullopt` where the default applies: no key, no value,
/// the null marker, or a value that is neither number nor text. A text that means none ("nil", "null") gives
/// none, not the default.
std::optional<Ref<NSNumber>> scalarForKey(const Ref<NSDictionary> &dictionary, const id &key);

/// Reads a scalar: `(dictionary, key, default)`. The default is for missing, null and non-scalar values only:
/// the texts "nil" and "null" give 0. `Read` converts the number, and narrows it as NSNumber.h describes.
template <auto Read>
struct ScalarForKey {
    using Value = decltype((std::declval<const NSNumber &>().*Read)());

    Value operator()(const Ref<NSDictionary> &dictionary, const id &key, Value otherwise) const {
        const auto scalar = dictionary ? scalarForKey(dictionary, key) : Ref<NSNumber>();
        if (!scalar)
            return otherwise;
        return *scalar ? (**scalar.*Read)() : Value{};
    }
};

inline constexpr ScalarForKey<&NSNumber::boolValue> boolValueForKey;
inline constexpr ScalarForKey<&NSNumber::charValue> charValueForKey;
inline constexpr ScalarForKey<&NSNumber::unsignedCharValue> unsignedCharValueForKey;
inline constexpr ScalarForKey<&NSNumber::shortValue> shortValueForKey;
inline constexpr ScalarForKey<&NSNumber::unsignedShortValue> unsignedShortValueForKey;
inline constexpr ScalarForKey<&NSNumber::intValue> intValueForKey;
inline constexpr ScalarForKey<&NSNumber::unsignedIntValue> unsignedIntValueForKey;
inline constexpr ScalarForKey<&NSNumber::longLongValue> longValueForKey;
inline constexpr ScalarForKey<&NSNumber::unsignedLongLongValue> unsignedLongValueForKey;
inline constexpr ScalarForKey<&NSNumber::longLongValue> longLongValueForKey;
inline constexpr ScalarForKey<&NSNumber::unsignedLongLongValue> unsignedLongLongValueForKey;
inline constexpr ScalarForKey<&NSNumber::floatValue> floatValueForKey;
inline constexpr ScalarForKey<&NSNumber::doubleValue> doubleValueForKey;
inline constexpr ScalarForKey<&NSNumber::integerValue> integerValueForKey;
inline constexpr ScalarForKey<&NSNumber::unsignedIntegerValue> unsignedIntegerValueForKey;

/// The number, or that of a text, which may be none; the default in the same cases as above.
Ref<NSNumber> numberValueForKey(const Ref<NSDictionary> &dictionary, const id &key,
                                const Ref<NSNumber> &otherwise);
/// The text, or that of a number ("12", "1.5"); the default for anything else.
Ref<NSString> stringValueForKey(const Ref<NSDictionary> &dictionary, const id &key,
                                const Ref<NSString> &otherwise);

/// The keys in ascending order, ignoring case; keys that are not texts are ordered by their descriptions.
Ref<NSArray> allKeysSorted(const Ref<NSDictionary> &dictionary);
/// The values in the order of `allKeysSorted`.
Ref<NSArray> allValuesSortedByKeys(const Ref<NSDictionary> &dictionary);
bool containsObjectForKey(const Ref<NSDictionary> &dictionary, const id &key);
/// A new dictionary with the entries of those keys that are present.
Ref<NSMutableDictionary> entriesForKeys(const Ref<NSDictionary> &dictionary, const Ref<NSArray> &keys);

/// The dictionary in a property list of any format. Returns none if the argument is none, not a property
/// list, or its root is not a dictionary. `dictionaryWithPlistData<NSMutableDictionary>` makes all of it
/// mutable: arrays, dictionaries, texts and data.
template <class Dictionary = NSDictionary>
Ref<Dictionary> dictionaryWithPlistData(const Ref<NSData> &data) {
    return as<Dictionary>(collection::propertyList(data, std::is_same_v<Dictionary, NSMutableDictionary>));
}
/// The same from the UTF-8 bytes of the text.
template <class Dictionary = NSDictionary>
Ref<Dictionary> dictionaryWithPlistString(const Ref<NSString> &text) {
    return as<Dictionary>(collection::propertyList(text, std::is_same_v<Dictionary, NSMutableDictionary>));
}

/// The dictionary as a binary property list, and as the text of an XML one; none when it cannot be one.
Ref<NSData> plistData(const Ref<NSDictionary> &dictionary);
Ref<NSString> plistString(const Ref<NSDictionary> &dictionary);

/// Compact JSON text; none when the dictionary is not valid JSON or contains an unpaired surrogate. Both are
/// the same.
Ref<NSString> jsonString(const Ref<NSDictionary> &dictionary);
Ref<NSString> jsonStringEncoded(const Ref<NSDictionary> &dictionary);
/// The same, pretty-printed with sorted keys and plain slashes.
Ref<NSString> jsonPrettyString(const Ref<NSDictionary> &dictionary);
/// The same, pretty-printed with no other option.
Ref<NSString> jsonPrettyStringEncoded(const Ref<NSDictionary> &dictionary);

} // namespace qn

#pragma GCC visibility pop
