#include "Platform/Dispatch/Time/Clock.h"

#include "Platform/Dispatch/Time/AlarmList.h"
#include "Platform/Dispatch/Time/DetachedThread.h"
#include "Platform/Runtime/Object/NSException.h"

#include <atomic>

namespace dispatch {

namespace {

std::atomic<Clock *> replacement = nullptr;

} // namespace

Clock &Clock::current() {
    Clock *clock = replacement.load(std::memory_order_acquire);
    return clock ? *clock : SystemClock::shared();
}

SystemClock &SystemClock::shared() {
    static auto *const clock = new SystemClock; // its thread may outlive static destruction
    return *clock;
}

Instant SystemClock::now() {
    return Instant(std::chrono::steady_clock::now().time_since_epoch());
}

double SystemClock::wallTime() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

bool SystemClock::waitUntil(locking::Mutex &mutex, locking::Condition &condition, Instant deadline) {
    if (deadline == Instant::distantFuture())
        condition.wait(mutex);
    else
        condition.waitUntil(mutex, std::chrono::steady_clock::time_point(deadline.sinceOrigin()));
    return now() < deadline;
}

Alarm SystemClock::callAt(Instant deadline, std::function<void()> function) {
    return alarms().add(deadline, std::move(function));
}

AlarmList &SystemClock::alarms() {
    const locking::MutexLock lock(starting_);
    if (!alarms_) {
        auto made = std::make_shared<AlarmList>();
        if (!startDetachedThread([this, made] { runAlarms(*made); }))
            throw NSException(NSGenericException, "dispatch: no thread can be had to call alarms on");
        alarms_ = std::move(made);
    }
    return *alarms_;
}

void SystemClock::runAlarms(AlarmList &alarms) {
    for (;;)
        alarms.run(*alarms.takeWhenDue(*this));
}

ClockScope::ClockScope(Clock &clock) : previous_(replacement.exchange(&clock, std::memory_order_acq_rel)) {}

ClockScope::~ClockScope() {
    replacement.store(previous_, std::memory_order_release);
}

} // namespace dispatch
