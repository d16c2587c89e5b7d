#include "Platform/Transport/virtual/FolderPrinters.h"

#include "Platform/Locking/Mutex.h"
#include "Platform/Transport/virtual/PrinterFolder.h"
#include "Platform/Transport/virtual/VirtualPrinter.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace transport {

namespace {

class FolderPrinter final : public Printer {
public:
    explicit FolderPrinter(const PluggedPrinter &plugged)
        : file_(plugged.file), listed_{.identity = plugged.state.identity(),
                                       .vid = plugged.state.vid,
                                       .pid = plugged.state.pid,
                                       .plugging = plugged.file.string()},
          printer_(plugged.state, [file = plugged.file](std::int32_t threshold) {
              return PrinterFolder::storeThreshold(file, threshold);
          }) {}

    const ListedPrinter &listed() const override { return listed_; }

    tl_usb_status open(const std::stop_token &) override {
        return present([](VirtualPrinter &printer) { return printer.open(); });
    }

    tl_usb_status write(std::span<const std::uint8_t> bytes, std::chrono::milliseconds,
                        const std::stop_token &) override {
        return present([&](VirtualPrinter &printer) { return printer.write(bytes); });
    }

    tl_usb_status read(std::span<std::uint8_t> buffer, std::size_t &count, std::chrono::milliseconds,
                       const std::stop_token &) override {
        count = 0;
        return present([&](VirtualPrinter &printer) {
            std::vector<std::uint8_t> transfer;
            if (const tl_usb_status status = printer.read(transfer); status != TL_USB_OK)
                return status;
            const std::size_t kept = std::min(transfer.size(), buffer.size());
            std::copy_n(transfer.begin(), kept, buffer.begin());
            if (transfer.size() > kept)
                return TL_USB_ERROR_OVERFLOW;
            count = kept;
            return TL_USB_OK;
        });
    }

    tl_usb_status status(std::string &text, std::chrono::milliseconds, const std::stop_token &) override {
        return present([&](VirtualPrinter &printer) {
            const std::optional<std::string> reply = statusReply(printer.state());
            text = reply.value_or("");
            return reply ? TL_USB_OK : TL_USB_ERROR_IO;
        });
    }

    void giveBack() override {}

private:
    tl_usb_status present(const std::function<tl_usb_status(VirtualPrinter &)> &work) {
        const locking::MutexLock lock(mutex_);
        std::optional<VirtualPrinterState> state = PrinterFolder::load(file_);
        if (!state)
            return TL_USB_ERROR_NO_DEVICE;
        printer_.setState(std::move(*state));
        return work(printer_);
    }

    const std::filesystem::path file_;
    const ListedPrinter listed_;
    locking::Mutex mutex_;
    VirtualPrinter printer_ ZK_GUARDED_BY(mutex_);
};

} // namespace

std::vector<std::shared_ptr<Printer>> FolderPrinters::attached() {
    std::vector<std::shared_ptr<Printer>> printers;
    for (const PluggedPrinter &plugged : PrinterFolder::fromEnvironment().printers())
        printers.push_back(std::make_shared<FolderPrinter>(plugged));
    return printers;
}

} // namespace transport
