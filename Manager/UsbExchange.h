// The steps of one exchange with a printer; see ZKUSB::sendACLWithPJL for what they promise.
//
// The handle is closed only when the write or the reading of a reply header fails. Every other end leaves it
// open: the transport keeps one handle per printer and retires it when the next exchange opens its own.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <array>
#include <cstdint>

class NSData;
class ZKUSB;

class UsbExchange {
public:
    UsbExchange(ZKUSB &printer, std::int32_t timeout_ms) : printer_(printer), timeout_ms_(timeout_ms) {}

    void run(const NSData &request);

private:
    enum class Next { readTransfer, stop };

    bool open();
    void drain();
    bool write(const NSData &request);
    /// Reads one transfer into the zeroed buffer; false when the transport failed.
    bool read(std::int32_t timeout_ms);
    /// Takes the transfer in the buffer for a reply header, or skips it.
    Next takeTransfer();
    /// The buffer begins like a reply header: reads the data, and calls the completion; true when the
    /// exchange is over.
    bool takeReply();
    /// Sets the printer's transport status; whether that is OK.
    bool succeeded(std::int32_t transportStatus);
    void fail();
    void complete(const Ref<NSData> &header, const Ref<NSData> &data);
    Ref<NSData> received() const;

    ZKUSB &printer_;
    const std::int32_t timeout_ms_;
    void *handle_ = nullptr;
    std::array<std::uint8_t, 4096> buffer_;
    std::int32_t length_ = 0; // bytes in the buffer, 0 to its size
    int completions_ = 0;     // calls of the completion, counting those for which nobody held it any more
};
