#include "Platform/Runtime/Object/SEL.h"

#include "Platform/Locking/SharedMutex.h"

#include <set>

namespace {

struct ByName {
    using is_transparent = void;

    bool operator()(const objc_selector &a, const objc_selector &b) const { return a.name < b.name; }
    bool operator()(const objc_selector &a, std::string_view b) const { return a.name < b; }
    bool operator()(std::string_view a, const objc_selector &b) const { return a < b.name; }
};

class Selectors {
public:
    SEL find(std::string_view name) const {
        const locking::SharedMutexLock guard(lock_);
        const auto found = selectors_.find(name);
        return found == selectors_.end() ? nullptr : &*found;
    }

    SEL findOrMake(std::string_view name) {
        if (const SEL found = find(name))
            return found;
        const locking::MutexLock guard(lock_);
        return insert(name);
    }

    SEL findOrMakeForeign(std::string_view name) {
        if (const SEL found = find(name))
            return found;
        const locking::MutexLock guard(lock_);
        const std::size_t needed = name.size() + bookkeeping;
        if (foreignBytes_ < needed)
            return nullptr;
        foreignBytes_ -= needed;
        return insert(name);
    }

private:
    static constexpr std::size_t bookkeeping = 192; // the most bytes a selector takes besides its name

    /// Another thread may have been quicker, then it is that one.
    SEL insert(std::string_view name) ZK_REQUIRES(lock_) {
        return &*selectors_.insert({std::string(name)}).first;
    }

    mutable locking::SharedMutex lock_;
    // In order, not hashed: nobody can choose names that make it slow. The selectors stay where they are.
    std::set<objc_selector, ByName> selectors_ ZK_GUARDED_BY(lock_);
    std::size_t foreignBytes_ ZK_GUARDED_BY(lock_) = runtime::foreignSelectorBytes;
};

Selectors &selectors() {
    static auto &theSelectors = *new Selectors;
    return theSelectors;
}

} // namespace

SEL sel_registerName(std::string_view name) {
    return selectors().findOrMake(name);
}

SEL runtime::findSelector(std::string_view name) {
    return selectors().find(name);
}

SEL runtime::registerForeignName(std::string_view name) {
    return selectors().findOrMakeForeign(name);
}

const char *sel_getName(SEL selector) {
    return selector ? selector->name.c_str() : "<null selector>";
}
