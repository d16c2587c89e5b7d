// libzkcomtl.so.1 over virtual printers: the files of the folder that ZKCOMTL_PRINTERS names are the
// printers.
//
// Time is virtual: nothing ever waits, a read of nothing times out at once. One mutex covers every call, file
// access included. The file is read again for each call, so that an edit of it works on an open printer and
// its deletion unplugs it.
#include "Platform/Transport/DeviceRecords.h"
#include "Platform/Transport/PrinterUri.h"
#include "Platform/Transport/virtual/PrinterFolder.h"
#include "Platform/Transport/virtual/VirtualPrinter.h"
#include "Platform/Transport/zkcomtl.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using transport::PluggedPrinter;
using transport::PrinterFolder;
using transport::VirtualPrinter;
using transport::VirtualPrinterState;

struct OpenPrinter {
    std::filesystem::path file;
    VirtualPrinter printer;
};

// The open handles. A handle is a number that is never given out twice, not an address: any value may come
// back from a caller and is only ever looked up.
class OpenPrinters {
public:
    void *add(const PluggedPrinter &plugged, VirtualPrinter printer) {
        std::erase_if(printers_, [&](const auto &open) {
            return open.second.file == plugged.file || !std::filesystem::exists(open.second.file);
        });
        void *const handle = std::bit_cast<void *>(next_++);
        printers_.emplace(handle, OpenPrinter{.file = plugged.file, .printer = std::move(printer)});
        return handle;
    }

    OpenPrinter *find(void *handle) {
        const auto found = printers_.find(handle);
        return found == printers_.end() ? nullptr : &found->second;
    }

    bool remove(void *handle) { return printers_.erase(handle) == 1; }

private:
    std::map<void *, OpenPrinter> printers_;
    uintptr_t next_ = 1;
};

std::mutex mutex;

OpenPrinters &openPrinters() {
    static auto *const open = new OpenPrinters; // outlives every thread that may still be in an exchange
    return *open;
}

// No exception crosses the C interface.
template <class Function>
int32_t locked(Function function) {
    try {
        const std::lock_guard lock(mutex);
        return function();
    } catch (const std::bad_alloc &) {
        return TL_USB_ERROR_NO_MEMORY;
    } catch (...) {
        return TL_USB_ERROR_IO;
    }
}

std::vector<PluggedPrinter> printersNamed(std::string_view uri) {
    return transport::namedOf(
        PrinterFolder::fromEnvironment().printers(),
        [&](const PluggedPrinter &printer) { return transport::names(uri, printer.state.identity()); });
}

tl_usb_status read(VirtualPrinter &printer, uint8_t *buffer, size_t capacity, int32_t &length) {
    std::vector<uint8_t> transfer;
    if (const tl_usb_status status = printer.read(transfer); status != TL_USB_OK) {
        return status;
    }
    const size_t count = std::min(transfer.size(), capacity);
    std::copy_n(transfer.begin(), count, buffer);
    if (transfer.size() > capacity) {
        return TL_USB_ERROR_OVERFLOW;
    }
    length = static_cast<int32_t>(count);
    return TL_USB_OK;
}

} // namespace

int32_t tl_usb_get_devicelist_by_vid(int32_t vid, tl_usb_device_info **list, int32_t *count) {
    if (list == nullptr || count == nullptr) {
        return TL_USB_ERROR_INVALID;
    }
    *list = nullptr;
    *count = 0;
    return locked([&]() -> int32_t {
        std::vector<PluggedPrinter> printers = PrinterFolder::fromEnvironment().printers();
        std::erase_if(printers, [&](const PluggedPrinter &printer) { return printer.state.vid != vid; });
        std::vector<tl_usb_device_info> records;
        records.reserve(printers.size());
        for (const auto &[file, state] : printers)
            records.push_back(transport::deviceRecord(state.identity(), state.vid, state.pid));
        transport::handOut(std::move(records), *list, *count);
        return TL_USB_OK;
    });
}

int32_t tl_usb_get_printer_info(const char *uri, int32_t, int32_t, int32_t, int32_t, char **text) {
    if (uri == nullptr || text == nullptr) {
        return TL_USB_ERROR_INVALID;
    }
    return locked([&]() -> int32_t {
        const std::vector<PluggedPrinter> named = printersNamed(uri);
        if (named.size() != 1) {
            return transport::statusOfNamed(named.size());
        }
        const std::optional<std::string> status = statusReply(named.front().state);
        if (!status) {
            return TL_USB_ERROR_IO;
        }
        char *const copy = ::strdup(status->c_str());
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
    return locked([&]() -> int32_t {
        const std::vector<PluggedPrinter> named = printersNamed(uri);
        if (named.size() != 1) {
            return transport::statusOfNamed(named.size());
        }
        const auto &[file, state] = named.front();
        VirtualPrinter printer(state, [file = file](int32_t threshold) {
            return PrinterFolder::storeThreshold(file, threshold);
        });
        const tl_usb_status status = printer.open();
        if (status == TL_USB_OK) {
            *handle = openPrinters().add(named.front(), std::move(printer));
        }
        return status;
    });
}

int32_t tl_usb_data_transfer_by_handle(void *handle, const uint8_t *write_buffer, uint32_t write_length,
                                       int32_t, uint8_t *read_buffer, int32_t *read_length, uintptr_t) {
    const int32_t capacity = read_length == nullptr ? 0 : std::exchange(*read_length, 0);
    const bool reads = read_buffer != nullptr || read_length != nullptr;
    if ((reads && (read_buffer == nullptr || capacity <= 0)) ||
        (write_buffer == nullptr && write_length != 0)) {
        return TL_USB_ERROR_INVALID;
    }
    return locked([&]() -> int32_t {
        OpenPrinter *const open = openPrinters().find(handle);
        if (open == nullptr) {
            return TL_USB_ERROR_INVALID;
        }
        std::optional<VirtualPrinterState> state = PrinterFolder::load(open->file);
        tl_usb_status status = state ? TL_USB_OK : TL_USB_ERROR_NO_DEVICE;
        if (state) {
            open->printer.setState(std::move(*state));
        }
        if (status == TL_USB_OK && write_buffer != nullptr) {
            status = open->printer.write({write_buffer, write_length});
        }
        if (status == TL_USB_OK && reads) {
            status = read(open->printer, read_buffer, static_cast<size_t>(capacity), *read_length);
        }
        if (status == TL_USB_ERROR_NO_DEVICE) {
            openPrinters().remove(handle);
        }
        return status;
    });
}

int32_t tl_usb_close_device_handle(void *handle) {
    return locked(
        [&]() -> int32_t { return openPrinters().remove(handle) ? TL_USB_OK : TL_USB_ERROR_INVALID; });
}
