// The USB transport without a bus: listing twenty devices of a made-up sysfs, and one exchange with a printer
// that answers at once, so that what is measured is ours alone.
#include "Platform/Transport/Transport.h"
#include "Platform/Transport/usb/UsbPrinters.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace transport;
using std::chrono::milliseconds;

constexpr int deviceCount = 20, printerCount = 4;

/// Twenty devices, every fifth of them a printer of the maker.
class DeviceTree {
public:
    DeviceTree() {
        if (!::mkdtemp(root_.data()))
            throw std::runtime_error("no temporary folder");
        for (int i = 1; i <= deviceCount; ++i) {
            const bool printer = i % (deviceCount / printerCount) == 0;
            const std::string name = "1-" + std::to_string(i);
            put(name, "idVendor", printer ? "5a4b" : "1d6b");
            put(name, "idProduct", "0002");
            put(name, "busnum", "1");
            put(name, "devnum", std::to_string(i));
            put(name, "manufacturer", "Zelkor");
            put(name, "product", "L200 Series");
            put(name, "serial", "SN" + std::to_string(i));
            put(name + ":1.0", "bInterfaceClass", printer ? "07" : "03");
        }
    }
    ~DeviceTree() { fs::remove_all(root_); }
    DeviceTree(const DeviceTree &) = delete;
    DeviceTree &operator=(const DeviceTree &) = delete;

    fs::path root() const { return root_; }

private:
    void put(const std::string &device, const std::string &attribute, const std::string &text) const {
        const fs::path folder = root() / "sys/bus/usb/devices" / device;
        fs::create_directories(folder);
        std::ofstream(folder / attribute) << text << '\n';
    }

    std::string root_ = (fs::temp_directory_path() / "devices.XXXXXX").string();
};

void listing(benchmark::State &state) {
    const DeviceTree tree;
    for (auto _ : state)
        if (attachedPrinters(0x5A4B, tree.root()).size() != printerCount)
            state.SkipWithError("a listing went wrong");
}
BENCHMARK(listing);

class InstantDevice final : public UsbDevice {
public:
    std::size_t packetSize() const override { return 512; }
    Transferred send(std::span<const std::uint8_t> bytes, milliseconds, const std::stop_token &) override {
        return {TL_USB_OK, bytes.size()};
    }
    Transferred receive(std::span<std::uint8_t> buffer, milliseconds, const std::stop_token &) override {
        std::fill_n(buffer.begin(), 8, std::uint8_t{0});
        return {TL_USB_OK, 8};
    }
    Transferred portStatus(std::uint8_t &bits, milliseconds, const std::stop_token &) override {
        bits = 0x18;
        return {TL_USB_OK, 1};
    }
    Transferred deviceId(std::span<std::uint8_t>, milliseconds, const std::stop_token &) override {
        return {TL_USB_OK, 0};
    }
};

class InstantBus final : public UsbBus {
public:
    std::vector<AttachedPrinter> printers() override {
        return {
            {.identity = {"Zelkor", "L200 Series", "SN1"}, .vid = 0x5A4B, .pid = 2, .bus = 1, .address = 1}};
    }
    bool isAttached(const AttachedPrinter &) override { return true; }
    tl_usb_status open(const AttachedPrinter &, std::unique_ptr<UsbDevice> &device) override {
        device = std::make_unique<InstantDevice>();
        return TL_USB_OK;
    }
};

/// What one question to a printer takes: open, write, read the header, read the data.
void usbExchange(benchmark::State &state) {
    InstantBus bus;
    UsbPrinters printers(bus, dispatch::SystemClock::shared());
    Transport transport(printers, dispatch::SystemClock::shared());
    const std::string uri = "usb://Zelkor/L200%20Series?serial=SN1";
    const std::array<std::uint8_t, 46> request{};
    std::array<std::uint8_t, 4096> reply;
    for (auto _ : state) {
        void *handle = nullptr;
        std::size_t header = 0, data = 0;
        const bool done =
            transport.open(uri, handle) == TL_USB_OK &&
            transport.transfer(handle, request, reply, header, milliseconds(10000)) == TL_USB_OK &&
            transport.transfer(handle, {}, reply, data, milliseconds(10000)) == TL_USB_OK;
        if (!done || header != 8 || data != 8)
            state.SkipWithError("an exchange went wrong");
    }
}
BENCHMARK(usbExchange);

} // namespace

BENCHMARK_MAIN();
