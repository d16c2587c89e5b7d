// Property lists in XML and binary, by libplist: to objects, and from objects.
#pragma once

#include "Platform/Foundation/PropertyListObjects.h"

#include <string_view>

class NSData;

/// The list that the bytes, fewer than 2³², hold; none when they hold none or are not harmless.
id xmlPropertyList(std::string_view text, const PropertyListObjects &objects);
id binaryPropertyList(std::string_view bytes, const PropertyListObjects &objects);

/// The list as bytes; none for what the format cannot hold.
Ref<NSData> propertyListBytes(const id &list, NSPropertyListFormat format);
