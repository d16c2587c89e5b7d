// Dates from texts of every form that the library knows, alone and as a property of a model; the way back;
// and Qt's beside them.
#include "Frameworks/QNCategoriesPro/Foundation/NSDate/NSDate+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <QDateTime>
#include <benchmark/benchmark.h>

namespace {

constexpr std::pair<const char *, const char *> forms[] = {
    {"day", "2014-01-20"},
    {"secondT", "2014-01-20T12:24:48"},
    {"second", "2014-01-20 12:24:48"},
    {"internet", "2014-01-20T12:24:48Z"},
    {"fractionT", "2014-01-20T12:24:48.125"},
    {"fraction", "2014-01-20 12:24:48.125"},
    {"offset", "2014-01-20T12:24:48+0100"},
    {"internetFraction", "2014-01-20T12:24:48.125Z"},
    {"offsetColon", "2014-01-20T12:24:48+01:00"},
    {"fractionOffset", "2014-01-20T12:24:48.125+0100"},
    {"fractionOffsetColon", "2014-01-20T12:24:48.125+01:00"},
    {"words", "Mon Jan 20 12:24:48 +0000 2014"},
    {"wordsFraction", "Mon Jan 20 12:24:48.125 +0000 2014"},
};

class Dated : public NSObject {
    NS_CLASS(Dated, NSObject)
public:
    Ref<NSDate> date;
};
NS_IMPLEMENTATION(Dated) {
    cls.instantiate([] { return make<Dated>(); });
    cls.property<&Dated::date>("date");
}

/// One text and what is made of it, which may not be none.
template <class Make>
void repeat(benchmark::State &state, Make made) {
    if (!made())
        return state.SkipWithError("no date");
    for (auto _ : state)
        benchmark::DoNotOptimize(made());
}

void registerForms() {
    for (const auto &[name, written] : forms) {
        const auto text = NSString::stringWithUTF8String(written);
        benchmark::RegisterBenchmark((std::string("parseDate/") + name).c_str(), [text](auto &state) {
            repeat(state, [&] { return qn::dateWithString(text); });
        });
        const id entries = NSDictionary::dictionaryWithEntries({{u"date"_ns, text}});
        benchmark::RegisterBenchmark((std::string("dateOfModel/") + name).c_str(), [entries](auto &state) {
            const auto model = make<Dated>();
            repeat(state, [&] { return qn::modelSetWithDictionary(model, entries) && model->date; });
        });
    }
}

void parseDateQt(benchmark::State &state) {
    const QString text = "2014-01-20T12:24:48Z";
    repeat(state, [&] { return QDateTime::fromString(text, Qt::ISODate).isValid(); });
}
BENCHMARK(parseDateQt);

void writeDate(benchmark::State &state) {
    const auto date = NSDate::dateWithTimeIntervalSince1970(1390220688);
    repeat(state, [&] { return qn::ISOFormatString(date); });
}
BENCHMARK(writeDate);

void writeDateQt(benchmark::State &state) {
    const auto date = QDateTime::fromSecsSinceEpoch(1390220688);
    repeat(state, [&] { return !date.toString(Qt::ISODate).isEmpty(); });
}
BENCHMARK(writeDateQt);

void components(benchmark::State &state) {
    const auto date = NSDate::dateWithTimeIntervalSince1970(1390220688);
    repeat(state, [&] { return qn::year(date); });
}
BENCHMARK(components);

} // namespace

int main(int count, char **arguments) {
    registerForms();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
