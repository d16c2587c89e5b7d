// One discovery pass over 64 attached printers, and the building of one request.
#include "Benchmarks/InstantTransport.h"
#include "Manager/PrinterListCollector.h"
#include "Manager/ZKCommand.h"
#include "Manager/ZKManager.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/System/NSLog.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace {

constexpr std::size_t printers = 64;

void discover(benchmark::State &state) {
    instant::attachPrinters(printers);
    const auto manager = ZKManager::shared();
    manager->setCallback(printerListCollector(manager->printerList()));
    for (auto _ : state)
        manager->discoverPrinter();
    if (manager->printerList()->count() != printers)
        state.SkipWithError("a printer is missing");
}

void discoveryWithoutLog(benchmark::State &state) {
    NSLogSetSink([](NSLogLevel, std::string_view) {});
    discover(state);
}
BENCHMARK(discoveryWithoutLog)->Unit(benchmark::kMicrosecond);

/// To the system log and, as for a program of the desktop, to no terminal.
void discoveryWithSystemLog(benchmark::State &state) {
    NSLogSetSink({});
    const int errors = dup(STDERR_FILENO), nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDERR_FILENO);
    discover(state);
    dup2(errors, STDERR_FILENO);
    close(errors);
    close(nowhere);
}
// Few passes: each writes more than two thousand lines to the log of this machine.
BENCHMARK(discoveryWithSystemLog)->Unit(benchmark::kMicrosecond)->Iterations(3)->Repetitions(5);

void envelope(benchmark::State &state) {
    constexpr std::string_view question = "<!--#ssi IDr OID_PLATFORM_CONSUMEABLE_HINT -->";
    const auto data = NSData::dataWithBytes(question.data(), question.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(ZKCommand::PJLWithCMD(0xFF21, data));
}
BENCHMARK(envelope);

} // namespace

BENCHMARK_MAIN();
