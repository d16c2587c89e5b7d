// A thousand objects from JSON text and back, beside Qt's properties, protobuf, and plain structures by two
// libraries.
#include "Benchmarks/ModelMapping/DescribedPrinters.h"
#include "Benchmarks/ModelMapping/Document.h"
#include "Benchmarks/ModelMapping/MessagePrinters.h"
#include "Benchmarks/ModelMapping/OurPrinters.h"
#include "Benchmarks/ModelMapping/QtPrinters.h"
#include "Benchmarks/ModelMapping/StructPrinters.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int printers = 1000;

std::string_view bytesOf(const Ref<NSData> &text) {
    return {reinterpret_cast<const char *>(text->bytes()), text->length()};
}
std::string_view bytesOf(const QByteArray &text) {
    return {text.constData(), static_cast<std::size_t>(text.size())};
}
std::string_view bytesOf(const std::string &text) {
    return text;
}

template <class Printers>
void textToObjects(benchmark::State &state) {
    const auto text = Printers::text(printersDocument(printers));
    if (Printers::count(Printers::read(text)) != printers)
        state.SkipWithError("the text was not read");
    for (auto _ : state)
        benchmark::DoNotOptimize(Printers::read(text));
}

template <class Printers>
void objectsToText(benchmark::State &state) {
    const auto objects = Printers::read(Printers::text(printersDocument(printers)));
    const auto text = Printers::write(objects);
    const auto again = Printers::read(text);
    if (Printers::count(again) != printers || bytesOf(Printers::write(again)) != bytesOf(text))
        state.SkipWithError("the objects were not written");
    for (auto _ : state)
        benchmark::DoNotOptimize(Printers::write(objects));
}

BENCHMARK_TEMPLATE(textToObjects, OurPrinters);
BENCHMARK_TEMPLATE(textToObjects, QtPrinters);
BENCHMARK_TEMPLATE(textToObjects, StructPrinters);
BENCHMARK_TEMPLATE(textToObjects, DescribedPrinters);
BENCHMARK_TEMPLATE(textToObjects, MessagePrinters);
BENCHMARK_TEMPLATE(objectsToText, OurPrinters);
BENCHMARK_TEMPLATE(objectsToText, QtPrinters);
BENCHMARK_TEMPLATE(objectsToText, StructPrinters);
BENCHMARK_TEMPLATE(objectsToText, DescribedPrinters);
BENCHMARK_TEMPLATE(objectsToText, MessagePrinters);

} // namespace

BENCHMARK_MAIN();
