#include "Platform/Runtime/Object/ClassRegistry.h"

#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#include <atomic>

namespace {

// The announcements not yet entered, as a linked list. It needs no initialiser of its own, which might run
// after the first announcement.
constinit std::atomic<runtime::ClassAnnouncement *> newest = nullptr;

} // namespace

runtime::ClassAnnouncement::ClassAnnouncement(const char *name, Find find)
    : name_(name), find_(find), next_(newest.load(std::memory_order_relaxed)) {
    while (!newest.compare_exchange_weak(next_, this, std::memory_order_release, std::memory_order_relaxed)) {
    }
}

runtime::ClassRegistry &runtime::ClassRegistry::shared() {
    static auto &theRegistry = *new ClassRegistry;
    return theRegistry;
}

void runtime::ClassRegistry::hearAnnouncements() {
    if (!newest.load(std::memory_order_relaxed))
        return;
    for (auto *each = newest.exchange(nullptr, std::memory_order_acquire); each; each = each->next_) {
        const auto [found, isNew] = entries_.try_emplace(each->name_, Entry{each});
        if (isNew)
            ++namesKnown_;
        else
            found->second.isContested = true;
    }
}

Class runtime::ClassRegistry::find(std::string_view name) {
    ClassAnnouncement::Find finding = nullptr;
    {
        const locking::MutexLock guard(lock_);
        hearAnnouncements();
        const auto found = entries_.find(name);
        if (found == entries_.end())
            return nullptr;
        const Entry &entry = found->second;
        if (entry.cls || !entry.announcement)
            return entry.cls;
        if (entry.isContested)
            throw NSException(NSInvalidArgumentException,
                              "two classes of the program are named " + std::string(name));
        finding = entry.announcement->find_;
    }
    return finding(); // the class enters the registry itself
}

bool runtime::ClassRegistry::claim(const std::string &name, const ClassAnnouncement *announcement) {
    const locking::MutexLock guard(lock_);
    hearAnnouncements();
    const auto [found, isNew] = entries_.try_emplace(name, Entry{announcement});
    const Entry &entry = found->second;
    return isNew || (announcement && entry.announcement == announcement && !entry.isContested);
}

void runtime::ClassRegistry::enter(Ref<objc_class> cls, Ref<objc_class> metaClass) {
    const locking::MutexLock guard(lock_);
    Entry &entry = entries_[cls->name()];
    entry.cls = cls.get();
    namesKnown_ += entry.announcement ? 0 : 1;
    kept_.push_back(std::move(metaClass));
    kept_.push_back(std::move(cls));
}

void runtime::ClassRegistry::abandon(const std::string &name) {
    const locking::MutexLock guard(lock_);
    entries_.erase(name);
}

std::uint64_t runtime::ClassRegistry::namesKnown() {
    const locking::MutexLock guard(lock_);
    hearAnnouncements();
    return namesKnown_;
}
