#include "Platform/Transport/DeviceRecords.h"

#include <cstring>
#include <string>
#include <utility>

namespace transport {

namespace {

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

template <size_t capacity>
void copyText(char (&field)[capacity], const std::string &text) {
    size_t length = text.size();
    if (length >= capacity) {
        length = capacity - 1;
        while (length > 0 && continuesCharacter(text[length])) {
            --length;
        }
    }
    std::memcpy(field, text.data(), length);
}

} // namespace

tl_usb_device_info deviceRecord(const PrinterIdentity &printer, uint16_t vid, uint16_t pid) {
    tl_usb_device_info record{};
    copyText(record.serial, printer.serial);
    copyText(record.product, printer.product);
    copyText(record.manufacturer, printer.manufacturer);
    record.pid = pid;
    record.vid = vid;
    return record;
}

void handOut(std::vector<tl_usb_device_info> records, tl_usb_device_info *&list, int32_t &count) {
    thread_local std::vector<tl_usb_device_info> kept;
    kept = std::move(records);
    list = kept.empty() ? nullptr : kept.data();
    count = static_cast<int32_t>(kept.size());
}

} // namespace transport
