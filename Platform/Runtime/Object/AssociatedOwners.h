// Which objects have associated values (AssociatedValues.h): asked by the destructor of every object, so it
// takes neither a byte in the object nor a lock.
//
// Threads: safe from any thread. An object's destructor hears of every value that any thread gave it, since
// the last `Ref` to it was let go of after that.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#pragma GCC visibility push(default)

class NSObject;

namespace runtime {

class AssociatedOwners {
public:
    /// False: the object has no associated values. True for every object that has some and, when there are
    /// `owners` of them, for about one in `slotCount / owners` of the others.
    static bool mayInclude(const NSObject *object) {
        return count.load(std::memory_order_relaxed) != 0 &&
               perSlot[slotOf(object)].load(std::memory_order_relaxed) != 0;
    }

    static void add(const NSObject *object) { change(object, 1); }
    static void remove(const NSObject *object) { change(object, -1); }

private:
    static constexpr std::size_t slotCount = 4096;

    static std::size_t slotOf(const NSObject *object) {
        return (reinterpret_cast<std::uintptr_t>(object) >> 4) * 0x9E3779B97F4A7C15u >> 52;
    }
    static void change(const NSObject *object, std::int32_t by) {
        count.fetch_add(by, std::memory_order_relaxed);
        perSlot[slotOf(object)].fetch_add(by, std::memory_order_relaxed);
    }

    // Of all owners, so that the slots stay out of the processor's cache as long as there are none.
    static std::atomic<std::int32_t> count;
    static std::array<std::atomic<std::int32_t>, slotCount> perSlot;
};

/// For the destructor of NSObject: lets go of the object's associated values, if it has any.
void endAssociatedValues(const NSObject *object) noexcept;

} // namespace runtime

#pragma GCC visibility pop
