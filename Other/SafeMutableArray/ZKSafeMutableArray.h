// A mutable array that any thread may use: reads run side by side, writes are queued and run alone.
//
//     auto list = make<ZKSafeMutableArray>();
//     list->addObject(printer);                     // returns at once
//     for (NSUInteger i = 0; i < list->count(); ++i) // sees the write
//
// All instances of the process share one queue, so a write to one list also holds up reads of the others. A
// read sees every write that the same thread issued before it. Writes are fire-and-forget: the checks are
// made when the write runs, and a write that does not fit changes nothing.
//
// Unlike ordinary arrays nothing is raised: none is ignored by writes, an index past the end gives none, and
// a walk goes over what the list held at its start, whatever is written meanwhile.
//
// Threads: any, but never from inside one of its own operations (a comparison of elements, say): a read would
// wait for itself.
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
    /// By `isEqual`. 0xFFFFFFFFFFFFFFFF when absent; NSNotFound for none, which is not looked for.
    NSUInteger indexOfObject(const id &object) const override;
    /// What the array holds at one moment, cut to the range.
    std::vector<id> getObjects(NSRange range) const override;

    void addObject(const id &object) override;
    /// An index past the end is not corrected: the write is refused and logged.
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
