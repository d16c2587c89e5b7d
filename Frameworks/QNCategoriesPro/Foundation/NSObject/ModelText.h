// What callers give as JSON, as the collection it holds.
#pragma once

#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Platform/Foundation/NSString.h"

namespace qn {

/// A collection as it is; the one that a text or bytes hold. None for anything else.
template <class Collection>
Ref<Collection> collectionFromJSON(const id &json) {
    if (const auto collection = as<Collection>(json))
        return collection;
    const auto text = as<NSString>(json);
    const auto data = text ? text->dataUsingUTF8() : as<NSData>(json);
    return data ? as<Collection>(
                      NSJSONSerialization::JSONObjectWithData(data, NSJSONReadingOptions::None, nullptr))
                : nullptr;
}

} // namespace qn
