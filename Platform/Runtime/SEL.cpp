#include "Platform/Runtime/SEL.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>

SEL sel_registerName(std::string_view name) {
    static auto &lock = *new std::mutex;
    static auto &selectors = *new std::map<std::string, std::unique_ptr<objc_selector>, std::less<>>;
    const std::scoped_lock guard(lock);
    auto found = selectors.find(name);
    if (found == selectors.end()) {
        auto selector = std::make_unique<objc_selector>(objc_selector{std::string(name)});
        found = selectors.emplace(std::string(name), std::move(selector)).first;
    }
    return found->second.get();
}

const char *sel_getName(SEL selector) {
    return selector ? selector->name.c_str() : "<null selector>";
}
