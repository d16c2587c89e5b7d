#include "Platform/Transport/DeviceRecords.h"

#include <cstring>
#include <string>
#include <utility>

namespace transport {

namespace {

template <size_t capacity>
void copyText(char (&field)[capacity], const std::string &text) {
    static_assert(capacity == 256, "what fits is what is recorded");
    std::memcpy(field, text.data(), text.size());
}

} // namespace

tl_usb_device_info deviceRecord(const PrinterIdentity &printer, uint16_t vid, uint16_t pid) {
    tl_usb_device_info record{};
    const PrinterIdentity texts = recorded(printer);
    copyText(record.serial, texts.serial);
    copyText(record.product, texts.product);
    copyText(record.manufacturer, texts.manufacturer);
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

tl_usb_status statusOfNamed(size_t printers) {
    return printers == 0 ? TL_USB_ERROR_NO_DEVICE : printers == 1 ? TL_USB_OK : TL_USB_ERROR_AMBIGUOUS;
}

} // namespace transport
