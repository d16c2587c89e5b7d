// Property lists in their three formats, each beside one of twice the size: whether time grows as size does.
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/Text/NSString.h"

#include <benchmark/benchmark.h>

namespace {

enum Form { binary, xml, openStep };

/// Records of mixed kinds; 4,000 of them are a megabyte of XML.
id records(std::int64_t count) {
    const auto list = NSMutableArray::array();
    for (std::int64_t i = 0; i < count; ++i)
        list->addObject(NSDictionary::dictionaryWithEntries(
            {{u"identifier"_ns, NSNumber::numberWithLongLong(i)},
             {u"name"_ns, NSString::stringWithFormat("Printer %lld & co", static_cast<long long>(i))},
             {u"level"_ns, NSNumber::numberWithDouble(static_cast<double>(i % 97) / 97)},
             {u"attached"_ns, NSNumber::numberWithBool(i % 2)},
             {u"seen"_ns, NSDate::dateWithTimeIntervalSinceReferenceDate(static_cast<double>(i) * 60)},
             {u"key"_ns, NSData::dataWithBytes(&i, sizeof i)},
             {u"tags"_ns, NSArray::arrayWithObjects({u"usb"_ns, u"toner"_ns})}}));
    return list;
}

/// One dictionary with so many keys.
id keys(std::int64_t count) {
    const auto table = NSMutableDictionary::dictionary();
    for (std::int64_t i = 0; i < count; ++i)
        table->setObject(NSNumber::numberWithLongLong(i),
                         NSString::stringWithFormat("key %lld", static_cast<long long>(i)));
    return table;
}

Ref<NSData> written(const id &list, Form form) {
    if (form == openStep)
        return list->description()->dataUsingUTF8();
    return NSPropertyListSerialization::dataWithPropertyList(
        list,
        form == binary ? NSPropertyListFormat::BinaryFormat_v1_0 : NSPropertyListFormat::XMLFormat_v1_0);
}

template <id make(std::int64_t), Form form>
void readPropertyList(benchmark::State &state) {
    const auto data = written(make(state.range()), form);
    for (auto _ : state)
        benchmark::DoNotOptimize(NSPropertyListSerialization::propertyListWithData(data));
}
template <id make(std::int64_t), Form form>
void writePropertyList(benchmark::State &state) {
    const id list = make(state.range());
    for (auto _ : state)
        benchmark::DoNotOptimize(written(list, form));
}

BENCHMARK_TEMPLATE(readPropertyList, records, binary)->Arg(4000)->Arg(8000);
BENCHMARK_TEMPLATE(readPropertyList, records, xml)->Arg(4000)->Arg(8000);
BENCHMARK_TEMPLATE(readPropertyList, records, openStep)->Arg(4000)->Arg(8000);
BENCHMARK_TEMPLATE(writePropertyList, records, binary)->Arg(4000)->Arg(8000);
BENCHMARK_TEMPLATE(writePropertyList, records, xml)->Arg(4000)->Arg(8000);
BENCHMARK_TEMPLATE(readPropertyList, keys, binary)->Arg(500000)->Arg(1000000);
BENCHMARK_TEMPLATE(readPropertyList, keys, xml)->Arg(500000)->Arg(1000000);
BENCHMARK_TEMPLATE(writePropertyList, keys, binary)->Arg(500000)->Arg(1000000);
BENCHMARK_TEMPLATE(writePropertyList, keys, xml)->Arg(500000)->Arg(1000000);

} // namespace

BENCHMARK_MAIN();
