// The transport of a test: answers the calls of zkcomtl.h by a script and writes every call down.
//
//     ScriptedTransport transport;
//     transport.reads = {{.status = TL_USB_ERROR_TIMEOUT}, {.bytes = {0x00, 0xAC, 0xFF, 0x20, 0, 1, 0, 0}}};
//     … one exchange …
//     transport.takeCalls()   // "open 2 usb://…", "read #1 100 4096 0", "write #1 10000 0 <1b25…>", …
//
// One lives at a time, and is not changed while calls are made. Calls may come from any thread.
#pragma once

#include "Platform/Locking/Mutex.h"
#include "Platform/Transport/zkcomtl.h"
#include "Tests/Support/Testing.h"

/// A printer of ours, as the transport lists it.
tl_usb_device_info deviceOf(const std::string &serial, const std::string &product = "L200 Series");

class ScriptedTransport : NoCopies {
public:
    /// What one read does.
    struct Read {
        std::int32_t status = TL_USB_OK;
        std::vector<std::uint8_t> bytes = {};    ///< put into the buffer, whatever the status
        std::optional<std::int32_t> length = {}; ///< what is reported; the number of bytes when absent
    };

    ScriptedTransport();
    ~ScriptedTransport();

    std::int32_t openStatus = TL_USB_OK;
    bool givesHandle = true;
    std::int32_t writeStatus = TL_USB_OK;
    /// For each handle from the beginning. After the last one every read times out.
    std::vector<Read> reads;

    std::int32_t infoStatus = TL_USB_OK;
    /// What the caller's pointer is set to: a copy, or null; absent, it is left as it is.
    std::optional<const char *> infoText;

    std::vector<tl_usb_device_info> devices;
    bool givesList = true;
    std::optional<std::int32_t> deviceCount; ///< what is reported; the number of devices when absent

    /// The printer of the sample record, ready.
    void attachLaser();

    /// Called on the calling thread with each call after it was written down, before it is answered.
    std::function<void(const std::string &call)> onCall;

    /// The calls since the last time. Transfers read "read #handle time-out capacity reserved", with "dirty"
    /// behind when the buffer was not all zero, and "write #handle time-out reserved <bytes>".
    std::vector<std::string> takeCalls();

    // What the functions of zkcomtl.h use.
    void note(const std::string &call);
    void *newHandle();
    Read nextRead(void *handle);
    std::vector<tl_usb_device_info> listed; ///< by the latest call; the caller never releases it

private:
    locking::Mutex mutex_;
    std::vector<std::string> calls_ ZK_GUARDED_BY(mutex_);
    std::map<void *, std::size_t> readsDone_ ZK_GUARDED_BY(mutex_);
};
