#include "Frameworks/QNCategoriesPro/Host/QNProcessors.h"

#include "Frameworks/QNCategoriesPro/Host/HostFiles.h"
#include "Platform/Ascii/Trimmed.h"
#include "Platform/Dispatch/Time/Clock.h"

#include <algorithm>
#include <chrono>

namespace {

/// From the words of "cpu0 529935 647797 254402 …": user, nice, system, idle, waiting for input and output,
/// hard and soft interrupts, stolen by the host of a virtual machine. What guests used is in the first two.
std::optional<QNProcessorTimes> timesOf(const std::vector<std::string_view> &words) {
    constexpr std::size_t idle = 4, waiting = 5, stolen = 8;
    QNProcessorTimes times;
    for (std::size_t i = 1; i <= stolen && i < words.size(); ++i) {
        const auto value = qn::numberOf(words[i]);
        if (!value)
            return std::nullopt;
        times.total += *value;
        times.busy += i == idle || i == waiting ? 0 : *value;
    }
    return words.size() > idle ? std::optional(times) : std::nullopt;
}

std::optional<double> loadOf(const QNProcessorTimes &before, const QNProcessorTimes &after) {
    if (after.total <= before.total)
        return std::nullopt;
    // The waiting time that the kernel reports may decrease a little.
    const auto busy = static_cast<double>(after.busy) - static_cast<double>(before.busy);
    return std::clamp(busy / static_cast<double>(after.total - before.total), 0.0, 1.0);
}

} // namespace

QNProcessorReading qn::readProcessors(const HostFiles &files) {
    constexpr std::string_view prefix = "cpu";
    QNProcessorReading reading{dispatch::Clock::current().now(), {}, {}};
    const std::string contents = files.contents("proc/stat").value_or("");
    for (const auto line : linesOf(contents)) {
        const auto words = wordsOf(line);
        if (words.empty() || !words[0].starts_with(prefix))
            continue;
        const auto times = timesOf(words);
        if (words[0] == prefix)
            reading.all = times;
        else if (const auto core = numberOf(words[0].substr(prefix.size())); core && times)
            reading.cores[static_cast<unsigned>(*core)] = *times;
    }
    return reading;
}

QNProcessorLoad qn::loadBetween(const QNProcessorReading &before, const QNProcessorReading &after) {
    QNProcessorLoad load;
    load.seconds = std::chrono::duration<double>(after.moment - before.moment).count();
    if (before.all && after.all)
        load.total = loadOf(*before.all, *after.all);
    for (const auto &[core, times] : after.cores)
        if (const auto earlier = before.cores.find(core); earlier != before.cores.end())
            if (const auto one = loadOf(earlier->second, times))
                load.cores[core] = *one;
    return load;
}

// "0-3,5"
std::optional<unsigned> qn::countProcessors(const HostFiles &files) {
    const std::string contents = files.contents("sys/devices/system/cpu/online").value_or("");
    std::string_view rest = ascii::trimmed(contents);
    std::uint64_t count = 0;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        const std::string_view range = rest.substr(0, end);
        const std::size_t hyphen = std::min(range.find('-'), range.size());
        const auto first = numberOf(range.substr(0, hyphen));
        const auto last = hyphen == range.size() ? first : numberOf(range.substr(hyphen + 1));
        if (!first || !last || *last < *first)
            return std::nullopt;
        count += *last - *first + 1;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return count > 0 ? std::optional(static_cast<unsigned>(count)) : std::nullopt;
}
