// How the mapping of models treats a class: as one of Foundation's kinds of value, or as a model.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

namespace qn {

enum class FoundationKind : NSUInteger {
    None = 0, ///< any other class
    String = 1,
    MutableString = 2,
    Value = 3,
    Number = 4,
    DecimalNumber = 5,
    Data = 6,
    MutableData = 7,
    Date = 8,
    URL = 9,
    Array = 10,
    MutableArray = 11,
    Dictionary = 12,
    MutableDictionary = 13,
    Set = 14,
    MutableSet = 15,
};

/// The kind of the class, or of its nearest superclass that has one; None for null. Any thread.
FoundationKind foundationKindOf(Class cls);

} // namespace qn
