// The queues and printers that commands work on.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Transport/usb/AttachedPrinter.h"
#include "Tools/zkprinter/Failures/Failure.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class ZKUSB;

/// A print queue of a supported model, or a printer named by its device URI alone.
struct Queue {
    std::string name; ///< as the user names it
    std::optional<std::string> description;
    std::optional<std::string> deviceUri;

    bool printsOverUsb() const { return deviceUri && deviceUri->starts_with("usb://"); }
    Subject subject() const { return {name, deviceUri}; }
};

/// The queues of the print service.
struct QueueList {
    std::vector<Queue> supported;      ///< queues of supported models
    std::vector<std::string> allNames; ///< of every queue, supported or not
    std::string service;               ///< how the print service names itself; empty when unknown
    std::optional<Failure> failure;    ///< why the list cannot be had
};

/// Asks the print service; see Manager/SupportedQueues.h.
QueueList readQueueList();

/// The queues of supported models. Fails when they cannot be had.
std::vector<Queue> supportedQueues();

/// The queue of that name, or one for the device URI. Fails when there is none.
Queue queueNamed(const std::string &nameOrUri);

/// What is known of the queue before anybody asked for it: its name, and its URI if that is its name.
Subject subjectNamed(const std::string &nameOrUri);

/// The printers that were attached when this was made, found by one discovery pass.
class AttachedPrinters {
public:
    AttachedPrinters();

    const std::vector<Ref<ZKUSB>> &all() const { return all_; }
    /// The printers that the device URI names, by their descriptors or by the device IDs that the kernel
    /// knows. All commands go by this.
    std::vector<Ref<ZKUSB>> named(const std::string &deviceUri) const;
    /// The printer of the queue. Fails when the queue does not print over USB, when its printer is not
    /// attached, when its URI names several, and when another program holds it so that it cannot be
    /// recognised.
    Ref<ZKUSB> printerOf(const Queue &queue) const;

private:
    std::vector<Ref<ZKUSB>> all_;
    std::vector<transport::AttachedPrinter> seen_; // by the kernel
};

/// Looks for the queue and its printer (AttachedPrinters::printerOf) and acts on them. Every failure says
/// which queue it is about.
ExitStatus withPrinterOf(const std::string &nameOrUri,
                         const std::function<ExitStatus(const Queue &, const Ref<ZKUSB> &)> &act);

/// Vendor and product as four hexadecimal digits each, e.g. "5a4b:0001".
std::string usbIdentifier(const ZKUSB &printer);
