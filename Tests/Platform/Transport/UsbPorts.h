// Ports of an emulated USB bus.
#pragma once

#include "Tests/Platform/Transport/PrinterPorts.h"
#include "Tests/Support/UsbEmulation/UsbTestbed.h"

#include <sys/fsuid.h>
#include <unistd.h>

class UsbPorts final : public PrinterPorts {
public:
    static std::unique_ptr<PrinterPorts> make() { return std::make_unique<UsbPorts>(); }

    ~UsbPorts() override {
        for (const auto &[serial, printer] : printers_)
            UsbTestbed::shared().unplug(printer);
    }

    void plug(const transport::VirtualPrinterState &printer) override {
        const auto found = printers_.find(printer.serial);
        if (found != printers_.end())
            found->second->setState(printer);
        else
            printers_.emplace(printer.serial, UsbTestbed::shared().plug(printer));
    }

    void unplug(const std::string &serial) override {
        UsbTestbed::shared().unplug(printers_.at(serial));
        printers_.erase(serial);
    }

    std::int32_t threshold(const std::string &serial) const override {
        return printers_.at(serial)->state().threshold;
    }

    bool isBus() const override { return true; }

    std::shared_ptr<void> ordinaryUser() const override {
        constexpr uid_t nobody = 65534;
        if (::geteuid() != 0)
            return {};
        ::setfsuid(nobody);
        return {nullptr, [](void *) { ::setfsuid(0); }};
    }

    EmulatedUsbPrinter &printer(const std::string &serial) const { return *printers_.at(serial); }

private:
    std::map<std::string, std::shared_ptr<EmulatedUsbPrinter>> printers_; // by serial number
};
