// A pending call of a clock. Destroying the alarm cancels the call.
//
//     Alarm alarm = clock.callAt(clock.now() + 1s, [&] { ring(); });
//     alarm.cancel();                     // or let it go out of scope
//
// `cancel()` and the destructor wait for a function that is running on another thread. When they return, the
// function does not start any more and its captured objects are released. So never cancel while holding a
// lock that the function takes. Called from inside the function, they return at once.
//
// Threads: `cancel()` may be called from any thread, also from several at a time; an alarm must not be moved
// or destroyed meanwhile. An alarm may outlive its clock.
#pragma once

#include <memory>

#pragma GCC visibility push(default)

namespace dispatch {

class [[gnu::visibility("hidden")]] AlarmList;
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

#pragma GCC visibility pop
