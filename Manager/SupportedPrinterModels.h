// The list of supported models, a resource of the program.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSArray;
class NSData;

/// The resource "models" of type "plist": dictionaries whose text "ppdModel" equals the make and model of a
/// supported queue. None when the resource is missing or not an array.
Ref<NSArray> supportedModels();
