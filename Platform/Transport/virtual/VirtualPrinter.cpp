#include "Platform/Transport/virtual/VirtualPrinter.h"

#include <charconv>
#include <utility>

namespace transport {

namespace {

constexpr std::uint16_t readThresholdCommand = 0xFF21;
constexpr std::uint16_t writeThresholdCommand = 0xFF20;
constexpr std::string_view readThresholdText = "<!--#ssi IDr OID_PLATFORM_CONSUMEABLE_HINT -->";
constexpr std::string_view writeThresholdText = "OID_PLATFORM_CONSUMEABLE_HINT=";
constexpr std::string_view statusText = "@PJL USTATUS DEVICE\r\nCODE=10001\r\nONLINE=TRUE\r\n\f";
constexpr std::uint16_t done = 1;
constexpr std::uint16_t refused = 2;
constexpr std::size_t mostQueuedTransfers = 64;
constexpr std::size_t shortHeaderSize = 4;
constexpr unsigned othersThreshold = 10; // percent; with Overwritten
constexpr std::size_t missingBytes = 6;  // announced but not sent, with WrongLength

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

void appendBigEndian16(std::vector<std::uint8_t> &bytes, std::size_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
    bytes.push_back(static_cast<std::uint8_t>(value));
}

std::vector<std::uint8_t> replyHeader(std::uint16_t command, std::uint16_t status, std::size_t length) {
    std::vector<std::uint8_t> header = {0x00, 0xAC};
    appendBigEndian16(header, command);
    appendBigEndian16(header, status);
    appendBigEndian16(header, length);
    return header;
}

} // namespace

VirtualPrinter::VirtualPrinter(VirtualPrinterState state, ThresholdStore store)
    : state_(std::move(state)), store_(std::move(store)) {}

tl_usb_status VirtualPrinter::open() {
    if (state_.has(Fault::CannotOpen))
        return TL_USB_ERROR_ACCESS;
    if (state_.has(Fault::Busy))
        return TL_USB_ERROR_BUSY;
    interpreter_ = {};
    output_.clear();
    if (state_.has(Fault::StaleOutput)) {
        // A reply that no program fetched: taken for the next one, it would show a wrong threshold.
        queueText("@PJL USTATUS JOB\r\nEND\r\n\f");
        queue({.bytes = replyHeader(readThresholdCommand, done, 1)});
        queueText("9");
    }
    unplugged_ = state_.has(Fault::UnplugAfterOpen);
    return TL_USB_OK;
}

tl_usb_status VirtualPrinter::write(std::span<const std::uint8_t> bytes) {
    if (unplugged_)
        return TL_USB_ERROR_NO_DEVICE;
    if (state_.has(Fault::WriteFails))
        return TL_USB_ERROR_IO;
    if (!state_.has(Fault::Silent))
        interpreter_.feed(bytes, [this](const AclFrame &request) { answer(request); });
    unplugged_ = state_.has(Fault::UnplugAfterWrite);
    return TL_USB_OK;
}

tl_usb_status VirtualPrinter::read(std::vector<std::uint8_t> &transfer) {
    transfer.clear();
    if (unplugged_)
        return TL_USB_ERROR_NO_DEVICE;
    if (output_.empty() && state_.has(Fault::EndlessText))
        queueText(statusText);
    if (output_.empty())
        return TL_USB_ERROR_TIMEOUT;
    Transfer next = std::move(output_.front());
    output_.pop_front();
    transfer = next.bytes;
    unplugged_ = next.unplugs;
    if (state_.has(Fault::EndlessReplies))
        queue(std::move(next));
    return TL_USB_OK;
}

void VirtualPrinter::answer(const AclFrame &request) {
    if (state_.has(Fault::JunkFirst)) {
        queueText(statusText);
        queueText("@PJL INFO STATUS\r\nDISPLAY=\"READY\"\r\n\f");
    }
    if (request.command == readThresholdCommand && request.data == readThresholdText)
        reply(request.command, done, std::to_string(state_.threshold));
    else if (request.command == writeThresholdCommand && storeThreshold(request.data))
        reply(request.command, done, {});
    else
        reply(request.command, refused, {});
}

bool VirtualPrinter::storeThreshold(std::string_view request) {
    if (!request.starts_with(writeThresholdText))
        return false;
    const std::string_view digits = request.substr(writeThresholdText.size());
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || value == 1 || value > 10)
        return false;
    if (state_.has(Fault::KeepsThreshold))
        return true;
    if (state_.has(Fault::Overwritten))
        value = value == othersThreshold ? 0 : othersThreshold;
    const auto threshold = static_cast<std::int32_t>(value);
    if (threshold != state_.threshold && store_ && !store_(threshold))
        return false;
    state_.threshold = threshold;
    return true;
}

void VirtualPrinter::reply(std::uint16_t command, std::uint16_t status, std::string_view data) {
    const bool hasData = !data.empty();
    const std::size_t missing = hasData && state_.has(Fault::WrongLength) ? missingBytes : 0;
    Transfer header{.bytes = replyHeader(state_.has(Fault::WrongEcho) ? command ^ 1 : command,
                                         state_.has(Fault::StatusNotOne) ? refused : status,
                                         data.size() + missing),
                    .unplugs = state_.has(Fault::UnplugAfterHeader)};
    if (state_.has(Fault::ShortHeader))
        header.bytes.resize(shortHeaderSize);
    queue(std::move(header));
    if (hasData)
        queueText(state_.has(Fault::EmptyData) ? "" : data);
}

void VirtualPrinter::queue(Transfer transfer) {
    if (output_.size() < mostQueuedTransfers)
        output_.push_back(std::move(transfer));
}

void VirtualPrinter::queueText(std::string_view text) {
    queue({.bytes = bytesOf(text)});
}

} // namespace transport
