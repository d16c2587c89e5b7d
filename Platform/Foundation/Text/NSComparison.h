// The order of objects: results of comparisons, comparators, and the options of sorting and searching.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <functional>

#pragma GCC visibility push(default)

enum class NSComparisonResult : NSInteger { OrderedAscending = -1, OrderedSame = 0, OrderedDescending = 1 };

/// OrderedAscending if the first object comes before the second.
using NSComparator = std::function<NSComparisonResult(const id &first, const id &second)>;
/// The same as a plain function that returns a negative number, zero or a positive number. It is given the
/// caller's `context`.
using NSSortFunction = NSInteger (*)(const id &first, const id &second, void *context);

/// Accepted and ignored: every sort is stable and runs on the calling thread.
using NSSortOptions = NSUInteger;
inline constexpr NSSortOptions NSSortConcurrent = 1 << 0;
inline constexpr NSSortOptions NSSortStable = 1 << 4;

/// Which index a search in a sorted range returns: that of the first or last equal element, or of any without
/// FirstEqual and LastEqual. InsertionIndex asks for the index to insert at: behind the equal elements with
/// LastEqual, else before them.
using NSBinarySearchingOptions = NSUInteger;
inline constexpr NSBinarySearchingOptions NSBinarySearchingFirstEqual = 1 << 8;
inline constexpr NSBinarySearchingOptions NSBinarySearchingLastEqual = 1 << 9;
inline constexpr NSBinarySearchingOptions NSBinarySearchingInsertionIndex = 1 << 10;

#pragma GCC visibility pop
