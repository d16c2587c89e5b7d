#include "Tests/Support/UsbEmulation/EmulatedUsbPrinter.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <linux/usb/ch9.h>
#include <linux/usbdevice_fs.h>
#include <span>
#include <stdexcept>
#include <sys/ioctl.h>
#include <utility>

using transport::Fault;

namespace {

template <class Value>
Value &as(UMockdevIoctlData *data) {
    return *reinterpret_cast<Value *>(data->data);
}

constexpr std::uint32_t capabilities =
    USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_NO_PACKET_SIZE_LIM | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;

} // namespace

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

void EmulatedUsbPrinter::holdAnswers(bool held) {
    const locking::MutexLock guard(mutex_);
    answersHeld_ = held;
    serveReads();
}

void EmulatedUsbPrinter::holdRequests(bool held) {
    const locking::MutexLock guard(mutex_);
    requestsHeld_ = held;
    while (!requestsHeld_ && !requests_.empty()) {
        Urb urb = std::move(requests_.front());
        requests_.pop_front();
        take(std::move(urb));
    }
    serveReads();
}

void EmulatedUsbPrinter::holdRelease(bool held) {
    const locking::MutexLock guard(mutex_);
    releaseHeld_ = held;
    releaseAllowed_.notifyAll();
}

void EmulatedUsbPrinter::stall(std::uint8_t endpoint) {
    const locking::MutexLock guard(mutex_);
    stalled_.insert(endpoint);
    serveReads();
}

void EmulatedUsbPrinter::unplug() {
    const locking::MutexLock guard(mutex_);
    unplugged_ = true;
    node_.unlink();
    finishAll(reads_, -ESHUTDOWN);
    finishAll(requests_, -ESHUTDOWN);
    showReady();
}

bool EmulatedUsbPrinter::isUnplugged() const {
    const locking::MutexLock guard(mutex_);
    return unplugged_;
}

bool EmulatedUsbPrinter::isClaimed() const {
    const locking::MutexLock guard(mutex_);
    return claimer_ != nullptr;
}

bool EmulatedUsbPrinter::hasKernelDriver() const {
    const locking::MutexLock guard(mutex_);
    return kernelDriver_;
}

std::size_t EmulatedUsbPrinter::opens() const {
    const locking::MutexLock guard(mutex_);
    return clients_.size();
}

std::size_t EmulatedUsbPrinter::pending() const {
    const locking::MutexLock guard(mutex_);
    return reads_.size() + requests_.size();
}

bool EmulatedUsbPrinter::isReleasing() const {
    const locking::MutexLock guard(mutex_);
    return releasing_;
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
    std::erase_if(reads_, isTheirs);
    std::erase_if(requests_, isTheirs);
    std::erase_if(finished_, isTheirs);
    showReady();
}

void EmulatedUsbPrinter::handle(Client *client) {
    const locking::MutexLock lock(mutex_);
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    if (request == USBDEVFS_RELEASEINTERFACE) {
        releasing_ = true;
        while (releaseHeld_)
            releaseAllowed_.wait(mutex_);
        releasing_ = false;
    }
    UMockdevIoctlData *const argument = umockdev_ioctl_client_get_arg(client);
    const std::size_t size = _IOC_SIZE(request);
    const Data block = size > 0 ? resolve(argument, 0, size) : Data();
    const Answer answered = answer(client, request, block ? block.get() : argument);
    umockdev_ioctl_client_complete(client, answered.error != 0 ? -1 : answered.result, answered.error);
}

EmulatedUsbPrinter::Data EmulatedUsbPrinter::resolve(UMockdevIoctlData *parent, std::size_t offset,
                                                     std::size_t size) {
    GError *error = nullptr;
    Data data(umockdev_ioctl_data_resolve(parent, offset, size, &error));
    if (error != nullptr) {
        const std::string message = error->message;
        g_error_free(error);
        throw std::runtime_error(message);
    }
    return data;
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::answer(const Client *client, unsigned long request,
                                                      UMockdevIoctlData *argument) {
    if (request == USBDEVFS_REAPURBNDELAY)
        return reap(client, argument);
    if (unplugged_)
        return {.error = ENODEV};
    switch (request) {
    case USBDEVFS_GET_CAPABILITIES:
        as<std::uint32_t>(argument) = capabilities;
        return {};
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
        return {};
    default:
        return {.error = ENOTTY};
    }
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::claim(const Client *client, unsigned interface) {
    if (interface != usbPrinterInterface)
        return {.error = EINVAL};
    if (claimer_ || printer_.state().has(Fault::Busy))
        return {.error = EBUSY};
    claimer_ = client;
    kernelDriver_ = false;
    return {};
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::release(const Client *client, unsigned interface) {
    if (claimer_ != client || interface != usbPrinterInterface)
        return {.error = EINVAL};
    claimer_ = nullptr;
    return {};
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::bindDriver(const usbdevfs_ioctl &call) {
    if (call.ioctl_code != static_cast<int>(USBDEVFS_CONNECT) || call.ifno != int{usbPrinterInterface})
        return {.error = EINVAL};
    if (claimer_)
        return {.error = EBUSY};
    kernelDriver_ = true;
    return {.result = 1};
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::submit(const Client *client, UMockdevIoctlData *block) {
    const auto &urb = as<usbdevfs_urb>(block);
    const auto length = static_cast<std::size_t>(urb.buffer_length);
    Urb submitted{client, Data(umockdev_ioctl_data_ref(block)),
                  length > 0 ? resolve(block, offsetof(usbdevfs_urb, buffer), length) : Data()};
    const bool isControl = urb.type == USBDEVFS_URB_TYPE_CONTROL;
    if (!isControl && (claimer_ != client || (urb.endpoint != usbBulkIn && urb.endpoint != usbBulkOut)))
        return {.error = ENOENT}; // the kernel is more lenient, but says so in its log
    if (!isControl && urb.endpoint == usbBulkIn)
        reads_.push_back(std::move(submitted));
    else if (requestsHeld_)
        requests_.push_back(std::move(submitted));
    else
        take(std::move(submitted));
    serveReads();
    return {};
}

void EmulatedUsbPrinter::take(Urb urb) {
    if (as<usbdevfs_urb>(urb.block.get()).type == USBDEVFS_URB_TYPE_CONTROL)
        control(std::move(urb));
    else
        write(std::move(urb));
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::reap(const Client *client, UMockdevIoctlData *pointer) {
    const auto found = std::ranges::find_if(finished_, [&](const Urb &urb) { return urb.client == client; });
    if (found == finished_.end())
        return {.error = unplugged_ ? ENODEV : EAGAIN};
    umockdev_ioctl_data_set_ptr(pointer, 0, found->block.get());
    finished_.erase(found);
    showReady();
    return {};
}

EmulatedUsbPrinter::Answer EmulatedUsbPrinter::discard(const Client *client, unsigned long address) {
    for (std::deque<Urb> *const pending : {&reads_, &requests_}) {
        const auto found = std::ranges::find_if(*pending, [&](const Urb &urb) {
            return urb.client == client && urb.block->client_addr == address;
        });
        if (found != pending->end()) {
            Urb urb = std::move(*found);
            pending->erase(found);
            finish(std::move(urb), -ENOENT);
            return {};
        }
    }
    return {.error = EINVAL};
}

void EmulatedUsbPrinter::control(Urb urb) {
    const usb_ctrlrequest setup = as<usb_ctrlrequest>(urb.buffer.get());
    constexpr std::uint8_t fromClassInterface = USB_DIR_IN | USB_TYPE_CLASS | USB_RECIP_INTERFACE;
    Bytes reply =
        setup.bRequestType == fromClassInterface ? classReply(setup.bRequest, setup.wIndex) : Bytes();
    if (reply.empty())
        return finish(std::move(urb), -EPIPE);
    reply.resize(std::min<std::size_t>(reply.size(), setup.wLength));
    std::ranges::copy(reply, urb.buffer->data + sizeof setup);
    as<usbdevfs_urb>(urb.block.get()).actual_length = static_cast<int>(reply.size());
    finish(std::move(urb), 0);
}

// Of the printer class; empty for a request that is refused.
EmulatedUsbPrinter::Bytes EmulatedUsbPrinter::classReply(std::uint8_t request, std::uint16_t index) const {
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

void EmulatedUsbPrinter::write(Urb urb) {
    if (stalled_.contains(usbBulkOut))
        return finish(std::move(urb), -EPIPE);
    const std::span<const std::uint8_t> bytes =
        urb.buffer ? std::span(urb.buffer->data, static_cast<std::size_t>(urb.buffer->data_len))
                   : std::span<const std::uint8_t>();
    const int status = onWire(printer_.write(bytes));
    if (status == 0)
        as<usbdevfs_urb>(urb.block.get()).actual_length = static_cast<int>(bytes.size());
    finish(std::move(urb), status);
}

void EmulatedUsbPrinter::serveReads() {
    if (stalled_.contains(usbBulkIn))
        return finishAll(reads_, -EPIPE);
    while (!reads_.empty() && !answersHeld_) {
        Bytes transfer;
        const tl_usb_status status = printer_.read(transfer);
        if (status == TL_USB_ERROR_TIMEOUT)
            return;
        Urb urb = std::move(reads_.front());
        reads_.pop_front();
        finish(std::move(urb), onWire(status), transfer);
    }
}

int EmulatedUsbPrinter::onWire(tl_usb_status status) {
    isFresh_ = isFresh_ || status == TL_USB_ERROR_NO_DEVICE;
    return status == TL_USB_OK ? 0 : status == TL_USB_ERROR_NO_DEVICE ? -ESHUTDOWN : -EPROTO;
}

// The virtual printer's transfers are short: each is one packet.
void EmulatedUsbPrinter::finish(Urb urb, int status, const Bytes &sent) {
    auto &block = as<usbdevfs_urb>(urb.block.get());
    const std::size_t taken = std::min(sent.size(), static_cast<std::size_t>(block.buffer_length));
    if (taken > 0) {
        std::memcpy(urb.buffer->data, sent.data(), taken);
        block.actual_length = static_cast<int>(taken);
    }
    block.status = taken < sent.size() ? -EOVERFLOW : status;
    finished_.push_back(std::move(urb));
    showReady();
}

void EmulatedUsbPrinter::finishAll(std::deque<Urb> &urbs, int status) {
    for (Urb &urb : std::exchange(urbs, {}))
        finish(std::move(urb), status);
}

void EmulatedUsbPrinter::showReady() {
    node_.setReady(unplugged_ || !finished_.empty());
}
