// Where a test plugs virtual printers in, whatever the transport library behind them.
#pragma once

#include "Platform/Transport/virtual/VirtualPrinterState.h"
#include "Tests/Support/Testing.h"

class PrinterPorts : NoCopies {
public:
    virtual ~PrinterPorts() = default;

    /// Changes the printer of this serial number, if it is plugged in.
    virtual void plug(const transport::VirtualPrinterState &printer) = 0;
    virtual void unplug(const std::string &serial) = 0;
    virtual std::int32_t threshold(const std::string &serial) const = 0;

    /// On a bus waiting takes time, and an empty packet is no transfer.
    virtual bool isBus() const = 0;
    /// While the result lives, this thread has the rights of an ordinary user, also when it is root's.
    virtual std::shared_ptr<void> ordinaryUser() const { return {}; }
};

using PrinterPortsFactory = std::unique_ptr<PrinterPorts> (*)();
