// A printer on a USB bus that is opened when it is used and given back to the system when it is idle. So a
// caller may leave a handle open for ever: the printer is given back shortly after the last transfer, and
// opened again for the next.
//
// | device is | on                                     | device is                                        |
// |-----------|----------------------------------------|--------------------------------------------------|
// | closed    | open, write, read, status              | open; a failure leaves it closed                 |
// | open      | end of a status call that opened it    | closed                                           |
// |           | end of any other                       | open, until it has been idle for `idleTime`      |
// |           | giveBack, a printer found unplugged    | closed, once nobody uses it any more             |
//
// Thread-safe. Transfers run one after another; status calls run beside them. There is at most one open
// device file. While the device is kept open, a thread of this object waits for the idle time.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Locking/Condition.h"
#include "Platform/Transport/Printer.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>

namespace transport {

class IdleClosingPrinter final : public Printer {
public:
    /// So that CUPS and the kernel's driver wait for less than a second.
    static constexpr std::chrono::milliseconds idleTime{800};

    /// Bus and clock have to outlive it.
    IdleClosingPrinter(const AttachedPrinter &printer, UsbBus &bus, dispatch::Clock &clock);
    ~IdleClosingPrinter() override;

    const ListedPrinter &listed() const override { return listed_; }
    tl_usb_status open(const std::stop_token &stop) override;
    tl_usb_status write(std::span<const std::uint8_t> bytes, std::chrono::milliseconds timeout,
                        const std::stop_token &stop) override;
    tl_usb_status read(std::span<std::uint8_t> buffer, std::size_t &count, std::chrono::milliseconds timeout,
                       const std::stop_token &stop) override;
    tl_usb_status status(std::string &text, std::chrono::milliseconds timeout,
                         const std::stop_token &stop) override;
    void giveBack() override;

private:
    using Work = std::function<tl_usb_status(UsbDevice &)>;
    enum class State { closed, opening, open, closing };

    tl_usb_status transfer(const std::stop_token &stop, const Work &work);
    /// `keep`: the device stays open until it has been idle.
    tl_usb_status use(bool keep, const std::stop_token &stop, const Work &work);
    /// The device stays until the `end`.
    tl_usb_status begin(bool keep, const std::stop_token &stop, UsbDevice *&device) ZK_EXCLUDES(mutex_);
    void end(tl_usb_status status) ZK_EXCLUDES(mutex_);
    tl_usb_status openDevice() ZK_REQUIRES(mutex_);
    void closeDevice() ZK_REQUIRES(mutex_);
    void become(State state) ZK_REQUIRES(mutex_);
    bool watch() ZK_REQUIRES(mutex_);
    void runWatch() ZK_EXCLUDES(mutex_);

    const AttachedPrinter printer_;
    const ListedPrinter listed_;
    UsbBus &bus_;
    dispatch::Clock &clock_;

    locking::Mutex transfer_ ZK_ACQUIRED_BEFORE(mutex_); // held during transfers
    locking::Mutex mutex_; // never held while the device is opened, used or closed
    State state_ ZK_GUARDED_BY(mutex_) = State::closed;
    locking::Condition changed_; // state_
    std::unique_ptr<UsbDevice> device_ ZK_GUARDED_BY(mutex_);
    int users_ ZK_GUARDED_BY(mutex_) = 0;
    bool keep_ ZK_GUARDED_BY(mutex_) = false; // whether the device stays open when the last user is done
    dispatch::Instant lastUse_ ZK_GUARDED_BY(mutex_);
    bool watching_ ZK_GUARDED_BY(mutex_) = false;
    std::thread watcher_ ZK_GUARDED_BY(mutex_);
};

} // namespace transport
