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
#include "Tests/Support/UsbEmulation/DeviceNode.h"
#include "Tests/Support/UsbEmulation/UsbDescription.h"

#include <cstdint>
#include <deque>
#include <linux/usbdevice_fs.h>
#include <memory>
#include <set>
#include <string>
#include <umockdev.h>
#include <vector>

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

    bool isUnplugged() const { return seen(unplugged_); }
    bool isClaimed() const { return seen(claimer_) != nullptr; }
    bool hasKernelDriver() const { return seen(kernelDriver_); }
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
        const Client *client;
        Data block;  // the client's usbdevfs_urb
        Data buffer; // none when it has no bytes
    };
    using Bytes = std::vector<std::uint8_t>;

    template <class Value>
    Value seen(const Value &value) const {
        const std::scoped_lock guard(mutex_);
        return value;
    }
    static Data resolve(UMockdevIoctlData *parent, std::size_t offset, std::size_t size);
    // These are what the calls return, or an error number below zero.
    int answer(const Client *client, unsigned long request, UMockdevIoctlData *argument);
    int claim(const Client *client, unsigned interface);
    int release(const Client *client, unsigned interface);
    int submit(const Client *client, UMockdevIoctlData *block);
    int reap(const Client *client, UMockdevIoctlData *pointer);
    int discard(const Client *client, unsigned long address);
    int bindDriver(const usbdevfs_ioctl &call);
    void take(Urb urb);
    void control(Urb urb);
    Bytes classReply(std::uint8_t request, std::uint16_t index) const;
    void write(Urb urb);
    void serveReads();
    int onWire(tl_usb_status status);
    void finish(Urb urb, int status, const Bytes &sent = {});
    void finishAll(std::deque<Urb> &urbs, int status);
    void showReady();

    const UsbAddress address_;
    mutable std::mutex mutex_; // guards all below
    DeviceNode node_;
    transport::VirtualPrinter printer_;
    std::set<const Client *> clients_;
    const Client *claimer_ = nullptr; // of the printer interface, the only one that is ever claimed
    bool kernelDriver_ = true;        // bound to the printer interface
    bool isFresh_ = true;             // nobody has opened it since it was plugged in
    std::set<Hold> held_;
    bool releasing_ = false;
    std::condition_variable releaseAllowed_;
    bool unplugged_ = false;
    std::set<std::uint8_t> stalled_;
    std::deque<Urb> reads_;    // pending
    std::deque<Urb> requests_; // pending: data to the printer, and control transfers
    std::deque<Urb> finished_; // to be reaped
};
