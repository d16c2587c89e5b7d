// What writing models as JSON knows, whether as objects or straight as text.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"

namespace qn {

/// The objects that the thread is writing, each in the middle of the one before.
using ModelWriting = ObjectVisit<struct Writing>;

/// What becomes of an object.
enum class WrittenKind { Text, Plain, Dictionary, Set, Array, URL, AttributedString, Date, Data, Model };

/// Ordinary objects are told by their very class, others by their ancestors.
WrittenKind writtenKindOf(const NSObject &object);

bool isNull(const id &object);

} // namespace qn
