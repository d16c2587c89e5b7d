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
#include "Platform/Transport/Printer.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace transport {

class HeldPrinter final : public Printer {
public:
    /// So that CUPS and the kernel's driver wait for less than a second.
    static constexpr std::chrono::milliseconds idleTime{800};

    /// Bus and clock have to outlive it.
    HeldPrinter(const AttachedPrinter &printer, UsbBus &bus, dispatch::Clock &clock);
    ~HeldPrinter() override;

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
    using Lock = std::unique_lock<std::mutex>; // of mutex_
    enum class State { closed, opening, open, closing };

    tl_usb_status transfer(const std::stop_token &stop, const Work &work);
    /// `keep`: the device stays open until it has been idle.
    tl_usb_status use(bool keep, const std::stop_token &stop, const Work &work);
    tl_usb_status begin(bool keep, const std::stop_token &stop);
    void end(tl_usb_status status);
    tl_usb_status openDevice(Lock &lock);
    void closeDevice(Lock &lock);
    void become(State state);
    bool watch();
    void runWatch();

    const AttachedPrinter printer_;
    const ListedPrinter listed_;
    UsbBus &bus_;
    dispatch::Clock &clock_;

    std::mutex transfer_; // held during transfers, taken before mutex_
    std::mutex mutex_;    // never held while the device is opened, used or closed; guards what follows
    State state_ = State::closed;
    std::condition_variable changed_; // state_
    std::unique_ptr<UsbDevice> device_;
    int users_ = 0;
    bool keep_ = false; // whether the device stays open when the last user is done
    dispatch::Instant lastUse_;
    bool watching_ = false;
    std::thread watcher_;
};

} // namespace transport
