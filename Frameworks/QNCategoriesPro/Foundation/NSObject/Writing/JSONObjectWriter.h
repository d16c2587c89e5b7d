// Models as JSON objects: dictionaries, arrays, texts, numbers and null.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

/// The JSON of any object by the table in NSObject+ModelJSON.h; none when it has none. Valid JSON is returned
/// itself. Getters and hooks may raise.
id ModelToJSONObjectRecursive(const id &object);

#pragma GCC visibility pop
