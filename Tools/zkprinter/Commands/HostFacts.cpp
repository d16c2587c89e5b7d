#include "Tools/zkprinter/Commands/HostFacts.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSDate/NSDate+QNCommon.h"
#include "Platform/Foundation/Text/NSString.h"

#include <cmath>

namespace {

FactValue orUnknown(const Ref<NSString> &text) {
    return text ? FactValue(text->utf8()) : FactValue();
}

FactValue orUnknown(std::optional<std::uint64_t> bytes) {
    return bytes ? FactValue(ByteCount{*bytes}) : FactValue();
}

FactValue percentOrUnknown(std::optional<double> share) {
    return share ? FactValue(std::int64_t{std::lround(*share * 100)}) : FactValue();
}

std::string nameOf(QNInterfaceKind kind) {
    switch (kind) {
    case QNInterfaceKind::wired:
        return "wired";
    case QNInterfaceKind::wireless:
        return "wireless";
    case QNInterfaceKind::loopback:
        return "loopback";
    case QNInterfaceKind::tunnel:
        return "tunnel";
    case QNInterfaceKind::other:
        break;
    }
    return "other";
}

bool holds(const QNFileSystem &one, const std::string &folder) {
    const std::string place = one.mountPoint ? one.mountPoint->utf8() : "";
    return place == "/" || folder == place || (!place.empty() && folder.starts_with(place + "/"));
}

/// The innermost file system around a folder, or null.
const QNFileSystem *around(const std::vector<QNFileSystem> &all, const std::string &folder) {
    const QNFileSystem *innermost = nullptr;
    for (const QNFileSystem &one : all)
        if (holds(one, folder) && (!innermost || one.mountPoint->length() > innermost->mountPoint->length()))
            innermost = &one;
    return innermost;
}

} // namespace

Facts hostFacts(const QNDevice &device, const QNProcessorReading &begin) {
    const QNMachine machine = device.machine();
    const QNMemory memory = device.memory();
    const auto processors = device.processorCount();
    const auto batteries = device.batteries();
    return {
        {"manufacturer", orUnknown(machine.manufacturer)},
        {"model", orUnknown(machine.model)},
        {"started", orUnknown(qn::ISOFormatString(device.system().startTime))},
        {"processors", processors ? FactValue(std::int64_t{*processors}) : FactValue()},
        {"loadPercent", percentOrUnknown(qn::loadBetween(begin, device.processors()).total)},
        {"memory", orUnknown(memory.total)},
        {"memoryAvailable", orUnknown(memory.available)},
        {"swap", orUnknown(memory.swapTotal)},
        {"swapFree", orUnknown(memory.swapFree)},
        {"batteryPercent", percentOrUnknown(batteries.empty() ? std::nullopt : batteries.front().charge)}};
}

std::vector<Facts> roomFacts(const QNDevice &device) {
    const auto all = device.fileSystems();
    std::vector<Facts> found;
    for (const char *folder : {"/", "/tmp", "/var/spool/cups"})
        if (const QNFileSystem *const one = around(all, folder))
            found.push_back(
                {{"folder", std::string(folder)},
                 {"fileSystem", orUnknown(one->type)},
                 {"size", orUnknown(one->size ? std::optional(one->size->total) : std::nullopt)},
                 {"available", orUnknown(one->size ? std::optional(one->size->available) : std::nullopt)}});
    return found;
}

std::vector<Facts> interfaceFacts(const QNDevice &device) {
    std::vector<Facts> found;
    for (const QNNetworkInterface &one : device.network().interfaces) {
        const auto count = [](const auto &addresses) { return static_cast<std::int64_t>(addresses.size()); };
        const auto &traffic = one.traffic;
        found.push_back(
            {{"interface", orUnknown(one.name)},
             {"kind", nameOf(one.kind)},
             {"linked", one.isLinked ? FactValue(*one.isLinked) : FactValue()},
             {"ipv4Addresses", count(one.IPv4Addresses)},
             {"ipv6Addresses", count(one.IPv6Addresses)},
             {"received", orUnknown(traffic ? std::optional(traffic->receivedBytes) : std::nullopt)},
             {"sent", orUnknown(traffic ? std::optional(traffic->sentBytes) : std::nullopt)}});
    }
    return found;
}
