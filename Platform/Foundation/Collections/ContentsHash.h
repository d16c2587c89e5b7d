// What tables hash with once too many of their keys are alike by `hash`, as collections are, whose hash is
// their count, and models, whose hash is made of those of their values in no order.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <functional>

#pragma GCC visibility push(default)

/// The hash of what a collection holds, and of what that holds in turn; of an object that has parts, the same
/// of those; of any other its `hash`, and so it is for a collection of more than 262,144 objects in all or
/// 512 levels, or without an end. An object with such a part goes by the others and the `hash` of that. Equal
/// objects have equal ones. Takes the locks of guarded collections. Any thread, as for reading the
/// collection.
NSUInteger contentsHash(const id &object);

/// Calls `visit` with each of the object's parts, which may be none, and is true, if it equals only objects
/// of exactly its class whose parts, one by one, are equal. False, without a call, for any other object.
using VisitParts = bool (*)(const id &object, const std::function<void(const id &part)> &visit);

/// Makes the parts of objects known, for a library in which objects compare so: one, before there are
/// threads.
void setVisitParts(VisitParts visitParts) noexcept;

#pragma GCC visibility pop
