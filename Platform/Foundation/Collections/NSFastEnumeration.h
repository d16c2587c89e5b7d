// Walking a collection in batches, and range-for on top of that:
//
//     for (const id &key : settings->allKeys()) // the `Ref` is kept, so a temporary lives as long as the
//     loop
//         use(key);
//
// Collections notice when they are changed during any walk, also one by an enumerator or a block: the next
// step raises NSGenericException, also the step after the last element. A visitor that has changed the
// collection may stop the walk, since no step follows. Range-for over none visits nothing.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <array>
#include <atomic>
#include <iterator>

#pragma GCC visibility push(default)

/// With the option Concurrent collections may visit elements concurrently; ours visit them in order.
using NSEnumerationOptions = NSUInteger;
inline constexpr NSEnumerationOptions NSEnumerationConcurrent = 1 << 0;
inline constexpr NSEnumerationOptions NSEnumerationReverse = 1 << 1;

/// The number of changes of a collection. Changed by one thread at a time, read by any.
class NSMutationCount {
public:
    NSUInteger value() const { return value_.load(std::memory_order_relaxed); }
    void increase() { value_.store(value() + 1, std::memory_order_relaxed); }

private:
    std::atomic<NSUInteger> value_{0};
};

/// Notices that a collection changes while it is walked. The collection must outlive it.
class NSMutationWatch {
public:
    /// With null it notices nothing.
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

/// The position of a walk, to be default-constructed for its start. Only the collection uses the fields.
struct NSFastEnumerationState {
    NSUInteger state = 0;      ///< the next position
    id extra;                  ///< an object that the collection needs kept
    NSMutationWatch mutations; ///< watches nothing when changes are not counted

    /// For collections, at the beginning of every batch: starts to watch in the first, checks in the others.
    void watch(const NSMutationCount &count) {
        if (mutations)
            mutations.check();
        else
            mutations = NSMutationWatch(&count);
    }
};

/// The iterator of range-for; keeps the collection.
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

#pragma GCC visibility pop
