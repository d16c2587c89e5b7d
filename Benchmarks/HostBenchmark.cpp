// Everything that is told of this computer, read once, and its parts.
#include "Frameworks/QNCategoriesPro/Host/QNDevice.h"

#include <benchmark/benchmark.h>

namespace {

void readHost(benchmark::State &state) {
    const QNDevice device;
    for (auto _ : state) {
        benchmark::DoNotOptimize(device.machine());
        benchmark::DoNotOptimize(device.system());
        benchmark::DoNotOptimize(device.processorCount());
        benchmark::DoNotOptimize(device.processors());
        benchmark::DoNotOptimize(device.memory());
        benchmark::DoNotOptimize(device.fileSystems());
        benchmark::DoNotOptimize(device.network());
        benchmark::DoNotOptimize(device.batteries());
    }
}
BENCHMARK(readHost)->Unit(benchmark::kMicrosecond);

template <auto read>
void readPart(benchmark::State &state) {
    const QNDevice device;
    for (auto _ : state)
        benchmark::DoNotOptimize((device.*read)());
}
BENCHMARK(readPart<&QNDevice::fileSystems>)->Name("readFileSystems")->Unit(benchmark::kMicrosecond);
BENCHMARK(readPart<&QNDevice::network>)->Name("readNetwork")->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
