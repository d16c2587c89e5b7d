#include "Tests/Support/UsbEmulation/EmulatedUsbPrinter.h"

#include <cerrno>
#include <filesystem>
#include <linux/usb/ch9.h>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

using transport::Fault;

namespace {

template <class Value>
Value &as(UMockdevIoctlData *data) {
    return *reinterpret_cast<Value *>(data->data);
}

constexpr std::uint32_t capabilities =
    USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_NO_PACKET_SIZE_LIM | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;

} // namespace

void check(GError *error) {
    if (error == nullptr)
        return;
    const std::string message = error->message;
    g_error_free(error);
    throw std::runtime_error(message);
}

EmulatedUsbPrinter::EmulatedUsbPrinter(UsbAddress address, const std::filesystem::path &root,
                                       const transport::VirtualPrinterState &state)
    : address_(address), node_(root / usbNodePath(address).substr(1)), printer_(state) {
    setState(state);
}

transport::VirtualPrinterState EmulatedUsbPrinter::state() const {
    const locking::MutexLock guard(mutex_);
    return printer_.state();
}

void EmulatedUsbPrinter::setState(const transport::VirtualPrinterState &state) {
    using enum std::filesystem::perms;
    const locking::MutexLock guard(mutex_);
    printer_.setState(state);
    isFresh_ = clients_.empty();
    if (!isFresh_)
        printer_.open();
    std::filesystem::permissions(node_.path(), state.has(Fault::CannotOpen) ? none : all);
}

void EmulatedUsbPrinter::hold(Hold what, bool held) {
    const locking::MutexLock guard(mutex_);
    if (held)
        held_.insert(what);
    else
        held_.erase(what);
    serve();
    releaseAllowed_.notifyAll();
}

void EmulatedUsbPrinter::stall(std::uint8_t endpoint) {
    const locking::MutexLock guard(mutex_);
    stalled_.insert(endpoint);
    serve();
}

void EmulatedUsbPrinter::unplug() {
    const locking::MutexLock guard(mutex_);
    unplugged_ = true;
    node_.unlink();
    serve();
}

std::size_t EmulatedUsbPrinter::opens() const {
    const locking::MutexLock guard(mutex_);
    return clients_.size();
}

bool EmulatedUsbPrinter::isAwaited(Hold what) const {
    const locking::MutexLock guard(mutex_);
    return what == Hold::release
               ? releasing_
               : std::ranges::any_of(pending_, [&](const Urb &urb) { return urb.holding() == what; });
}

void EmulatedUsbPrinter::connect(const Client *client) {
    const locking::MutexLock guard(mutex_);
    clients_.insert(client);
    if (std::exchange(isFresh_, false))
        printer_.open();
}

void EmulatedUsbPrinter::vanish(const Client *client) {
    const auto isTheirs = [&](const Urb &urb) { return urb.client == client; };
    const locking::MutexLock guard(mutex_);
    clients_.erase(client);
    if (claimer_ == client)
        claimer_ = nullptr;
    std::erase_if(pending_, isTheirs);
    std::erase_if(finished_, isTheirs);
    serve();
}

void EmulatedUsbPrinter::handle(Client *client) {
    const locking::MutexLock lock(mutex_);
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    if (request == USBDEVFS_RELEASEINTERFACE) {
        releasing_ = true;
        while (held_.contains(Hold::release))
            releaseAllowed_.wait(mutex_);
        releasing_ = false;
    }
    UMockdevIoctlData *const argument = umockdev_ioctl_client_get_arg(client);
    const std::size_t size = _IOC_SIZE(request);
    const Data block = size > 0 ? resolve(argument, 0, size) : Data();
    const int answered = answer(client, request, block ? block.get() : argument);
    umockdev_ioctl_client_complete(client, std::max(answered, -1), std::max(-answered, 0));
}

EmulatedUsbPrinter::Data EmulatedUsbPrinter::resolve(UMockdevIoctlData *parent, std::size_t offset,
                                                     std::size_t size) {
    GError *error = nullptr;
    Data data(umockdev_ioctl_data_resolve(parent, offset, size, &error));
    check(error);
    return data;
}

int EmulatedUsbPrinter::answer(const Client *client, unsigned long request, UMockdevIoctlData *argument) {
    if (request == USBDEVFS_REAPURBNDELAY)
        return reap(client, argument);
    if (unplugged_)
        return -ENODEV;
    switch (request) {
    case USBDEVFS_GET_CAPABILITIES:
        as<std::uint32_t>(argument) = capabilities;
        return 0;
    case USBDEVFS_DISCONNECT_CLAIM:
        return claim(client, as<usbdevfs_disconnect_claim>(argument).interface);
    case USBDEVFS_RELEASEINTERFACE:
        return release(client, as<unsigned>(argument));
    case USBDEVFS_IOCTL:
        return bindDriver(as<usbdevfs_ioctl>(argument));
    case USBDEVFS_SUBMITURB:
        return submit(client, argument);
    case USBDEVFS_DISCARDURB:
        return discard(client, as<unsigned long>(argument));
    case USBDEVFS_CLEAR_HALT:
        stalled_.erase(static_cast<std::uint8_t>(as<unsigned>(argument)));
        return 0;
    default:
        return -ENOTTY;
    }
}

int EmulatedUsbPrinter::claim(const Client *client, unsigned interface) {
    if (interface != usbPrinterInterface)
        return -EINVAL;
    if (claimer_ || printer_.state().has(Fault::Busy))
        return -EBUSY;
    claimer_ = client;
    kernelDriver_ = false;
    return 0;
}

int EmulatedUsbPrinter::release(const Client *client, unsigned interface) {
    if (claimer_ != client || interface != usbPrinterInterface)
        return -EINVAL;
    claimer_ = nullptr;
    return 0;
}

int EmulatedUsbPrinter::bindDriver(const usbdevfs_ioctl &call) {
    if (call.ioctl_code != static_cast<int>(USBDEVFS_CONNECT) || call.ifno != int{usbPrinterInterface})
        return -EINVAL;
    if (claimer_)
        return -EBUSY;
    kernelDriver_ = true;
    return 1;
}

int EmulatedUsbPrinter::submit(const Client *client, UMockdevIoctlData *block) {
    const auto &urb = as<usbdevfs_urb>(block);
    const auto length = static_cast<std::size_t>(urb.buffer_length);
    const bool isBulk = urb.endpoint == usbBulkIn || urb.endpoint == usbBulkOut;
    if (urb.type != USBDEVFS_URB_TYPE_CONTROL && (claimer_ != client || !isBulk))
        return -ENOENT; // the kernel is more lenient, but says so in its log
    pending_.push_back({client, Data(umockdev_ioctl_data_ref(block)),
                        length > 0 ? resolve(block, offsetof(usbdevfs_urb, buffer), length) : Data()});
    serve();
    return 0;
}

int EmulatedUsbPrinter::reap(const Client *client, UMockdevIoctlData *pointer) {
    const auto found = std::ranges::find(finished_, client, &Urb::client);
    if (found == finished_.end())
        return unplugged_ ? -ENODEV : -EAGAIN;
    umockdev_ioctl_data_set_ptr(pointer, 0, found->block.get());
    finished_.erase(found);
    serve();
    return 0;
}

int EmulatedUsbPrinter::discard(const Client *client, unsigned long address) {
    const auto found = std::ranges::find_if(
        pending_, [&](const Urb &urb) { return urb.client == client && urb.block->client_addr == address; });
    if (found == pending_.end())
        return -EINVAL;
    (**found).status = -ENOENT;
    finished_.push_back(std::move(*found));
    pending_.erase(found);
    serve();
    return 0;
}

Hold EmulatedUsbPrinter::Urb::holding() const {
    return (**this).type != USBDEVFS_URB_TYPE_CONTROL && (**this).endpoint == usbBulkIn ? Hold::answers
                                                                                        : Hold::requests;
}

void EmulatedUsbPrinter::serve() {
    for (auto urb = pending_.begin(); urb != pending_.end();) {
        const auto status = outcome(*urb);
        if (!status) {
            ++urb;
            continue;
        }
        (**urb).status = *status;
        finished_.push_back(std::move(*urb));
        pending_.erase(urb);
        urb = pending_.begin(); // for which there may be an answer now
    }
    node_.setReady(unplugged_ || !finished_.empty());
}

std::optional<int> EmulatedUsbPrinter::outcome(const Urb &urb) {
    const bool isControl = (*urb).type == USBDEVFS_URB_TYPE_CONTROL;
    if (unplugged_)
        return -ESHUTDOWN;
    if (!isControl && stalled_.contains((*urb).endpoint))
        return -EPIPE;
    if (held_.contains(urb.holding()))
        return std::nullopt;
    return isControl ? control(urb) : (*urb).endpoint == usbBulkIn ? read(urb) : write(urb);
}

int EmulatedUsbPrinter::control(const Urb &urb) {
    const usb_ctrlrequest setup = as<usb_ctrlrequest>(urb.buffer.get());
    constexpr std::uint8_t fromClassInterface = USB_DIR_IN | USB_TYPE_CLASS | USB_RECIP_INTERFACE;
    Bytes reply =
        setup.bRequestType == fromClassInterface ? classReply(setup.bRequest, setup.wIndex) : Bytes();
    if (reply.empty())
        return -EPIPE;
    reply.resize(std::min<std::size_t>(reply.size(), setup.wLength));
    std::ranges::copy(reply, urb.buffer->data + sizeof setup);
    (*urb).actual_length = static_cast<int>(reply.size());
    return 0;
}

// Of the printer class; empty for a request that is refused.
Bytes EmulatedUsbPrinter::classReply(std::uint8_t request, std::uint16_t index) const {
    enum : std::uint8_t { getDeviceId = 0, getPortStatus = 1 };
    const transport::VirtualPrinterState &state = printer_.state();
    if (request == getPortStatus && index == usbPrinterInterface && !state.has(Fault::StatusFails)) {
        constexpr std::uint8_t noError = 0x08, selected = 0x10;
        const bool isNormal = state.printerStatus == 1 || state.printerStatus == 3;
        return {static_cast<std::uint8_t>(isNormal ? noError | selected : selected)};
    }
    if (request == getDeviceId && index == usbPrinterInterface << 8) {
        const std::string text = "MFG:" + state.manufacturer + ";MDL:" + state.product + ";CMD:PJL,ACL;";
        Bytes reply = {static_cast<std::uint8_t>((text.size() + 2) >> 8),
                       static_cast<std::uint8_t>(text.size() + 2)};
        reply.insert(reply.end(), text.begin(), text.end());
        return reply;
    }
    return {};
}

int EmulatedUsbPrinter::write(const Urb &urb) {
    const auto length = static_cast<std::size_t>(urb.buffer ? urb.buffer->data_len : 0);
    const int status = onWire(printer_.write({length > 0 ? urb.buffer->data : nullptr, length}));
    (*urb).actual_length = status == 0 ? static_cast<int>(length) : 0;
    return status;
}

// The virtual printer's transfers are short: each is one packet.
std::optional<int> EmulatedUsbPrinter::read(const Urb &urb) {
    Bytes transfer;
    const tl_usb_status status = printer_.read(transfer);
    if (status == TL_USB_ERROR_TIMEOUT)
        return std::nullopt;
    const std::size_t taken = std::min(transfer.size(), static_cast<std::size_t>((*urb).buffer_length));
    std::copy_n(transfer.begin(), taken, urb.buffer ? urb.buffer->data : nullptr);
    (*urb).actual_length = static_cast<int>(taken);
    return taken < transfer.size() ? -EOVERFLOW : onWire(status);
}

int EmulatedUsbPrinter::onWire(tl_usb_status status) {
    isFresh_ = isFresh_ || status == TL_USB_ERROR_NO_DEVICE;
    return status == TL_USB_OK ? 0 : status == TL_USB_ERROR_NO_DEVICE ? -ESHUTDOWN : -EPROTO;
}
