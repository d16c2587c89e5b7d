// Models as the objects that JSON has: dictionaries, arrays, texts, numbers and null.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

/// The JSON of any object, as the table of NSObject+ModelJSON.h tells; what is valid JSON is itself.
id ModelToJSONObjectRecursive(const id &object);
