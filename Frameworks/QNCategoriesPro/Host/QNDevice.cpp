#include "Frameworks/QNCategoriesPro/Host/QNDevice.h"

#include "Platform/Ascii/Trimmed.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>

namespace {

using Number = std::optional<std::uint64_t>;

/// Placeholders that makers of boards left in the DMI table.
bool isFiller(const Ref<NSString> &text) {
    static const Ref<NSString> fillers[] = {u"to be filled by o.e.m."_ns,
                                            u"default string"_ns,
                                            u"system manufacturer"_ns,
                                            u"system product name"_ns,
                                            u"not specified"_ns,
                                            u"o.e.m."_ns,
                                            u"none"_ns,
                                            u"n/a"_ns};
    const auto lower = text->lowercaseString();
    return std::ranges::any_of(fillers, [&](const auto &one) { return one->isEqualToString(lower); });
}

Ref<NSString> withoutFiller(const Ref<NSString> &text) {
    return text && !isFiller(text) ? text : nullptr;
}

/// The value of a line such as `NAME="Debian GNU/Linux"`, which is written as a shell's assignment.
Ref<NSString> assigned(std::string_view contents, std::string_view key) {
    for (auto line : qn::linesOf(contents)) {
        line = ascii::trimmed(line);
        if (!line.starts_with(key) || !line.substr(key.size()).starts_with('='))
            continue;
        std::string_view value = line.substr(key.size() + 1);
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
            value.back() == value.front())
            value = value.substr(1, value.size() - 2);
        std::string made;
        for (std::size_t i = 0; i < value.size(); ++i)
            made += value[i] == '\\' && i + 1 < value.size() ? value[++i] : value[i];
        return made.empty() ? nullptr : NSString::stringWithUTF8String(made);
    }
    return nullptr;
}

/// The number behind a word at the start of a line: "MemTotal:  2048 kB", "btime 1700000000".
Number numberBehind(std::string_view contents, std::string_view word) {
    for (const auto line : qn::linesOf(contents))
        if (const auto words = qn::wordsOf(line); words.size() >= 2 && words[0] == word)
            return qn::numberOf(words[1]);
    return std::nullopt;
}

Number kibibytes(std::string_view contents, std::string_view word) {
    const Number found = numberBehind(contents, word);
    return found ? Number(*found * 1024) : std::nullopt;
}

Number difference(Number whole, Number part) {
    return whole && part && *whole >= *part ? Number(*whole - *part) : std::nullopt;
}

std::optional<QNBatteryState> stateOf(const Ref<NSString> &text) {
    static const std::pair<Ref<NSString>, QNBatteryState> states[] = {
        {u"Charging"_ns, QNBatteryState::charging},
        {u"Discharging"_ns, QNBatteryState::discharging},
        {u"Full"_ns, QNBatteryState::full},
        {u"Not charging"_ns, QNBatteryState::idle}};
    for (const auto &[name, state] : states)
        if (name->isEqualToString(text))
            return state;
    return std::nullopt;
}

} // namespace

QNMachine QNDevice::machine() const {
    const std::string board = "sys/class/dmi/id/", tree = "sys/firmware/devicetree/base/";
    QNMachine machine{withoutFiller(files_.text(board + "sys_vendor")),
                      withoutFiller(files_.text(board + "product_name"))};
    if (!machine.model) // boards without a BIOS; the text ends with a zero byte
        if (const auto model = files_.contents(tree + "model"))
            machine.model = NSString::stringWithUTF8String(model->substr(0, model->find('\0')));
    return machine;
}

QNSystem QNDevice::system() const {
    auto release = files_.contents("etc/os-release");
    if (!release)
        release = files_.contents("usr/lib/os-release");
    const std::string assignments = release.value_or("");
    const auto started = numberBehind(files_.contents("proc/stat").value_or(""), "btime");
    return {assigned(assignments, "NAME"), assigned(assignments, "VERSION_ID"),
            files_.text("proc/sys/kernel/osrelease"),
            started ? NSDate::dateWithTimeIntervalSince1970(static_cast<NSTimeInterval>(*started)) : nullptr};
}

QNMemory QNDevice::memory() const {
    const std::string contents = files_.contents("proc/meminfo").value_or("");
    QNMemory memory;
    memory.total = kibibytes(contents, "MemTotal:");
    memory.available = kibibytes(contents, "MemAvailable:");
    memory.used = difference(memory.total, memory.available);
    memory.swapTotal = kibibytes(contents, "SwapTotal:");
    memory.swapFree = kibibytes(contents, "SwapFree:");
    memory.swapUsed = difference(memory.swapTotal, memory.swapFree);
    return memory;
}

std::vector<QNBattery> QNDevice::batteries() const {
    std::vector<QNBattery> found;
    for (const std::string &name : files_.names("sys/class/power_supply")) {
        const std::string folder = "sys/class/power_supply/" + name + "/";
        const auto type = files_.text(folder + "type"), scope = files_.text(folder + "scope");
        if (!type || !type->isEqualToString(u"Battery"_ns) ||
            (scope && scope->isEqualToString(u"Device"_ns)) || files_.number(folder + "present") == 0u)
            continue;
        const auto percent = files_.number(folder + "capacity");
        found.push_back(
            {percent && *percent <= 100 ? std::optional(static_cast<double>(*percent) / 100) : std::nullopt,
             stateOf(files_.text(folder + "status"))});
    }
    return found;
}
