// A thousand models hashed, compared and copied, and a thousand with paths of keys and several keys read and
// written.
#include "Benchmarks/ModelMapping/Document.h"
#include "Benchmarks/ModelMapping/OurPrinters.h"
#include "Benchmarks/ModelMapping/OurRooms.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int models = 1000;

Ref<NSArray> printers() {
    static const auto text = OurPrinters::text(printersDocument(models));
    return OurPrinters::read(text);
}

// Texts keep their hashes once they were asked for: every round gets models of its own.

void hashModels(benchmark::State &state) {
    Ref<NSArray> objects;
    for (auto _ : state) {
        state.PauseTiming();
        objects = printers();
        state.ResumeTiming();
        for (const id &each : *objects)
            benchmark::DoNotOptimize(each->hash());
    }
}
BENCHMARK(hashModels);

void compareModels(benchmark::State &state) {
    Ref<NSArray> objects, same;
    for (auto _ : state) {
        state.PauseTiming();
        objects = printers();
        same = printers();
        state.ResumeTiming();
        if (!objects->isEqual(same))
            state.SkipWithError("equal models differ");
    }
}
BENCHMARK(compareModels);

void copyModels(benchmark::State &state) {
    const auto objects = printers();
    for (auto _ : state)
        for (const id &each : *objects)
            benchmark::DoNotOptimize(each->copy());
}
BENCHMARK(copyModels);

void roomsFromText(benchmark::State &state) {
    const auto text = OurRooms::text(models);
    for (auto _ : state)
        benchmark::DoNotOptimize(OurRooms::read(text));
}
BENCHMARK(roomsFromText);

void roomsToText(benchmark::State &state) {
    const auto rooms = OurRooms::read(OurRooms::text(models));
    if (OurRooms::read(OurRooms::write(rooms))->count() != models)
        state.SkipWithError("the rooms were not written");
    for (auto _ : state)
        benchmark::DoNotOptimize(OurRooms::write(rooms));
}
BENCHMARK(roomsToText);

} // namespace

BENCHMARK_MAIN();
