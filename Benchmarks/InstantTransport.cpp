#include "Benchmarks/InstantTransport.h"

#include "Platform/Transport/zkcomtl.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <vector>

namespace {

constexpr std::uint8_t header[] = {0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, 0x01};
constexpr std::uint8_t data[] = {'5'};
constexpr std::span<const std::uint8_t> reply[] = {header, data};

std::vector<tl_usb_device_info> attached;
std::size_t sent = std::size(reply); // transfers of the reply

} // namespace

void instant::attachPrinters(std::size_t count) {
    attached.assign(count, {});
    for (std::size_t i = 0; i < count; ++i) {
        std::snprintf(attached[i].serial, sizeof attached[i].serial, "SN%04zu", i);
        std::strcpy(attached[i].product, "L200 Series");
        std::strcpy(attached[i].manufacturer, "Zelkor");
    }
}

std::int32_t tl_usb_get_devicelist_by_vid(std::int32_t, tl_usb_device_info **list, std::int32_t *count) {
    *list = attached.data();
    *count = static_cast<std::int32_t>(attached.size());
    return TL_USB_OK;
}

std::int32_t tl_usb_get_printer_info(const char *, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                                     char **text) {
    *text = ::strdup("{\"printer_status\": 3}");
    return TL_USB_OK;
}

std::int32_t tl_usb_get_device_handle(const char *, std::int32_t, void **handle) {
    sent = std::size(reply);
    *handle = &sent;
    return TL_USB_OK;
}

std::int32_t tl_usb_data_transfer_by_handle(void *, const std::uint8_t *write_buffer, std::uint32_t,
                                            std::int32_t, std::uint8_t *read_buffer,
                                            std::int32_t *read_length, std::uintptr_t) {
    if (write_buffer)
        sent = 0;
    if (!read_buffer)
        return TL_USB_OK;
    *read_length = 0;
    if (sent == std::size(reply))
        return TL_USB_ERROR_TIMEOUT;
    const auto transfer = reply[sent++];
    std::copy(transfer.begin(), transfer.end(), read_buffer);
    *read_length = static_cast<std::int32_t>(transfer.size());
    return TL_USB_OK;
}

std::int32_t tl_usb_close_device_handle(void *) {
    return TL_USB_OK;
}
