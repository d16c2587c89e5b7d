// libzkcomtl.so.1 over the USB bus of this machine.
#include "Platform/Dispatch/Clock.h"
#include "Platform/Transport/DeviceRecords.h"
#include "Platform/Transport/usb/LibusbBus.h"
#include "Platform/Transport/usb/UsbTransport.h"
#include "Platform/Transport/zkcomtl.h"

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <utility>

namespace {

using std::chrono::milliseconds;
using transport::LibusbBus;
using transport::UsbTransport;

// Not destroyed, as another thread may still call when the library ends; by then it owns no memory.
UsbTransport &usb() {
    alignas(LibusbBus) static std::byte busPlace[sizeof(LibusbBus)];
    alignas(UsbTransport) static std::byte place[sizeof(UsbTransport)];
    static auto *const transport =
        new (place) UsbTransport(*new (busPlace) LibusbBus, dispatch::SystemClock::shared());
    return *transport;
}

// Gives the printers back when the process ends, in either way, or the library.
const struct Ending {
    Ending() {
        std::at_quick_exit([] { usb().shutDown(); });
    }
    ~Ending() { usb().shutDown(); }
} ending;

// No exception crosses the C interface.
template <class Function>
int32_t guarded(Function function) {
    try {
        return function();
    } catch (const std::bad_alloc &) {
        return TL_USB_ERROR_NO_MEMORY;
    } catch (...) {
        return TL_USB_ERROR_IO;
    }
}

} // namespace

int32_t tl_usb_get_devicelist_by_vid(int32_t vid, tl_usb_device_info **list, int32_t *count) {
    if (list == nullptr || count == nullptr) {
        return TL_USB_ERROR_INVALID;
    }
    *list = nullptr;
    *count = 0;
    return guarded([&] {
        std::vector<tl_usb_device_info> records;
        for (const auto &printer : transport::attachedPrinters(vid)) {
            records.push_back(transport::deviceRecord(printer.identity, printer.vid, printer.pid));
        }
        transport::handOut(std::move(records), *list, *count);
        return TL_USB_OK;
    });
}

int32_t tl_usb_get_printer_info(const char *uri, int32_t, int32_t, int32_t timeout_ms, int32_t, char **text) {
    if (uri == nullptr || text == nullptr) {
        return TL_USB_ERROR_INVALID;
    }
    return guarded([&] {
        std::string status;
        const tl_usb_status result = usb().status(uri, milliseconds(timeout_ms), status);
        if (result != TL_USB_OK) {
            return result;
        }
        char *const copy = ::strdup(status.c_str());
        if (copy == nullptr) {
            return TL_USB_ERROR_NO_MEMORY;
        }
        *text = copy;
        return TL_USB_OK;
    });
}

int32_t tl_usb_get_device_handle(const char *uri, int32_t, void **handle) {
    if (handle == nullptr) {
        return TL_USB_ERROR_INVALID;
    }
    *handle = nullptr;
    if (uri == nullptr) {
        return TL_USB_ERROR_INVALID;
    }
    return guarded([&] { return usb().open(uri, *handle); });
}

int32_t tl_usb_data_transfer_by_handle(void *handle, const uint8_t *write_buffer, uint32_t write_length,
                                       int32_t timeout_ms, uint8_t *read_buffer, int32_t *read_length,
                                       uintptr_t) {
    const int32_t capacity = read_length == nullptr ? 0 : std::exchange(*read_length, 0);
    const bool reads = read_buffer != nullptr || read_length != nullptr;
    if ((reads && (read_buffer == nullptr || capacity <= 0)) ||
        (write_buffer == nullptr && write_length != 0)) {
        return TL_USB_ERROR_INVALID;
    }
    return guarded([&] {
        size_t count = 0;
        const tl_usb_status status =
            usb().transfer(handle, {write_buffer, write_length}, {read_buffer, static_cast<size_t>(capacity)},
                           count, milliseconds(timeout_ms));
        if (reads) {
            *read_length = static_cast<int32_t>(count);
        }
        return status;
    });
}

int32_t tl_usb_close_device_handle(void *handle) {
    return guarded([&] { return usb().close(handle); });
}
