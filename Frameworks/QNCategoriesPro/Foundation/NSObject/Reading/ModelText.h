// The collection in what callers pass as JSON.
#pragma once

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Text/NSString.h"

namespace qn {

/// The bytes of a text or of bytes; none for anything else.
inline Ref<NSData> jsonData(const id &json) {
    const auto text = as<NSString>(json);
    return text ? text->dataUsingUTF8() : as<NSData>(json);
}

/// The collection itself, or the one in a text or bytes. None for anything else.
template <class Collection>
Ref<Collection> collectionFromJSON(const id &json) {
    if (auto collection = as<Collection>(json))
        return collection;
    const auto data = jsonData(json);
    return data ? as<Collection>(
                      NSJSONSerialization::JSONObjectWithData(data, NSJSONReadingOptions::None, nullptr))
                : nullptr;
}

} // namespace qn
