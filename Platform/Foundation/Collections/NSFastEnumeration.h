// Walking a collection in batches, and with range-for on top of that:
//
//     for (const id &key : settings->allKeys()) // a `Ref`, so that a temporary lives as long as the loop
//         use(key);
//
// Collections notice when they are changed during a walk, by an enumerator and by a block as well: the next
// step raises NSGenericException, also the one behind the last element. A visit that stops the walk takes no
// further step. Walking none walks nothing.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <array>
#include <atomic>
#include <iterator>

/// Collections may run the visits of a walk with this option side by side; ours run them in order.
using NSEnumerationOptions = NSUInteger;
inline constexpr NSEnumerationOptions NSEnumerationConcurrent = 1 << 0;
inline constexpr NSEnumerationOptions NSEnumerationReverse = 1 << 1;

/// How often a collection has changed. One thread at a time counts; any may look.
class NSMutationCount {
public:
    NSUInteger value() const { return value_.load(std::memory_order_relaxed); }
    void increase() { value_.store(value() + 1, std::memory_order_relaxed); }

private:
    std::atomic<NSUInteger> value_{0};
};

/// Notices that a collection changes while it is walked. The collection must live as long.
class NSMutationWatch {
public:
    /// Of null notices nothing.
    explicit NSMutationWatch(const NSMutationCount *count = nullptr)
        : count_(count), atStart_(count ? count->value() : 0) {}

    explicit operator bool() const { return count_ != nullptr; }
    /// Raises NSGenericException when the collection has changed since this was made.
    void check() const {
        if (count_ && count_->value() != atStart_)
            raise();
    }

private:
    [[noreturn]] static void raise();

    const NSMutationCount *count_;
    NSUInteger atStart_;
};

/// Where a walk stands; default-made before its first batch. The fields are the collection's own business.
struct NSFastEnumerationState {
    NSUInteger state = 0;      ///< the next position
    id extra;                  ///< what the collection needs kept
    NSMutationWatch mutations; ///< of null when changes go unnoticed

    /// For collections, first thing in every batch: begins to watch at the first, checks at the others.
    void watch(const NSMutationCount &count) {
        if (mutations)
            mutations.check();
        else
            mutations = NSMutationWatch(&count);
    }
};

/// What range-for walks with; keeps the collection.
template <class Collection>
class NSFastIterator {
public:
    NSFastIterator() = default;
    explicit NSFastIterator(Ref<const Collection> collection) : collection_(std::move(collection)) { fill(); }

    /// Valid until the next step.
    const id &operator*() const {
        state_.mutations.check();
        return batch_[next_];
    }
    NSFastIterator &operator++() {
        if (++next_ == filled_)
            fill();
        return *this;
    }
    bool operator==(std::default_sentinel_t) const { return next_ == filled_; }

private:
    void fill() {
        next_ = 0;
        filled_ = collection_->countByEnumeratingWithState(state_, batch_.data(), batch_.size());
    }

    Ref<const Collection> collection_;
    NSFastEnumerationState state_;
    std::array<id, 16> batch_;
    NSUInteger next_ = 0;
    NSUInteger filled_ = 0;
};

template <class Collection>
auto begin(const Ref<Collection> &collection) -> decltype(collection->begin()) {
    return collection ? collection->begin() : decltype(collection->begin())();
}

template <class Collection>
auto end(const Ref<Collection> &collection) -> decltype(collection->end()) {
    return {};
}
