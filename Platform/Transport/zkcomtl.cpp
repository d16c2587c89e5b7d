// The C interface of every transport library: checks arguments, keeps exceptions in, copies texts, and
// handles the end of the process.
#include "Platform/Transport/zkcomtl.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Transport/Printer.h"
#include "Platform/Transport/Transport.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using transport::Transport;

// Never destroyed, as another thread may still call while the library is unloaded; after `shutDown` it owns
// no memory.
Transport &library() {
    alignas(Transport) static std::byte place[sizeof(Transport)];
    static auto *const made =
        new (place) Transport(transport::libraryPrinters(), dispatch::SystemClock::shared());
    return *made;
}

std::atomic<bool> quickExit = false;

// Gives the printers back when the process ends, by exit or quick_exit, and when the library is unloaded.
const struct Ending {
    Ending() {
        std::at_quick_exit([] {
            quickExit = true;
            library().shutDown();
        });
    }
    ~Ending() { library().shutDown(); }
} ending;

// A caller whose call the end of the process cancels must not take that for a failure and report it.
std::int32_t answer(std::int32_t status) {
    while (quickExit && status == TL_USB_ERROR_CANCELLED)
        ::pause();
    return status;
}

// No exception crosses the C interface.
template <class Function>
std::int32_t guarded(Function function) {
    try {
        return answer(function());
    } catch (const std::bad_alloc &) {
        return TL_USB_ERROR_NO_MEMORY;
    } catch (...) {
        return TL_USB_ERROR_IO;
    }
}

std::chrono::milliseconds timeoutOf(std::int32_t timeout_ms) {
    return std::chrono::milliseconds(std::max(timeout_ms, 1));
}

} // namespace

std::int32_t tl_usb_get_devicelist_by_vid(std::int32_t vid, tl_usb_device_info **list, std::int32_t *count) {
    if (!list || !count)
        return TL_USB_ERROR_INVALID;
    *list = nullptr;
    *count = 0;
    return guarded([&] {
        thread_local std::vector<tl_usb_device_info> kept; // until the thread lists again or ends
        kept = library().list(vid);
        *list = kept.empty() ? nullptr : kept.data();
        *count = static_cast<std::int32_t>(kept.size());
        return TL_USB_OK;
    });
}

std::int32_t tl_usb_get_printer_info(const char *uri, std::int32_t, std::int32_t, std::int32_t timeout_ms,
                                     std::int32_t, char **text) {
    if (!uri || !text)
        return TL_USB_ERROR_INVALID;
    return guarded([&] {
        std::string status;
        if (const tl_usb_status result = library().status(uri, timeoutOf(timeout_ms), status);
            result != TL_USB_OK)
            return result;
        char *const copy = ::strdup(status.c_str());
        if (!copy)
            return TL_USB_ERROR_NO_MEMORY;
        *text = copy;
        return TL_USB_OK;
    });
}

std::int32_t tl_usb_get_device_handle(const char *uri, std::int32_t, void **handle) {
    if (!handle)
        return TL_USB_ERROR_INVALID;
    *handle = nullptr;
    if (!uri)
        return TL_USB_ERROR_INVALID;
    return guarded([&] { return library().open(uri, *handle); });
}

std::int32_t tl_usb_data_transfer_by_handle(void *handle, const std::uint8_t *write_buffer,
                                            std::uint32_t write_length, std::int32_t timeout_ms,
                                            std::uint8_t *read_buffer, std::int32_t *read_length,
                                            std::uintptr_t) {
    const std::int32_t capacity = read_length ? std::exchange(*read_length, 0) : 0;
    const bool reads = read_buffer || read_length;
    if ((reads && (!read_buffer || capacity <= 0)) || (!write_buffer && write_length != 0))
        return TL_USB_ERROR_INVALID;
    return guarded([&] {
        std::size_t count = 0;
        const tl_usb_status status = library().transfer(handle, {write_buffer, write_length},
                                                        {read_buffer, static_cast<std::size_t>(capacity)},
                                                        count, timeoutOf(timeout_ms));
        if (reads)
            *read_length = static_cast<std::int32_t>(count);
        return status;
    });
}

std::int32_t tl_usb_close_device_handle(void *handle) {
    return guarded([&] { return library().close(handle); });
}
