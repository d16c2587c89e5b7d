#include "Platform/Transport/usb/LibusbBus.h"

#include "Platform/Transport/usb/AlternateSetting.h"
#include "Platform/Transport/usb/LibusbSettings.h"
#include "Platform/Transport/usb/PrintNodeLock.h"

#include <algorithm>
#include <atomic>
#include <libusb-1.0/libusb.h>
#include <optional>
#include <utility>

namespace transport {

namespace {

using std::chrono::milliseconds;
using Context = std::shared_ptr<libusb_context>;

struct Closes {
    void operator()(libusb_device_handle *handle) const { libusb_close(handle); }
    void operator()(libusb_transfer *transfer) const { libusb_free_transfer(transfer); }
    void operator()(libusb_config_descriptor *configuration) const {
        libusb_free_config_descriptor(configuration);
    }
    void operator()(libusb_device *device) const { libusb_unref_device(device); }
};
template <class Thing>
using Owned = std::unique_ptr<Thing, Closes>;

tl_usb_status statusOf(int error) {
    switch (error) {
    case LIBUSB_SUCCESS:
        return TL_USB_OK;
    case LIBUSB_ERROR_ACCESS:
        return TL_USB_ERROR_ACCESS;
    case LIBUSB_ERROR_NO_DEVICE:
    case LIBUSB_ERROR_NOT_FOUND:
        return TL_USB_ERROR_NO_DEVICE;
    case LIBUSB_ERROR_BUSY:
        return TL_USB_ERROR_BUSY;
    case LIBUSB_ERROR_TIMEOUT:
        return TL_USB_ERROR_TIMEOUT;
    case LIBUSB_ERROR_OVERFLOW:
        return TL_USB_ERROR_OVERFLOW;
    case LIBUSB_ERROR_PIPE:
        return TL_USB_ERROR_STALL;
    case LIBUSB_ERROR_INTERRUPTED:
        return TL_USB_ERROR_CANCELLED;
    case LIBUSB_ERROR_NO_MEM:
        return TL_USB_ERROR_NO_MEMORY;
    default:
        return TL_USB_ERROR_IO;
    }
}

tl_usb_status statusOf(libusb_transfer_status status) {
    switch (status) {
    case LIBUSB_TRANSFER_COMPLETED:
        return TL_USB_OK;
    case LIBUSB_TRANSFER_TIMED_OUT:
        return TL_USB_ERROR_TIMEOUT;
    case LIBUSB_TRANSFER_CANCELLED:
        return TL_USB_ERROR_CANCELLED;
    case LIBUSB_TRANSFER_STALL:
        return TL_USB_ERROR_STALL;
    case LIBUSB_TRANSFER_NO_DEVICE:
        return TL_USB_ERROR_NO_DEVICE;
    case LIBUSB_TRANSFER_OVERFLOW:
        return TL_USB_ERROR_OVERFLOW;
    default:
        return TL_USB_ERROR_IO;
    }
}

void LIBUSB_CALL markDone(libusb_transfer *transfer) {
    std::atomic_ref(*static_cast<int *>(transfer->user_data)).store(1, std::memory_order_release);
}

class LibusbDevice final : public UsbDevice {
public:
    LibusbDevice(Context context, Owned<libusb_device_handle> handle, const AlternateSetting &setting)
        : context_(std::move(context)), handle_(std::move(handle)), setting_(setting) {}
    ~LibusbDevice() override { libusb_release_interface(handle_.get(), setting_.interface); }

    std::size_t packetSize() const override { return setting_.packetSize; }

    Transferred send(std::span<const std::uint8_t> bytes, milliseconds timeout,
                     const std::stop_token &stop) override {
        return bulk(setting_.bulkOut, {const_cast<std::uint8_t *>(bytes.data()), bytes.size()}, timeout,
                    stop);
    }
    Transferred receive(std::span<std::uint8_t> buffer, milliseconds timeout,
                        const std::stop_token &stop) override {
        return bulk(setting_.bulkIn, buffer, timeout, stop);
    }

    Transferred portStatus(std::uint8_t &bits, milliseconds timeout, const std::stop_token &stop) override {
        constexpr std::uint8_t getPortStatus = 1;
        return request(getPortStatus, setting_.interface, {&bits, 1}, timeout, stop);
    }
    Transferred deviceId(std::span<std::uint8_t> buffer, milliseconds timeout,
                         const std::stop_token &stop) override {
        constexpr std::uint8_t getDeviceId = 0;
        const auto index = static_cast<std::uint16_t>(setting_.interface << 8 | setting_.number);
        return request(getDeviceId, index, buffer, timeout, stop);
    }

private:
    Transferred bulk(std::uint8_t endpoint, std::span<std::uint8_t> bytes, milliseconds timeout,
                     const std::stop_token &stop);
    Transferred request(std::uint8_t code, std::uint16_t index, std::span<std::uint8_t> buffer,
                        milliseconds timeout, const std::stop_token &stop);
    Transferred carriedOut(libusb_transfer &transfer, int &done, const std::stop_token &stop);
    void awaitEnd(libusb_transfer &transfer, int &done, const std::stop_token &stop);

    const Context context_; // closed after the handle
    const Owned<libusb_device_handle> handle_;
    const AlternateSetting setting_;
};

Transferred LibusbDevice::bulk(std::uint8_t endpoint, std::span<std::uint8_t> bytes, milliseconds timeout,
                               const std::stop_token &stop) {
    const Owned<libusb_transfer> transfer(libusb_alloc_transfer(0));
    if (!transfer)
        return {.status = TL_USB_ERROR_NO_MEMORY};
    int done = 0;
    libusb_fill_bulk_transfer(transfer.get(), handle_.get(), endpoint, bytes.data(),
                              static_cast<int>(bytes.size()), markDone, &done,
                              static_cast<unsigned>(timeout.count()));
    const Transferred result = carriedOut(*transfer, done, stop);
    if (result.status == TL_USB_ERROR_STALL)
        libusb_clear_halt(handle_.get(), endpoint);
    return result;
}

Transferred LibusbDevice::request(std::uint8_t code, std::uint16_t index, std::span<std::uint8_t> buffer,
                                  milliseconds timeout, const std::stop_token &stop) {
    constexpr std::uint8_t fromInterface = static_cast<std::uint8_t>(LIBUSB_ENDPOINT_IN) |
                                           static_cast<std::uint8_t>(LIBUSB_REQUEST_TYPE_CLASS) |
                                           static_cast<std::uint8_t>(LIBUSB_RECIPIENT_INTERFACE);
    std::vector<std::uint8_t> bytes(LIBUSB_CONTROL_SETUP_SIZE + buffer.size());
    const Owned<libusb_transfer> transfer(libusb_alloc_transfer(0));
    if (!transfer)
        return {.status = TL_USB_ERROR_NO_MEMORY};
    libusb_fill_control_setup(bytes.data(), fromInterface, code, 0, index,
                              static_cast<std::uint16_t>(buffer.size()));
    int done = 0;
    libusb_fill_control_transfer(transfer.get(), handle_.get(), bytes.data(), markDone, &done,
                                 static_cast<unsigned>(timeout.count()));
    const Transferred result = carriedOut(*transfer, done, stop);
    const std::size_t count = std::min(result.count, buffer.size());
    std::copy_n(bytes.begin() + LIBUSB_CONTROL_SETUP_SIZE, count, buffer.begin());
    return {.status = result.status, .count = count};
}

Transferred LibusbDevice::carriedOut(libusb_transfer &transfer, int &done, const std::stop_token &stop) {
    if (stop.stop_requested())
        return {.status = TL_USB_ERROR_CANCELLED};
    if (const int error = libusb_submit_transfer(&transfer); error != LIBUSB_SUCCESS)
        return {.status = statusOf(error)};
    awaitEnd(transfer, done, stop);
    return {.status = statusOf(transfer.status),
            .count = static_cast<std::size_t>(std::max(transfer.actual_length, 0))};
}

void LibusbDevice::awaitEnd(libusb_transfer &transfer, int &done, const std::stop_token &stop) {
    const std::stop_callback cancel(stop, [&transfer] { libusb_cancel_transfer(&transfer); });
    while (std::atomic_ref(done).load(std::memory_order_acquire) == 0) {
        const int error = libusb_handle_events_completed(context_.get(), &done);
        if (error != LIBUSB_SUCCESS && error != LIBUSB_ERROR_INTERRUPTED)
            libusb_cancel_transfer(&transfer); // still wait until it has ended
    }
}

Owned<libusb_device> deviceAt(libusb_context *context, int bus, int address) {
    libusb_device **list = nullptr;
    const ssize_t count = libusb_get_device_list(context, &list);
    if (count < 0)
        return nullptr;
    Owned<libusb_device> found;
    for (libusb_device *const device : std::span(list, static_cast<std::size_t>(count)))
        if (libusb_get_bus_number(device) == bus && libusb_get_device_address(device) == address)
            found.reset(libusb_ref_device(device));
    libusb_free_device_list(list, 1);
    return found;
}

int claim(libusb_device_handle *handle, const AlternateSetting &setting, bool onlySetting) {
    libusb_set_auto_detach_kernel_driver(handle, 1);
    if (const int error = libusb_claim_interface(handle, setting.interface); error != LIBUSB_SUCCESS)
        return error;
    if (onlySetting)
        return LIBUSB_SUCCESS; // some printers refuse the request for their only setting
    const int error = libusb_set_interface_alt_setting(handle, setting.interface, setting.number);
    if (error != LIBUSB_SUCCESS)
        libusb_release_interface(handle, setting.interface);
    return error;
}

} // namespace

std::vector<AttachedPrinter> LibusbBus::printers() {
    return attachedPrinters();
}

bool LibusbBus::isAttached(const AttachedPrinter &printer) {
    return isStillAttached(printer);
}

tl_usb_status LibusbBus::open(const AttachedPrinter &printer, std::unique_ptr<UsbDevice> &device) {
    Context shared;
    if (const tl_usb_status status = context(shared); status != TL_USB_OK)
        return status;
    const Owned<libusb_device> found = deviceAt(shared.get(), printer.bus, printer.address);
    if (!found)
        return TL_USB_ERROR_NO_DEVICE;
    libusb_config_descriptor *descriptor = nullptr;
    if (const int error = libusb_get_active_config_descriptor(found.get(), &descriptor);
        error != LIBUSB_SUCCESS) {
        return error == LIBUSB_ERROR_NOT_FOUND ? TL_USB_ERROR_IO
                                               : statusOf(error); // not found: the device is not configured
    }
    const Owned<libusb_config_descriptor> configuration(descriptor);
    const std::vector<AlternateSetting> settings = settingsOf(*configuration);
    const std::optional<AlternateSetting> setting = printerSetting(settings);
    if (!setting)
        return TL_USB_ERROR_IO;
    libusb_device_handle *opened = nullptr;
    if (const int error = libusb_open(found.get(), &opened); error != LIBUSB_SUCCESS)
        return statusOf(error);
    Owned<libusb_device_handle> handle(opened);
    if (!isAttached(printer))
        return TL_USB_ERROR_NO_DEVICE; // its address belongs to another device now
    const PrintNodeLock nodes(printer);
    if (nodes.isUsed())
        return TL_USB_ERROR_BUSY;
    const bool onlySetting =
        std::ranges::count(settings, setting->interface, &AlternateSetting::interface) == 1;
    if (const int error = claim(handle.get(), *setting, onlySetting); error != LIBUSB_SUCCESS)
        return statusOf(error);
    device = std::make_unique<LibusbDevice>(std::move(shared), std::move(handle), *setting);
    return TL_USB_OK;
}

tl_usb_status LibusbBus::context(Context &shared) {
    const locking::MutexLock lock(mutex_);
    shared = context_.lock();
    if (shared)
        return TL_USB_OK;
    libusb_context *created = nullptr;
    if (const int error = libusb_init(&created); error != LIBUSB_SUCCESS)
        return statusOf(error);
    shared.reset(created, libusb_exit);
    context_ = shared;
    return TL_USB_OK;
}

} // namespace transport
