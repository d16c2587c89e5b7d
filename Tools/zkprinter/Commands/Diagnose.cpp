// The report for the support: what is attached, who holds it, and what this computer is.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Validation.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/System/URLParts.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Locking/Mutex.h"
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Commands/HostFacts.h"
#include "Tools/zkprinter/Commands/Versions.h"
#include "Tools/zkprinter/Failures/TransportFailure.h"
#include "Tools/zkprinter/Printers/Queue.h"
#include "Tools/zkprinter/Printers/Status.h"
#include "Tools/zkprinter/Printing/Report.h"

#include <algorithm>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <set>
#include <sys/stat.h>

namespace {

constexpr std::size_t logLimit = 100; // lines about one topic
constexpr const char *topics[] = {"versions", "queues", "printers",   "access",
                                  "host",     "room",   "interfaces", "log"};

/// What the command has found so far. Threads: any, as another one prints it when the time is over.
class Findings {
public:
    /// Never destroyed: other threads may outlive the command.
    static Findings &shared() {
        static auto &all = *new Findings;
        return all;
    }

    void add(Section section) {
        const locking::MutexLock guard(mutex_);
        sections_.push_back(std::move(section));
    }
    void addSerial(const std::string &serial) {
        const locking::MutexLock guard(mutex_);
        serials_.add(serial);
    }
    /// Keeps the latest `logLimit` lines about the topic.
    void addLine(std::string_view line) {
        const locking::MutexLock guard(mutex_);
        log_.emplace_back(line);
        if (log_.size() - topicBegin_ > logLimit)
            log_.erase(log_.begin() + static_cast<std::ptrdiff_t>(topicBegin_));
    }
    /// Begins another topic: the lines so far are kept.
    void changeTopic() {
        const locking::MutexLock guard(mutex_);
        topicBegin_ = log_.size();
    }
    bool isEmpty() const {
        const locking::MutexLock guard(mutex_);
        return sections_.empty();
    }
    void print(Format format, const std::optional<Failure> &failure) const {
        const locking::MutexLock guard(mutex_);
        std::vector<Section> sections = sections_;
        sections.push_back({"log", log_});
        std::ranges::sort(sections, {},
                          [](const Section &section) { return std::ranges::find(topics, section.name); });
        printReport(sections, serials_, format, failure);
    }

private:
    Findings() = default;

    mutable locking::Mutex mutex_;
    std::vector<Section> sections_ ZK_GUARDED_BY(mutex_);
    SerialNumbers serials_ ZK_GUARDED_BY(mutex_);
    Lines log_ ZK_GUARDED_BY(mutex_);
    std::size_t topicBegin_ ZK_GUARDED_BY(mutex_) = 0; // in the log
};

/// Adds log lines to the findings as long as it lives, and passes them on.
class KeptLog {
public:
    KeptLog() : next_(NSLogSetSink({})) {
        NSLogSetSink([this](NSLogLevel level, std::string_view line) {
            Findings::shared().addLine(line);
            if (next_)
                next_(level, line);
        });
    }
    KeptLog(const KeptLog &) = delete;
    KeptLog &operator=(const KeptLog &) = delete;
    ~KeptLog() { NSLogSetSink(std::move(next_)); }

private:
    NSLogSink next_;
};

FactValue pathOrNone(const std::optional<std::filesystem::path> &path) {
    return path ? FactValue(path->string()) : FactValue();
}

/// The URI of a queue over USB; of others only the scheme, as they may contain hosts and passwords.
FactValue shownUri(const Queue &queue) {
    if (!queue.deviceUri)
        return {};
    return queue.printsOverUsb() ? *queue.deviceUri
                                 : queue.deviceUri->substr(0, queue.deviceUri->find(':') + 1) + "…";
}

/// How a network queue names its printer: an address, unlike a name, may belong to another machine by now.
FactValue hostKind(const Queue &queue) {
    const auto uri = NSString::stringWithUTF8String(queue.deviceUri.value_or(""));
    const auto authority = uri ? URLParts(uri->units()).authority : std::nullopt;
    if (!authority)
        return {};
    std::u16string_view host = authority->substr(authority->rfind(u'@') + 1);
    if (host.starts_with(u'['))
        host = host.substr(1, host.find(u']') - 1);
    else
        host = host.substr(0, host.find(u':'));
    const auto text = make<NSString>(std::u16string(host));
    return qn::isIPv4Address(text)   ? FactValue(std::string("IPv4 address"))
           : qn::isIPv6Address(text) ? FactValue(std::string("IPv6 address"))
           : qn::isHostName(text)    ? FactValue(std::string("name"))
                                     : FactValue();
}

Facts factsOf(const Queue &queue, const AttachedPrinters &printers) {
    Facts facts = {{"queue", queue.name},
                   {"supported", true},
                   {"usb", queue.printsOverUsb()},
                   {"deviceUri", shownUri(queue)}};
    if (!queue.printsOverUsb()) {
        facts.push_back({"hostKind", hostKind(queue)});
        return facts;
    }
    const auto named = printers.named(*queue.deviceUri);
    facts.push_back({"attached", !named.empty()});
    if (named.size() > 1)
        facts.push_back({"problem", std::string(ambiguous(queue.name).what())});
    return facts;
}

/// The queues, or why they cannot be listed.
Section queues(const QueueList &list, const AttachedPrinters &printers) {
    if (list.failure)
        return {"queues", std::vector<Facts>{{{"problem", std::string(list.failure->what())}}}};
    std::vector<Facts> found;
    std::set<std::string> supported;
    for (const Queue &queue : list.supported) {
        if (const auto named = transport::parsePrinterUri(queue.deviceUri.value_or("")))
            Findings::shared().addSerial(named->serial);
        if (supported.insert(queue.name).second)
            found.push_back(factsOf(queue, printers));
    }
    for (const std::string &name : list.allNames)
        if (!supported.contains(name))
            found.push_back({{"queue", name}, {"supported", false}});
    return {"queues", found};
}

std::string permissions(const std::filesystem::path &node) {
    struct stat entry {};
    if (stat(node.c_str(), &entry) != 0)
        return {};
    const passwd *const user = getpwuid(entry.st_uid);
    const group *const owners = getgrgid(entry.st_gid);
    return NSString::stringWithFormat("%04o ", entry.st_mode & 07777u)->utf8() +
           (user ? user->pw_name : std::to_string(entry.st_uid)) + ":" +
           (owners ? owners->gr_name : std::to_string(entry.st_gid));
}

std::string described(const transport::HoldingProcess &holder) {
    return holder.process + " (process " + std::to_string(holder.pid) +
           (holder.seen ? ")" : ", by its name)");
}

Facts accessFacts(const std::optional<transport::DeviceAccess> &access) {
    if (!access)
        return {{"node", {}}};
    Lines holders;
    std::ranges::transform(access->holders, std::back_inserter(holders), described);
    return {{"node", access->node.string()},
            {"permissions", access->nodeExists ? FactValue(permissions(access->node)) : FactValue()},
            {"mayOpen", access->mayOpen},
            {"kernelDriver", access->kernelDriver.empty() ? FactValue() : FactValue(access->kernelDriver)},
            {"holders", holders}};
}

Facts stateFacts(const Ref<ZKUSB> &printer) {
    try {
        const std::string uri = printer->URI()->utf8();
        const PrinterStatus status = statusIn(askStatus(printer, uri), uri);
        return {{"state", std::string(status.isNormal() ? "normal" : nameOf(ExitStatus::notNormal))},
                {"printerStatus", status.value}};
    } catch (const Failure &failure) {
        return {{"state", std::string(nameOf(failure.status()))}, {"problem", std::string(failure.what())}};
    }
}

Facts factsOf(const Ref<ZKUSB> &printer) {
    const std::string uri = printer->URI()->utf8();
    Facts facts = {{"deviceUri", uri}, {"usbIdentifier", usbIdentifier(*printer)}};
    for (const Facts &more : {accessFacts(accessTo(uri)), stateFacts(printer)})
        facts.insert(facts.end(), more.begin(), more.end());
    return facts;
}

} // namespace

ExitStatus diagnose(Format format) {
    const KeptLog log;
    const QNDevice device;
    const QNProcessorReading begin = device.processors();
    Findings &findings = Findings::shared();
    findings.add({"access", Facts{{"udevRule", pathOrNone(transport::installedUdevRule())}}});
    const AttachedPrinters printers;
    for (const auto &printer : printers.all())
        if (const auto serial = printer->serialNumber())
            findings.addSerial(serial->utf8());
    std::vector<Facts> printerFacts;
    for (const auto &printer : printers.all())
        printerFacts.push_back(factsOf(printer));
    findings.add({"printers", printerFacts});
    findings.changeTopic();
    const QueueList list = readQueueList();
    findings.add({"versions", versions(list.service), false});
    findings.add(queues(list, printers));
    findings.add({"host", hostFacts(device, begin)});
    findings.add({"room", roomFacts(device)});
    findings.add({"interfaces", interfaceFacts(device)});
    findings.print(format, list.failure);
    if (list.failure)
        throw ToldFailure(*list.failure);
    return ExitStatus::success;
}

bool printUnfinishedDiagnosis(const Failure &failure, Format format) {
    const Findings &findings = Findings::shared();
    if (findings.isEmpty())
        return false;
    findings.print(format, failure);
    return true;
}
