// The queues and printers that commands are about.
#pragma once

#include "Manager/PrinterStatus.h"
#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Transport/usb/AttachedPrinter.h"
#include "Tools/zkprinter/Failure.h"

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

/// What the print service has.
struct QueueList {
    std::vector<Queue> supported;      ///< queues of supported models
    std::vector<std::string> allNames; ///< of every queue, supported or not
    std::string service;               ///< what the print service calls itself; empty when it does not say
    std::optional<Failure> failure;    ///< why the list cannot be had
};

QueueList readQueueList();

/// The queues of supported models. Fails when they cannot be had.
std::vector<Queue> supportedQueues();

/// What the user means by a queue's name or a device URI. Fails when there is none, and when it does not
/// print over USB.
Queue usbQueueNamed(const std::string &nameOrUri);

/// The printers attached when it was made, as one discovery pass finds them.
class AttachedPrinters {
public:
    AttachedPrinters();

    const std::vector<Ref<ZKUSB>> &all() const { return all_; }
    /// Those that the device URI names, by their descriptors or by what the kernel knows of their device IDs:
    /// what every command goes by.
    std::vector<Ref<ZKUSB>> named(const std::string &deviceUri) const;

private:
    std::vector<Ref<ZKUSB>> all_;
    std::vector<transport::AttachedPrinter> seen_; // by the kernel
};

/// The one attached printer of the queue. Fails when it is not attached, and when there are two.
Ref<ZKUSB> attachedPrinterOf(const Queue &queue);

/// The status that the printer answered; `name` is what the user calls it. Fails when it could not be asked,
/// or answered no status.
PrinterStatus statusOf(const Ref<ZKUSB> &printer, const std::string &name);

/// Vendor and product as four hexadecimal digits each, e.g. "5a4b:0001".
std::string usbIdentifier(const ZKUSB &printer);
