#include "Platform/Dispatch/Time/AlarmList.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Runtime/Object/NSException.h"

namespace dispatch {

using locking::MutexLock;

Alarm::Alarm(std::shared_ptr<AlarmList> list, std::shared_ptr<AlarmEntry> entry)
    : list_(std::move(list)), entry_(std::move(entry)) {}

Alarm &Alarm::operator=(Alarm &&other) noexcept {
    if (this != &other) {
        cancel();
        list_ = std::move(other.list_);
        entry_ = std::move(other.entry_);
    }
    return *this;
}

Alarm::~Alarm() {
    cancel();
}

void Alarm::cancel() noexcept {
    if (entry_)
        list_->cancel(*entry_);
}

Alarm AlarmList::add(Instant deadline, std::function<void()> function) {
    runtime::checkBlock("dispatch::Clock::callAt", function);
    const MutexLock lock(mutex_);
    auto entry = std::make_shared<AlarmEntry>();
    entry->key = {deadline, added_++};
    entry->function = std::move(function);
    const auto place = pending_.emplace(entry->key, entry).first;
    if (place == pending_.begin())
        nextChanged_.notifyOne();
    return {shared_from_this(), std::move(entry)};
}

void AlarmList::cancel(AlarmEntry &entry) noexcept {
    std::function<void()> released; // goes after the lock: its captures may call back
    const MutexLock lock(mutex_);
    if (entry.state == AlarmEntry::State::pending) {
        pending_.erase(entry.key);
        entry.state = AlarmEntry::State::over;
        released = std::move(entry.function);
        entry.function = nullptr;
    } else if (entry.runner != std::this_thread::get_id()) {
        while (entry.state != AlarmEntry::State::over)
            runEnded_.wait(mutex_);
    }
}

Instant AlarmList::next() const {
    const MutexLock lock(mutex_);
    return nextLocked();
}

Instant AlarmList::nextLocked() const {
    return pending_.empty() ? Instant::distantFuture() : pending_.begin()->first.first;
}

AlarmList::EntryRef AlarmList::takeDue(Instant limit) {
    const MutexLock lock(mutex_);
    return takeDueLocked(limit);
}

AlarmList::EntryRef AlarmList::takeDueLocked(Instant limit) {
    if (pending_.empty() || nextLocked() > limit)
        return nullptr;
    EntryRef entry = std::move(pending_.extract(pending_.begin()).mapped());
    entry->state = AlarmEntry::State::running;
    entry->runner = std::this_thread::get_id();
    return entry;
}

AlarmList::EntryRef AlarmList::takeWhenDue(Clock &clock) {
    const MutexLock lock(mutex_);
    for (;;) {
        if (EntryRef entry = takeDueLocked(clock.now()))
            return entry;
        clock.waitUntil(mutex_, nextChanged_, nextLocked());
    }
}

void AlarmList::run(AlarmEntry &entry) {
    entry.function();
    entry.function = nullptr;
    const MutexLock lock(mutex_);
    entry.state = AlarmEntry::State::over;
    runEnded_.notifyAll();
}

} // namespace dispatch
