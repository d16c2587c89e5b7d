// What tables hash with once too many of their keys are alike by `hash`, as collections are, whose hash is
// their count.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

/// The hash of what a collection holds, and of what that holds in turn; of any other object its `hash`, and
/// so it is for a collection of more than 262,144 objects in all or 512 levels. Equal objects have equal
/// ones. Takes the locks of guarded collections. Any thread, as for reading the collection.
NSUInteger contentsHash(const id &object);
