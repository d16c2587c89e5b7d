// The command `metrics`.
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Commands/Metrics.h"
#include "Tools/zkprinter/Printers/Journal.h"
#include "Tools/zkprinter/Printers/Survey.h"
#include "Tools/zkprinter/Printing/Json.h"
#include "Tools/zkprinter/Printing/Output.h"
#include "Tools/zkprinter/Printing/ReplacedFile.h"

namespace {

/// That the print service does not answer is a metric, too.
std::string readMetrics() {
    try {
        const auto findings = survey();
        for (const QueueFinding &finding : findings)
            if (finding.queue.printsOverUsb() && !finding.failures().empty())
                journalFailure(finding.failures().front().what());
        return metricsText(findings, true, ZK_VERSION);
    } catch (const Failure &failure) {
        if (failure.status() != ExitStatus::cupsUnreachable)
            throw;
        journalFailure(failure.what());
        return metricsText({}, false, ZK_VERSION);
    }
}

} // namespace

ExitStatus writeMetrics(const std::string &file, Format format) {
    const std::string text = readMetrics();
    if (!file.empty())
        replaceFile(file, text);
    if (format == Format::json)
        printJson([&](Json &json) { json.field("metrics", text); });
    else if (file.empty())
        print(text);
    return ExitStatus::success;
}
