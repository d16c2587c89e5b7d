// A printer on an emulated USB bus: answers the calls of usbfs as the kernel would and hands the bulk data to
// a virtual printer. Plugged in by UsbTestbed.
//
// Transfers are carried out when they are submitted; a read that finds nothing stays pending, and what a test
// holds. Opening the device opens the virtual printer. Its faults show as:
//
// | fault         | on the wire                                                          |
// |---------------|----------------------------------------------------------------------|
// | cannot_open   | the node may be opened by nobody but root                            |
// | busy          | the claim is refused                                                 |
// | write_fails   | writes end with a protocol error                                     |
// | unplug_after… | transfers end as those of a device that is gone, until the next open |
// | status_fails  | the request for the port status stalls                               |
//
// Threads: everything may be called from any thread.
#pragma once

#include "Platform/Locking/Condition.h"
#include "Platform/Transport/virtual/VirtualPrinter.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/UsbEmulation/DeviceNode.h"
#include "Tests/Support/UsbEmulation/UsbDescription.h"

#include <linux/usbdevice_fs.h>
#include <umockdev.h>

/// Throws what a call has reported, if anything.
void check(GError *error);

/// What can be kept from happening for a while.
enum class Hold {
    answers,  ///< the printer has an answer but does not send it
    requests, ///< the printer takes neither data nor requests
    release,  ///< whoever gives the printer interface back waits, as for a kernel that takes its time
};

class EmulatedUsbPrinter {
public:
    EmulatedUsbPrinter(UsbAddress address, const std::filesystem::path &root,
                       const transport::VirtualPrinterState &state);

    UsbAddress address() const { return address_; }
    transport::VirtualPrinterState state() const;
    /// Who opens the printer, or has it open, finds it as if it had just been plugged in.
    void setState(const transport::VirtualPrinterState &state);

    void hold(Hold what, bool held = true);
    /// Whether somebody waits for it.
    bool isAwaited(Hold what) const;
    /// Transfers of the endpoint end with a stall until its halt is cleared.
    void stall(std::uint8_t endpoint);
    /// The printer is pulled out: what is pending ends, everything else fails.
    void unplug();

    bool isUnplugged() const { return seen(&EmulatedUsbPrinter::unplugged_); }
    bool isClaimed() const { return seen(&EmulatedUsbPrinter::claimer_) != nullptr; }
    bool hasKernelDriver() const { return seen(&EmulatedUsbPrinter::kernelDriver_); }
    std::size_t opens() const; ///< open files of the node

    // What UsbTestbed passes on.
    using Client = UMockdevIoctlClient;
    void connect(const Client *client);
    void vanish(const Client *client);
    void handle(Client *client);

private:
    struct Unreference {
        void operator()(UMockdevIoctlData *data) const { umockdev_ioctl_data_unref(data); }
    };
    using Data = std::unique_ptr<UMockdevIoctlData, Unreference>;
    struct Urb {
        usbdevfs_urb &operator*() const { return *reinterpret_cast<usbdevfs_urb *>(block->data); }
        Hold holding() const;

        const Client *client;
        Data block;  // the client's
        Data buffer; // none when it has no bytes
    };

    template <class Value>
    Value seen(Value EmulatedUsbPrinter::*member) const {
        const locking::MutexLock guard(mutex_);
        return this->*member;
    }
    static Data resolve(UMockdevIoctlData *parent, std::size_t offset, std::size_t size);
    // These are what the calls return, or an error number below zero.
    int answer(const Client *client, unsigned long request, UMockdevIoctlData *argument) ZK_REQUIRES(mutex_);
    int claim(const Client *client, unsigned interface) ZK_REQUIRES(mutex_);
    int release(const Client *client, unsigned interface) ZK_REQUIRES(mutex_);
    int submit(const Client *client, UMockdevIoctlData *block) ZK_REQUIRES(mutex_);
    int reap(const Client *client, UMockdevIoctlData *pointer) ZK_REQUIRES(mutex_);
    int discard(const Client *client, unsigned long address) ZK_REQUIRES(mutex_);
    int bindDriver(const usbdevfs_ioctl &call) ZK_REQUIRES(mutex_);
    // These are how a transfer ends, as the kernel tells it; none while it is pending.
    std::optional<int> outcome(const Urb &urb) ZK_REQUIRES(mutex_);
    int control(const Urb &urb) ZK_REQUIRES(mutex_);
    std::optional<int> read(const Urb &urb) ZK_REQUIRES(mutex_);
    int write(const Urb &urb) ZK_REQUIRES(mutex_);
    int onWire(tl_usb_status status) ZK_REQUIRES(mutex_);
    Bytes classReply(std::uint8_t request, std::uint16_t index) const ZK_REQUIRES(mutex_);
    void serve() ZK_REQUIRES(mutex_);

    const UsbAddress address_;
    mutable locking::Mutex mutex_;
    DeviceNode node_ ZK_GUARDED_BY(mutex_);
    transport::VirtualPrinter printer_ ZK_GUARDED_BY(mutex_);
    std::set<const Client *> clients_ ZK_GUARDED_BY(mutex_);
    const Client *claimer_ ZK_GUARDED_BY(mutex_) =
        nullptr; // of the printer interface, the only one that is ever claimed
    bool kernelDriver_ ZK_GUARDED_BY(mutex_) = true; // bound to the printer interface
    bool isFresh_ ZK_GUARDED_BY(mutex_) = true;      // nobody has opened it since it was plugged in
    std::set<Hold> held_ ZK_GUARDED_BY(mutex_);
    bool releasing_ ZK_GUARDED_BY(mutex_) = false;
    locking::Condition releaseAllowed_;
    bool unplugged_ ZK_GUARDED_BY(mutex_) = false;
    std::set<std::uint8_t> stalled_ ZK_GUARDED_BY(mutex_);
    std::deque<Urb> pending_ ZK_GUARDED_BY(mutex_);
    std::deque<Urb> finished_ ZK_GUARDED_BY(mutex_); // to be reaped
};
