// Ports of the virtual transport: a folder of printer files.
#pragma once

#include "Platform/Transport/virtual/PrinterFolder.h"
#include "Tests/Platform/Transport/PrinterPorts.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>

class FolderPorts final : public PrinterPorts {
public:
    static std::unique_ptr<PrinterPorts> make() { return std::make_unique<FolderPorts>(); }

    FolderPorts() { ::setenv("ZKCOMTL_PRINTERS", folder_.path().c_str(), 1); }
    ~FolderPorts() override { ::unsetenv("ZKCOMTL_PRINTERS"); }

    void plug(const transport::VirtualPrinterState &printer) override {
        const auto text = [](const std::string &value) { return '"' + value + '"'; };
        std::string faults;
        for (const auto &[name, fault] : transport::faultNames)
            if (printer.has(fault))
                faults += (faults.empty() ? "" : ", ") + text(std::string(name));
        const auto file = names_.try_emplace(printer.serial, std::to_string(1000 + names_.size()) + ".json");
        folder_.put(file.first->second,
                    R"({"manufacturer": )" + text(printer.manufacturer) + R"(, "product": )" +
                        text(printer.product) + R"(, "serial": )" + text(printer.serial) + R"(, "vid": )" +
                        std::to_string(printer.vid) + R"(, "pid": )" + std::to_string(printer.pid) +
                        R"(, "threshold": )" + std::to_string(printer.threshold) + R"(, "faults": [)" +
                        faults + "]}");
    }

    void unplug(const std::string &serial) override {
        std::filesystem::remove(folder_.file(names_.at(serial)));
    }

    std::int32_t threshold(const std::string &serial) const override {
        return transport::PrinterFolder::load(folder_.file(names_.at(serial))).value().threshold;
    }

    bool isBus() const override { return false; }

private:
    TemporaryFolder folder_;
    std::map<std::string, std::string> names_; // of the files, by serial number
};
