// What arrays and dictionaries share in turning into text and bytes. Any thread.
#pragma once

#include "Frameworks/QNCategoriesPro/OneStep.h"
#include "Platform/Foundation/Serialization/JSON/JSONWalk.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Runtime/Object/NSObject.h"

class NSData;
class NSString;

namespace qn::collection {

/// The property list that the bytes, in any format, or the text's UTF-8 bytes hold: throughout mutable or
/// throughout immutable. Returns none if the argument is none.
id propertyList(const Ref<NSData> &data, bool mutableThroughout);
id propertyList(const Ref<NSString> &text, bool mutableThroughout);

/// The collection as a binary property list, or as an XML one in text; none when it is none or no property
/// list.
Ref<NSData> plistData(const id &collection);
Ref<NSString> plistString(const id &collection);

/// None when the collection is none, not a valid JSON object, or has a text with a surrogate that stands
/// alone.
Ref<NSString> jsonText(const id &collection, NSJSONWritingOptions options);
/// The same, as one step on a guarded collection.
template <class Collection>
Ref<NSString> jsonText(const Ref<Collection> &collection, NSJSONWritingOptions options) {
    if (!collection)
        return nullptr;
    const json::LockedVisit visit(*collection);
    return oneStep(collection, [=](Collection &contents) { return jsonText(contents.self(), options); });
}

/// Pretty-printed with all that the platform offers.
inline constexpr NSJSONWritingOptions readable =
    NSJSONWritingOptions::PrettyPrinted | NSJSONWritingOptions::SortedKeys |
    NSJSONWritingOptions::FragmentsAllowed | NSJSONWritingOptions::WithoutEscapingSlashes;

} // namespace qn::collection
