#include "Tools/zkprinter/Queue.h"

#include "Manager/PrinterListCollector.h"
#include "Manager/QueueMatching.h"
#include "Manager/RecordLookup.h"
#include "Manager/SupportedModels.h"
#include "Manager/ZKManager.h"
#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSLog.h"
#include "Platform/Foundation/NSString.h"
#include "Tools/zkprinter/Failure.h"
#include "Tools/zkprinter/Reason.h"

#include <algorithm>

namespace {

std::optional<std::string> textAt(const NSDictionary &entry, const Ref<NSString> &key) {
    const auto text = as<NSString>(entry.objectForKey(key));
    return text ? std::optional(text->utf8()) : std::nullopt;
}

Queue queueOf(const NSDictionary &entry) {
    return {textAt(entry, u"hideName"_ns).value_or(""), textAt(entry, u"displayName"_ns),
            textAt(entry, u"deviceUri"_ns)};
}

Queue supportedQueueNamed(const std::string &name) {
    std::vector<std::string> allNames;
    const auto queues = supportedQueues(&allNames);
    const auto found =
        std::find_if(queues.begin(), queues.end(), [&](const Queue &queue) { return queue.name == name; });
    if (found != queues.end())
        return *found;
    const std::string shown = escapedControlCharacters(name);
    if (std::find(allNames.begin(), allNames.end(), name) != allNames.end())
        throw Failure(ExitStatus::noSuchQueue,
                      "The model of queue \"" + shown +
                          "\" is not supported; \"zkprinter list\" shows the queues that are.");
    throw Failure(ExitStatus::noSuchQueue,
                  "There is no queue \"" + shown + "\"; \"zkprinter list\" shows the queues there are.");
}

} // namespace

std::vector<Queue> supportedQueues(std::vector<std::string> *allNames) {
    const auto models = supportedModels();
    if (!models)
        throw Failure(ExitStatus::brokenInstallation,
                      "The list of supported models is missing or damaged; install this program again.");
    const auto entries = NSMutableArray::array();
    const QueueMatching outcome = matchQueues(models, entries, [&](const Ref<NSString> &name) {
        if (allNames && name)
            allNames->push_back(name->utf8());
    });
    if (!outcome.reachable)
        throw Failure(ExitStatus::cupsUnreachable,
                      "The print service CUPS does not answer at " +
                          escapedControlCharacters(outcome.server) +
                          "; start it, for example with \"systemctl start cups\", and try again.");
    std::vector<Queue> queues;
    for (const id &entry : *entries)
        queues.push_back(queueOf(*as<NSDictionary>(entry)));
    return queues;
}

Queue usbQueueNamed(const std::string &nameOrUri) {
    const bool isUri = nameOrUri.find("://") != std::string::npos;
    const Queue queue = isUri ? Queue{nameOrUri, std::nullopt, nameOrUri} : supportedQueueNamed(nameOrUri);
    if (!queue.printsOverUsb())
        throw Failure(
            ExitStatus::notUsb,
            "\"" + escapedControlCharacters(nameOrUri) +
                "\" does not print over USB, and the reminder can only be reached over USB; connect the "
                "printer by a USB cable and add a queue for it.");
    return queue;
}

std::vector<Ref<ZKUSB>> attachedPrinters() {
    const auto manager = ZKManager::shared();
    manager->setCallback(printerListCollector(manager->printerList()));
    manager->discoverPrinter();
    std::vector<Ref<ZKUSB>> printers;
    for (const id &printer : manager->printerList()->allObjects())
        printers.push_back(as<ZKUSB>(printer));
    return printers;
}

Ref<ZKUSB> attachedPrinterOf(const Queue &queue) {
    attachedPrinters();
    const auto uri = NSString::stringWithUTF8String(*queue.deviceUri);
    if (const auto printer = recordForDeviceUri(uri, ZKManager::shared()->printerList()))
        return printer;
    throw Failure(ExitStatus::notAttached,
                  "The printer of \"" + escapedControlCharacters(queue.name) +
                      "\" is not attached; check its power and its USB cable and try again.");
}

PrinterStatus statusOf(const Queue &queue) {
    const PrinterStatus status = readPrinterStatus(NSString::stringWithUTF8String(*queue.deviceUri));
    if (status.outcome == PrinterStatus::Outcome::noAnswer)
        throw reasonOf(status.transportStatus, queue);
    if (status.outcome == PrinterStatus::Outcome::unreadable)
        throw Failure(ExitStatus::refused,
                      "\"" + escapedControlCharacters(queue.name) +
                          "\" answered with something that is no status; switch it off and on and "
                          "try again.");
    return status;
}

std::string usbIdentifier(const ZKUSB &printer) {
    return NSString::stringWithFormat("%04lx:%04lx", printer.VID(), printer.PID())->utf8();
}
