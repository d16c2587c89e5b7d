// The queues and printers that commands are about.
#pragma once

#include "Manager/PrinterStatus.h"
#include "Platform/Runtime/Ref.h"

#include <optional>
#include <string>
#include <vector>

class ZKUSB;

/// A print queue of a supported model, or a printer named by its device URI alone.
struct Queue {
    std::string name; ///< what the user calls it
    std::optional<std::string> description;
    std::optional<std::string> deviceUri;

    bool printsOverUsb() const { return deviceUri && deviceUri->starts_with("usb://"); }
};

/// Every queue of a supported model; `allNames` gets the name of every queue, supported or not. Fails when
/// CUPS does not answer.
std::vector<Queue> supportedQueues(std::vector<std::string> *allNames = nullptr);

/// What the user means by a queue's name or a device URI. Fails when there is none, and when it does not
/// print over USB.
Queue usbQueueNamed(const std::string &nameOrUri);

/// The attached printer of the queue. Fails when it is not attached.
Ref<ZKUSB> attachedPrinterOf(const Queue &queue);

/// The status that the printer of the queue answered. Fails when it could not be asked, or answered no
/// status.
PrinterStatus statusOf(const Queue &queue);

/// The printers attached now, as one discovery pass collects them.
std::vector<Ref<ZKUSB>> attachedPrinters();

/// Vendor and product as four hexadecimal digits each, e.g. "5a4b:0001".
std::string usbIdentifier(const ZKUSB &printer);
