#include "Tools/zkprinter/Commands/Metrics.h"

#include "Platform/Foundation/Text/ControlCharacters.h"

#include <array>
#include <charconv>
#include <functional>
#include <set>
#include <utility>

namespace {

using Labels = std::vector<std::pair<std::string, std::string>>;

/// A number in the shortest form, whatever the locale.
std::string shown(double value) {
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.begin(), digits.end(), value);
    return {digits.begin(), error == std::errc() ? end : digits.begin()};
}

std::string escaped(const std::string &value) {
    std::string text;
    for (const char character : escapedControlCharacters(value)) {
        if (character == '\\' || character == '"')
            text += '\\';
        text += character;
    }
    return text;
}

class MetricsText {
public:
    /// Begins a family. Its values follow.
    void begin(std::string name, std::string help) {
        name_ = std::move(name);
        help_ = std::move(help);
    }
    void add(const Labels &labels, double value) {
        if (!help_.empty())
            text_ += "# HELP " + name_ + " " + help_ + "\n# TYPE " + name_ + " gauge\n";
        help_.clear();
        text_ += name_;
        char separator = '{';
        for (const auto &[label, content] : labels) {
            text_ += separator + label + "=\"" + escaped(content) + "\"";
            separator = ',';
        }
        text_ += (labels.empty() ? " " : "} ") + shown(value) + "\n";
    }
    std::string end() && { return std::move(text_) + "# EOF\n"; }

private:
    std::string text_, name_, help_;
};

std::optional<double> attached(const QueueFinding &finding) {
    return finding.attached;
}

std::optional<double> normal(const QueueFinding &finding) {
    const auto *const status = std::get_if<PrinterStatus>(&finding.status);
    return status ? std::optional<double>(status->isNormal()) : std::nullopt;
}

std::optional<double> enabled(const QueueFinding &finding) {
    const auto *const threshold = std::get_if<std::int32_t>(&finding.reminder);
    return threshold ? std::optional<double>(*threshold != 0) : std::nullopt;
}

std::optional<double> ratio(const QueueFinding &finding) {
    const auto *const threshold = std::get_if<std::int32_t>(&finding.reminder);
    return threshold && *threshold != 0 ? std::optional(*threshold / 100.0) : std::nullopt;
}

std::optional<double> success(const QueueFinding &finding) {
    return finding.failures().empty();
}

std::optional<double> duration(const QueueFinding &finding) {
    return finding.seconds;
}

struct Gauge {
    const char *name, *help;
    std::optional<double> (*value)(const QueueFinding &); ///< none: this queue has no value
};

constexpr Gauge gauges[] = {
    {"zkprinter_printer_attached", "Whether the queue's printer is attached by USB.", attached},
    {"zkprinter_printer_normal", "Whether the printer is in a normal state; absent when it did not tell.",
     normal},
    {"zkprinter_reminder_enabled", "Whether the low-toner reminder is on; absent when it could not be read.",
     enabled},
    {"zkprinter_reminder_threshold_ratio",
     "The toner level at which the printer reminds; absent when it is off.", ratio},
    {"zkprinter_read_success", "Whether status and reminder could be read.", success},
    {"zkprinter_read_duration_seconds", "How long the printer took to answer, or not to.", duration},
};

Labels identityOf(const QueueFinding &finding) {
    return {{"queue", finding.queue.name},
            {"model", finding.model.value_or("")},
            {"serial", finding.serialNumber.value_or("")}};
}

/// Each reason once.
std::set<std::string> reasonsOf(const QueueFinding &finding) {
    std::set<std::string> reasons;
    for (const Failure &failure : finding.failures())
        reasons.insert(nameOf(failure.status()));
    return reasons;
}

} // namespace

std::string metricsText(const std::vector<QueueFinding> &findings, bool cupsUp, const std::string &version) {
    MetricsText text;
    text.begin("zkprinter_build_info", "The version of zkprinter.");
    text.add({{"version", version}}, 1);
    text.begin("zkprinter_cups_up", "Whether the print service CUPS answers.");
    text.add({}, cupsUp);
    const auto forEach = [&](const std::function<void(const QueueFinding &)> &add) {
        for (const QueueFinding &finding : findings)
            if (finding.queue.printsOverUsb())
                add(finding);
    };
    text.begin("zkprinter_queue_info", "A queue of a supported model that prints over USB.");
    forEach([&](const QueueFinding &finding) { text.add(identityOf(finding), 1); });
    for (const Gauge &gauge : gauges) {
        text.begin(gauge.name, gauge.help);
        forEach([&](const QueueFinding &finding) {
            if (const auto known = gauge.value(finding))
                text.add({{"queue", finding.queue.name}}, *known);
        });
    }
    text.begin("zkprinter_read_failure_info", "Why status or reminder could not be read.");
    forEach([&](const QueueFinding &finding) {
        for (const std::string &reason : reasonsOf(finding))
            text.add({{"queue", finding.queue.name}, {"reason", reason}}, 1);
    });
    return std::move(text).end();
}
