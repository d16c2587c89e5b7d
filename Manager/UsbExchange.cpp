#include "Manager/UsbExchange.h"

#include "Manager/ZKCommand.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Transport/zkcomtl.h"

#include <algorithm>

namespace {

constexpr std::int32_t openMode = 2;
constexpr std::int32_t drainTimeout_ms = 100;
constexpr NSUInteger replyHeaderLength = 8;
constexpr int mostCompletions = 2; // a faulty printer might send replies of the wrong length for ever

std::uint16_t bigEndian(const std::uint8_t *bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

} // namespace

void UsbExchange::run(const NSData &request) {
    if (!open())
        return complete(nullptr, nullptr);
    drain();
    if (!write(request))
        return fail();
    do {
        if (!read(timeout_ms_))
            return fail();
    } while (takeTransfer() == Next::readTransfer);
}

bool UsbExchange::open() {
    const auto uri = printer_.URI();
    const std::string text = uri ? uri->utf8() : std::string();
    const std::int32_t status = tl_usb_get_device_handle(text.c_str(), openMode, &handle_);
    return succeeded(status == TL_USB_OK && !handle_ ? TL_USB_ERROR_INVALID : status);
}

void UsbExchange::drain() {
    while (read(drainTimeout_ms)) {
    }
}

bool UsbExchange::write(const NSData &request) {
    return succeeded(tl_usb_data_transfer_by_handle(handle_, request.bytes(),
                                                    static_cast<std::uint32_t>(request.length()), timeout_ms_,
                                                    nullptr, nullptr, 0));
}

bool UsbExchange::read(std::int32_t timeout_ms) {
    constexpr auto capacity = static_cast<std::int32_t>(std::tuple_size_v<decltype(buffer_)>);
    buffer_.fill(0);
    length_ = capacity;
    const std::int32_t status =
        tl_usb_data_transfer_by_handle(handle_, nullptr, 0, timeout_ms, buffer_.data(), &length_, 0);
    length_ = std::clamp(length_, 0, capacity);
    return succeeded(status);
}

UsbExchange::Next UsbExchange::takeTransfer() {
    if (buffer_[0] == AC[0] && buffer_[1] == AC[1] && takeReply())
        return Next::stop;
    // Only a transfer with neither byte of a header is skipped; with one of them the exchange just ends.
    return buffer_[0] != AC[0] && buffer_[1] != AC[1] ? Next::readTransfer : Next::stop;
}

bool UsbExchange::takeReply() {
    const auto header = received();
    const bool whole = header->length() >= replyHeaderLength;
    if (!whole || bigEndian(header->bytes() + 4) == 0 || bigEndian(header->bytes() + 6) == 0) {
        complete(header, nullptr);
        return true;
    }
    const int expected = bigEndian(header->bytes() + 6);
    read(timeout_ms_); // whether it failed shows in the length
    complete(header, received());
    if (length_ != expected)
        return completions_ == mostCompletions;
    NSLog("len:%d,size:%d", expected, length_);
    return true;
}

bool UsbExchange::succeeded(std::int32_t transportStatus) {
    printer_.setTransportStatus(transportStatus);
    return transportStatus == TL_USB_OK;
}

void UsbExchange::fail() {
    tl_usb_close_device_handle(handle_);
    complete(nullptr, nullptr);
}

void UsbExchange::complete(const Ref<NSData> &header, const Ref<NSData> &data) {
    ++completions_;
    if (const auto completion = printer_.receiveCallback())
        (*completion)(header, data);
}

Ref<NSData> UsbExchange::received() const {
    return NSData::dataWithBytes(buffer_.data(), static_cast<NSUInteger>(length_));
}
