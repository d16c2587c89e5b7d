// How objects are ordered: results of comparisons, comparators, and the options of sorting and searching.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <functional>

enum class NSComparisonResult : NSInteger { OrderedAscending = -1, OrderedSame = 0, OrderedDescending = 1 };

/// How the first object stands to the second.
using NSComparator = std::function<NSComparisonResult(const id &first, const id &second)>;
/// The same as a plain function, with a context of the caller's; negative, zero or positive.
using NSSortFunction = NSInteger (*)(const id &first, const id &second, void *context);

/// Every sort here is stable and on the calling thread, so both options are always satisfied.
using NSSortOptions = NSUInteger;
inline constexpr NSSortOptions NSSortConcurrent = 1 << 0;
inline constexpr NSSortOptions NSSortStable = 1 << 4;

/// What a search in a sorted range answers: without FirstEqual and LastEqual any equal element will do;
/// InsertionIndex asks for the place to insert at (behind the equal ones with LastEqual, else before them).
using NSBinarySearchingOptions = NSUInteger;
inline constexpr NSBinarySearchingOptions NSBinarySearchingFirstEqual = 1 << 8;
inline constexpr NSBinarySearchingOptions NSBinarySearchingLastEqual = 1 << 9;
inline constexpr NSBinarySearchingOptions NSBinarySearchingInsertionIndex = 1 << 10;
