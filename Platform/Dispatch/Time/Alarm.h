// A call that a clock owes: owning the alarm is owning the call.
//
//     Alarm alarm = clock.callAt(clock.now() + 1s, [&] { ring(); });
//     alarm.cancel();                     // or let it go out of scope
//
// Once `cancel()` or the destructor has returned, the function does not start any more, and one that was
// running on another thread has ended and its captured objects are released. Called from inside the
// function itself (or from something it calls), cancelling returns at once. So never cancel while holding
// a lock that the function takes.
//
// Threads: `cancel()` may be called from any thread, also from several at a time; moving and destroying
// are for one thread at a time. An alarm may outlive its clock.
#pragma once

#include <memory>

namespace dispatch {

class AlarmList;
struct AlarmEntry;

class [[nodiscard]] Alarm {
public:
    Alarm() = default;
    Alarm(std::shared_ptr<AlarmList> list, std::shared_ptr<AlarmEntry> entry);
    Alarm(Alarm &&) noexcept = default;
    Alarm &operator=(Alarm &&other) noexcept;
    ~Alarm();

    void cancel() noexcept;

private:
    std::shared_ptr<AlarmList> list_;
    std::shared_ptr<AlarmEntry> entry_;
};

} // namespace dispatch
