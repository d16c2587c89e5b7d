// The list of supported models that ships as a resource.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSArray;
class NSData;

/// The resource "models" of type "plist": dictionaries whose text "ppdModel" equals the make and model of a
/// supported queue. None when the resource is missing or no array.
Ref<NSArray> supportedModels();
