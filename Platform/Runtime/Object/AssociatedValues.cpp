#include "Platform/Runtime/Object/AssociatedValues.h"

#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/Raise.h"

#include <array>
#include <map>
#include <new>
#include <unordered_map>
#include <vector>

constinit std::atomic<std::int32_t> runtime::AssociatedOwners::count = 0;
constinit std::array<std::atomic<std::int32_t>, runtime::AssociatedOwners::slotCount>
    runtime::AssociatedOwners::perSlot{};

namespace {

using runtime::Association;

struct Value {
    Association association = Association::strong;
    id owned;            ///< none for a weak one
    Weak<NSObject> seen; ///< of a weak one

    id object() const { return association == Association::weak ? seen.lock() : owned; }
};

Value valueOf(const id &object, Association association) {
    switch (association) {
    case Association::weak:
        return {association, nullptr, object};
    case Association::copied:
    case Association::copiedNonatomic:
        return {association, object->copy(), {}};
    default:
        return {association, object, {}};
    }
}

bool isNonatomic(Association association) {
    return association == Association::strongNonatomic || association == Association::copiedNonatomic;
}

using Values = std::map<const void *, Value>;

/// The values of some of the owners. Functions that take values out hand them to the caller: whatever is let
/// go of may run any code, so that happens after the lock was given back.
class Shard {
public:
    using Owners = std::unordered_map<const NSObject *, Values>;

    Value exchange(const NSObject *owner, const void *key, Value value) ZK_EXCLUDES(lock_) {
        const locking::MutexLock guard(lock_);
        const auto [found, isNew] = owners_.try_emplace(owner);
        if (isNew)
            runtime::AssociatedOwners::add(owner);
        return std::exchange(found->second[key], std::move(value));
    }

    /// Runs `read` on the value, if there is one.
    template <class Read>
    auto read(const NSObject *owner, const void *key, const Read &read) ZK_EXCLUDES(lock_) {
        const locking::MutexLock guard(lock_);
        const auto values = owners_.find(owner);
        if (values != owners_.end())
            if (const auto value = values->second.find(key); value != values->second.end())
                return read(value->second);
        return decltype(read(Value()))();
    }

    Values::node_type take(const NSObject *owner, const void *key) ZK_EXCLUDES(lock_) {
        const locking::MutexLock guard(lock_);
        const auto values = owners_.find(owner);
        if (values == owners_.end())
            return {};
        auto taken = values->second.extract(key);
        if (values->second.empty()) {
            owners_.erase(values);
            runtime::AssociatedOwners::remove(owner);
        }
        return taken;
    }

    Owners::node_type take(const NSObject *owner) ZK_EXCLUDES(lock_) {
        const locking::MutexLock guard(lock_);
        auto taken = owners_.extract(owner);
        if (taken)
            runtime::AssociatedOwners::remove(owner);
        return taken;
    }

private:
    locking::Mutex lock_;
    Owners owners_ ZK_GUARDED_BY(lock_);
};

/// Many, so that threads with different owners seldom meet.
Shard &shardOf(const NSObject *owner) {
    static auto &shards = *new std::array<Shard, 64>;
    return shards[(reinterpret_cast<std::uintptr_t>(owner) >> 4) * 0x9E3779B97F4A7C15u >> 58];
}

// Values may have values themselves, and so on. Their destructors call each other 64 levels deep at most; the
// rest goes by a list, so that no chain of values exhausts the stack.
constexpr unsigned mostLevels = 64;
constinit thread_local unsigned levels = 0;
constinit thread_local std::vector<Values> *postponed = nullptr;

bool postpone(Values &values) noexcept {
    try {
        if (!postponed)
            postponed = new std::vector<Values>;
        postponed->push_back(std::move(values));
        return true;
    } catch (const std::bad_alloc &) {
        return false; // then the stack has to suffice
    }
}

void letPostponedGo() noexcept {
    while (!postponed->empty()) {
        const auto going = std::move(postponed->back());
        postponed->pop_back();
    }
    delete std::exchange(postponed, nullptr);
}

} // namespace

void runtime::setAssociatedValue(const id &owner, const void *key, const id &value, Association association) {
    checkArgument("setAssociatedValue", key != nullptr, "the key cannot be null");
    if (!owner)
        return;
    if (!value)
        return removeAssociatedValue(owner, key);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): letting go of the old value may end it
    const id kept = owner;
    shardOf(kept.get()).exchange(kept.get(), key, valueOf(value, association));
}

id runtime::associatedValue(const id &owner, const void *key) {
    if (!AssociatedOwners::mayInclude(owner.get()))
        return nullptr;
    return shardOf(owner.get()).read(owner.get(), key, [](const Value &value) { return value.object(); });
}

NSObject *runtime::peekAssociatedValue(const id &owner, const void *key) {
    if (!AssociatedOwners::mayInclude(owner.get()))
        return nullptr;
    return shardOf(owner.get()).read(owner.get(), key, [](const Value &value) {
        checkArgument("peekAssociatedValue", isNonatomic(value.association),
                      "an atomic or weak value may go at any time");
        return value.owned.get();
    });
}

void runtime::removeAssociatedValue(const id &owner, const void *key) {
    if (AssociatedOwners::mayInclude(owner.get()))
        shardOf(owner.get()).take(owner.get(), key);
}

void runtime::removeAssociatedValues(const id &owner) {
    if (AssociatedOwners::mayInclude(owner.get()))
        shardOf(owner.get()).take(owner.get());
}

void runtime::endAssociatedValues(const NSObject *object) noexcept {
    auto taken = shardOf(object).take(object);
    if (!taken || (levels >= mostLevels && postpone(taken.mapped())))
        return;
    ++levels;
    taken = {};
    if (postponed && levels == 1)
        letPostponedGo();
    --levels;
}
