#include "Platform/Dispatch/Time/Clock.h"

#include "Platform/Dispatch/Time/AlarmList.h"

#include <atomic>
#include <thread>

namespace dispatch {

static std::atomic<Clock *> replacement = nullptr;

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

bool SystemClock::waitUntil(std::unique_lock<std::mutex> &lock, std::condition_variable &condition,
                            Instant deadline) {
    if (deadline == Instant::distantFuture())
        condition.wait(lock);
    else
        condition.wait_until(lock, std::chrono::steady_clock::time_point(deadline.sinceOrigin()));
    return now() < deadline;
}

Alarm SystemClock::callAt(Instant deadline, std::function<void()> function) {
    std::call_once(started_, [this] {
        alarms_ = std::make_shared<AlarmList>();
        std::thread([this] { runAlarms(); }).detach();
    });
    return alarms_->add(deadline, std::move(function));
}

void SystemClock::runAlarms() {
    for (;;)
        alarms_->run(*alarms_->takeWhenDue(*this));
}

ClockScope::ClockScope(Clock &clock) : previous_(replacement.exchange(&clock, std::memory_order_acq_rel)) {}

ClockScope::~ClockScope() {
    replacement.store(previous_, std::memory_order_release);
}

} // namespace dispatch
