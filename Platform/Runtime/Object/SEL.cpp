#include "Platform/Runtime/Object/SEL.h"

#include <functional>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace {

struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
};

class Selectors {
public:
    SEL find(std::string_view name) const {
        const std::shared_lock guard(lock_);
        const auto found = selectors_.find(name);
        return found == selectors_.end() ? nullptr : found->second.get();
    }

    SEL findOrMake(std::string_view name) {
        if (const SEL found = find(name))
            return found;
        const std::scoped_lock guard(lock_);
        return make(name);
    }

    SEL findOrMakeForeign(std::string_view name) {
        if (const SEL found = find(name))
            return found;
        const std::scoped_lock guard(lock_);
        const std::size_t needed = name.size() + bookkeeping;
        if (foreignBytes_ < needed)
            return nullptr;
        foreignBytes_ -= needed;
        return make(name);
    }

private:
    static constexpr std::size_t bookkeeping = 192; // bytes a selector takes beside its name, at most

    SEL make(std::string_view name) {
        auto &selector = selectors_[std::string(name)];
        if (!selector)
            selector = std::make_unique<objc_selector>(objc_selector{std::string(name)});
        return selector.get();
    }

    mutable std::shared_mutex lock_; // guards all of it
    std::unordered_map<std::string, std::unique_ptr<objc_selector>, Hash, std::equal_to<>> selectors_;
    std::size_t foreignBytes_ = runtime::foreignSelectorBytes;
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
