// A mutable array that any thread may use: reads run side by side, writes are queued and run alone.
//
//     auto list = make<ZKSafeMutableArray>();
//     list->addObject(printer);                     // returns at once
//     for (NSUInteger i = 0; i < list->count(); ++i) // sees the write
//
// All instances of the process share one queue, so a write to one list also delays reads of the others. A
// read sees every write that the same thread issued before it. Writes return at once: arguments are checked
// when the write runs, and an invalid write changes nothing.
//
// Unlike ordinary arrays they raise nothing: writes ignore none, an index past the end gives none, and a walk
// visits what the list held at its start, whatever is written meanwhile.
//
// Threads: any, but not from inside one of their own operations (such as a comparison of elements): a read
// would wait for itself.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

namespace dispatch {
class ConcurrentQueue;
}

class ZKSafeMutableArray : public NSMutableArray {
    NS_CLASS(ZKSafeMutableArray, NSMutableArray)
public:
    ZKSafeMutableArray();

    NSUInteger count() const override;
    /// None when the index is not below the count.
    id objectAtIndex(NSUInteger index) const override;
    using NSMutableArray::indexOfObject;
    /// The first equal element. Absent: 0xFFFFFFFFFFFFFFFF, unlike in other arrays; NSNotFound only for an
    /// object of none.
    NSUInteger indexOfObject(const id &object) const override;
    /// The elements of the range at one moment; the range is cut to the array.
    std::vector<id> getObjects(NSRange range) const override;

    void addObject(const id &object) override;
    /// With an index past the end the write is refused and logged.
    void insertObject(const id &object, NSUInteger index) override;
    void removeObjectAtIndex(NSUInteger index) override;
    void removeLastObject() override;
    void replaceObjectAtIndex(NSUInteger index, const id &object) override;
    void removeAllObjects() override;

    /// The queue of every instance, made on first use.
    static dispatch::ConcurrentQueue &syncQueue();

private:
    // Shared with the writes under way, which may outlive the array.
    const Ref<NSMutableArray> _array;
};
