// What both ways of writing models as JSON share: as objects and straight as text.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"

namespace qn {

/// The objects that the thread is writing, each within the one before.
using ModelWriting = ObjectVisit<struct Writing>;

/// How an object is written.
enum class WrittenKind { Text, Plain, Dictionary, Set, Array, URL, AttributedString, Date, Data, Model };

/// The kind of an object, by its class or the nearest superclass that has one; Model for any other.
WrittenKind writtenKindOf(const NSObject &object);

/// Whether it is none or the null marker.
bool isNull(const id &object);

} // namespace qn
