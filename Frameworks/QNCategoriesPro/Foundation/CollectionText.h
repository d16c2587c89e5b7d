// How arrays and dictionaries are turned into texts and bytes and back. Any thread.
#pragma once

#include "Frameworks/QNCategoriesPro/Atomically.h"
#include "Platform/Foundation/Serialization/JSON/JSONWalk.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSData;
class NSString;

namespace qn::collection {

/// The property list in the bytes (of any format) or in the text's UTF-8 bytes, with all its containers
/// mutable or all immutable. Returns none if the argument is none or not a property list.
id propertyList(const Ref<NSData> &data, bool mutableThroughout);
id propertyList(const Ref<NSString> &text, bool mutableThroughout);

/// The collection as a binary property list, or as the text of an XML one; none when it is none or not a
/// property list.
Ref<NSData> plistData(const id &collection);
Ref<NSString> plistString(const id &collection);

/// None when the collection is none, not a valid JSON object, or contains a text with an unpaired surrogate.
Ref<NSString> jsonText(const id &collection, NSJSONWritingOptions options);
/// The same, as one step on a guarded collection.
template <class Collection>
Ref<NSString> jsonText(const Ref<Collection> &collection, NSJSONWritingOptions options) {
    if (!collection)
        return nullptr;
    const json::LockedVisit visit(*collection);
    return atomically(collection, [=](Collection &contents) { return jsonText(contents.self(), options); });
}

/// Pretty-printed with every option of the platform that helps people read.
inline constexpr NSJSONWritingOptions readable =
    NSJSONWritingOptions::PrettyPrinted | NSJSONWritingOptions::SortedKeys |
    NSJSONWritingOptions::FragmentsAllowed | NSJSONWritingOptions::WithoutEscapingSlashes;

} // namespace qn::collection

#pragma GCC visibility pop
