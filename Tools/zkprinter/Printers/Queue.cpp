#include "Tools/zkprinter/Printers/Queue.h"

#include "Manager/PrinterListCollector.h"
#include "Manager/SupportedPrinterModels.h"
#include "Manager/SupportedQueues.h"
#include "Manager/ZKManager.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Transport/zkcomtl.h"
#include "Tools/zkprinter/Failures/TransportFailure.h"
#include "Tools/zkprinter/Printers/Patience.h"

#include <algorithm>

namespace {

bool isUri(const std::string &name) {
    return name.find("://") != std::string::npos;
}

std::optional<std::string> textAt(const NSDictionary &entry, const Ref<NSString> &key) {
    const auto text = as<NSString>(entry.objectForKey(key));
    return text ? std::optional(text->utf8()) : std::nullopt;
}

Queue queueOf(const NSDictionary &entry) {
    return {textAt(entry, u"hideName"_ns).value_or(""), textAt(entry, u"displayName"_ns),
            textAt(entry, u"deviceUri"_ns)};
}

Queue supportedQueueNamed(const std::string &name) {
    const QueueList list = readQueueList();
    if (list.failure)
        throw *list.failure;
    if (const auto found = std::ranges::find(list.supported, name, &Queue::name);
        found != list.supported.end())
        return *found;
    const std::string shown = escapedControlCharacters(name);
    if (std::ranges::find(list.allNames, name) != list.allNames.end())
        throw Failure(ExitStatus::noSuchQueue,
                      "The model of queue \"" + shown +
                          "\" is not supported; \"zkprinter list\" shows the queues that are.");
    throw Failure(ExitStatus::noSuchQueue,
                  "There is no queue \"" + shown + "\"; \"zkprinter list\" shows the queues there are.");
}

std::optional<Failure> failureOf(const SupportedQueues &matching) {
    if (matching.outcome == SupportedQueues::Outcome::noModels)
        return Failure(ExitStatus::brokenInstallation,
                       "The list of supported models is missing or damaged; install this program again.");
    if (matching.outcome == SupportedQueues::Outcome::noPrintService)
        return Failure(ExitStatus::cupsUnreachable,
                       "The print service CUPS does not answer at " +
                           escapedControlCharacters(matching.server) +
                           "; start it, for example with \"systemctl start cups\", and try again.");
    return std::nullopt;
}

} // namespace

QueueList readQueueList() {
    QueueList list;
    const Waiting waiting("the print service CUPS");
    const auto entries = NSMutableArray::array();
    const SupportedQueues matching = matchQueues(supportedModels(), entries, [&](const Ref<NSString> &name) {
        if (name)
            list.allNames.push_back(name->utf8());
    });
    for (const id &entry : *entries)
        list.supported.push_back(queueOf(*as<NSDictionary>(entry)));
    list.service = matching.service;
    list.failure = failureOf(matching);
    return list;
}

std::vector<Queue> supportedQueues() {
    QueueList list = readQueueList();
    if (list.failure)
        throw *list.failure;
    return std::move(list.supported);
}

Queue queueNamed(const std::string &nameOrUri) {
    return isUri(nameOrUri) ? Queue{nameOrUri, std::nullopt, nameOrUri} : supportedQueueNamed(nameOrUri);
}

AttachedPrinters::AttachedPrinters() : seen_(transport::attachedPrinters()) {
    const auto manager = ZKManager::shared();
    const auto collect = printerListCollector(manager->printerList());
    // The list leaves out some of the printers with one serial number.
    manager->setCallback(makeBlock<void(const Ref<ZKUSB> &)>([&](const Ref<ZKUSB> &printer) {
        all_.push_back(printer);
        (*collect)(printer);
    }));
    manager->discoverPrinter();
    manager->setCallback(nullptr);
}

std::vector<Ref<ZKUSB>> AttachedPrinters::named(const std::string &deviceUri) const {
    return transport::namedOf(all_, [&](const Ref<ZKUSB> &printer) {
        const transport::PrinterIdentity identity = printer->identity();
        return transport::names(deviceUri, identity) ||
               std::ranges::any_of(seen_, [&](const transport::AttachedPrinter &attached) {
                   return transport::recorded(attached.identity) == identity && attached.isNamed(deviceUri);
               });
    });
}

Ref<ZKUSB> AttachedPrinters::printerOf(const Queue &queue) const {
    const std::string shown = "\"" + escapedControlCharacters(queue.name) + "\"";
    if (!queue.printsOverUsb())
        throw Failure(ExitStatus::notUsb,
                      shown + " does not print over USB, and the reminder can only be reached over USB; "
                              "connect the printer by a USB cable and add a queue for it.");
    const auto printers = named(*queue.deviceUri);
    if (printers.empty())
        if (const auto held = transport::accessToHeld(*queue.deviceUri, transport::attachedPrinters()))
            throw reasonOf(TL_USB_ERROR_BUSY, queue.name, held);
    if (printers.empty())
        throw Failure(ExitStatus::notAttached,
                      "The printer of " + shown +
                          " is not attached; check its power and its USB cable and try again.");
    if (printers.size() > 1)
        throw ambiguous(queue.name);
    return printers.front();
}

ExitStatus withPrinterOf(const std::string &nameOrUri,
                         const std::function<ExitStatus(const Queue &, const Ref<ZKUSB> &)> &act) {
    Subject subject = subjectNamed(nameOrUri);
    try {
        const Queue queue = queueNamed(nameOrUri);
        subject = queue.subject();
        return act(queue, AttachedPrinters().printerOf(queue));
    } catch (const Failure &failure) {
        throw failure.about(subject);
    }
}

Subject subjectNamed(const std::string &nameOrUri) {
    return {nameOrUri, isUri(nameOrUri) ? std::optional(nameOrUri) : std::nullopt};
}

std::string usbIdentifier(const ZKUSB &printer) {
    return NSString::stringWithFormat("%04lx:%04lx", printer.VID(), printer.PID())->utf8();
}
