// Tables of texts beside Qt's, whose hashes are keyed as well, and attributed strings that grow.
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Text/NSString.h"

#include <QHash>
#include <QString>
#include <benchmark/benchmark.h>
#include <string>
#include <thread>

namespace {

constexpr int count = 50000;

std::u16string keyAt(int i) {
    const std::string number = std::to_string(i * 7919 % 50021);
    return u"printer." + std::u16string(number.begin(), number.end());
}

/// Keys that nobody has hashed yet, in and found again.
void fillTable(benchmark::State &state) {
    for (auto _ : state) {
        const auto table = NSMutableDictionary::dictionary();
        for (int i = 0; i < count; ++i) {
            const auto key = make<NSString>(keyAt(i));
            table->setObject(key, key);
        }
        for (int i = 0; i < count; ++i)
            benchmark::DoNotOptimize(table->objectForKey(make<NSString>(keyAt(i))));
    }
}
BENCHMARK(fillTable);
void fillTableQt(benchmark::State &state) {
    for (auto _ : state) {
        QHash<QString, QString> table;
        for (int i = 0; i < count; ++i) {
            const QString key = QString::fromStdU16String(keyAt(i));
            table.insert(key, key);
        }
        for (int i = 0; i < count; ++i)
            benchmark::DoNotOptimize(table.value(QString::fromStdU16String(keyAt(i))));
    }
}
BENCHMARK(fillTableQt);

void appendAttributed(benchmark::State &state) {
    const auto marked = [](const Ref<NSString> &value) {
        return NSAttributedString::attributedStringWithString(
            u"low toner "_ns, NSDictionary::dictionaryWithEntries({{u"weight"_ns, value}}));
    };
    const auto bold = marked(u"bold"_ns), plain = marked(u"plain"_ns);
    for (auto _ : state) {
        const auto text = make<NSMutableAttributedString>();
        for (int i = 0; i < state.range(0); ++i)
            text->appendAttributedString(i % 2 ? bold : plain);
        benchmark::DoNotOptimize(text->string());
    }
}
BENCHMARK(appendAttributed)->Arg(20000)->Arg(40000);

} // namespace

int main(int argc, char **argv) {
    // From the first thread on references are counted atomically, as in every real program.
    std::thread([] {}).join();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
