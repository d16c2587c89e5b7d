// The names of queues in Latin letters, beside ICU's bare transliteration of them; searches in prepared
// names.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Pinyin.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"
#include "Platform/Foundation/Text/NSString.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <unicode/translit.h>

namespace {

constexpr std::u16string_view kinds[] = {u"三楼会议室激光打印机", u"财务部 L200 彩色", u"重庆办事处前台",
                                         u"Zelkor L500 (仓库)"};

std::vector<Ref<NSString>> names() {
    std::vector<Ref<NSString>> made;
    for (int i = 0; i < 100; ++i)
        for (const auto kind : kinds)
            made.push_back(make<NSString>(std::u16string(kind)));
    return made;
}

void readNames(benchmark::State &state) {
    const auto all = names();
    for (auto _ : state)
        for (const auto &name : all)
            benchmark::DoNotOptimize(qn::pinyin(name));
}
BENCHMARK(readNames)->Unit(benchmark::kMillisecond);

void readNamesICU(benchmark::State &state) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Transliterator> theirs(
        icu::Transliterator::createInstance("Han-Latin", UTRANS_FORWARD, status));
    const auto all = names();
    for (auto _ : state)
        for (const auto &name : all) {
            icu::UnicodeString text(name->units().data(), static_cast<std::int32_t>(name->length()));
            theirs->transliterate(text);
            benchmark::DoNotOptimize(text);
        }
}
BENCHMARK(readNamesICU)->Unit(benchmark::kMillisecond);

/// What a letter typed costs among 400 names.
void findNames(benchmark::State &state) {
    std::vector<qn::PinyinText> prepared;
    for (const auto &name : names())
        prepared.emplace_back(name).rangeOf(u"a"_ns);
    const auto typed = u"huiyis"_ns;
    for (auto _ : state)
        for (const auto &name : prepared)
            benchmark::DoNotOptimize(name.rangeOf(typed));
}
BENCHMARK(findNames)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
