// The helper library's conversions beside those of Qt and nlohmann-json, a megabyte each; the guarded array
// beside a mutex around the same work.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSNumber/NSNumber+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNHTML.h"
#include "Frameworks/QNCategoriesPro/QNThreadSafeArray.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Text/NSString.h"

#include <QByteArray>
#include <QJsonDocument>
#include <benchmark/benchmark.h>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace {

constexpr std::size_t megabyte = 1 << 20;

/// A document of many small objects of mixed kinds.
const std::string &document() {
    static const std::string text = [] {
        std::string made = "[";
        for (int i = 0; made.size() < megabyte; ++i)
            made += (i ? "," : "") + std::string(R"({"identifier":)") + std::to_string(i) +
                    R"(,"name":"Printer )" + std::to_string(i) + R"(","level":0.)" +
                    std::to_string(i % 97 + 1) + R"(,"attached":)" + (i % 2 ? "true" : "false") +
                    R"(,"queue":null,"tags":["usb","toner"]})";
        return made + "]";
    }();
    return text;
}

std::string bytes() {
    std::string made;
    for (std::size_t i = 0; i < megabyte; ++i)
        made += static_cast<char>(i * 31 >> 3);
    return made;
}

/// Mostly plain text, with something to escape in every word.
std::string prose() {
    std::string made;
    while (made.size() < megabyte)
        made += "toner käse 5%/";
    return made;
}

Ref<NSData> dataOf(const std::string &text) {
    return NSData::dataWithBytes(text.data(), text.size());
}

template <class Work>
void repeat(benchmark::State &state, Work work) {
    for (auto _ : state)
        benchmark::DoNotOptimize(work());
}

void parseJson(benchmark::State &state) {
    repeat(state, [data = dataOf(document())] {
        return NSJSONSerialization::JSONObjectWithData(data, NSJSONReadingOptions::None, nullptr);
    });
}
BENCHMARK(parseJson);
void parseJsonQt(benchmark::State &state) {
    repeat(state, [data = QByteArray::fromStdString(document())] { return QJsonDocument::fromJson(data); });
}
BENCHMARK(parseJsonQt);
void parseJsonNlohmann(benchmark::State &state) {
    repeat(state, [] { return nlohmann::json::parse(document()); });
}
BENCHMARK(parseJsonNlohmann);

void writeJson(benchmark::State &state) {
    const id object =
        NSJSONSerialization::JSONObjectWithData(dataOf(document()), NSJSONReadingOptions::None, nullptr);
    repeat(state, [&] {
        return NSJSONSerialization::dataWithJSONObject(object, NSJSONWritingOptions::None, nullptr);
    });
}
BENCHMARK(writeJson);
void writeJsonQt(benchmark::State &state) {
    const auto object = QJsonDocument::fromJson(QByteArray::fromStdString(document()));
    repeat(state, [&] { return object.toJson(QJsonDocument::Compact); });
}
BENCHMARK(writeJsonQt);
void writeJsonNlohmann(benchmark::State &state) {
    const auto object = nlohmann::json::parse(document());
    repeat(state, [&] { return object.dump(); });
}
BENCHMARK(writeJsonNlohmann);

void hex(benchmark::State &state) {
    repeat(state, [data = dataOf(bytes())] { return qn::hexString(data); });
}
BENCHMARK(hex);
void hexQt(benchmark::State &state) {
    repeat(state, [data = QByteArray::fromStdString(bytes())] { return data.toHex(); });
}
BENCHMARK(hexQt);

void base64(benchmark::State &state) {
    repeat(state, [data = dataOf(bytes())] { return qn::base64EncodedData(data); });
}
BENCHMARK(base64);
void base64Qt(benchmark::State &state) {
    repeat(state, [data = QByteArray::fromStdString(bytes())] { return data.toBase64(); });
}
BENCHMARK(base64Qt);

void percent(benchmark::State &state) {
    repeat(state, [text = NSString::stringWithUTF8String(prose())] { return qn::URLEncode(text); });
}
BENCHMARK(percent);
void percentQt(benchmark::State &state) {
    repeat(state, [data = QByteArray::fromStdString(prose())] {
        return data.toPercentEncoding("-._~!$&'()*+,;=:@/?");
    });
}
BENCHMARK(percentQt);

void number(benchmark::State &state) {
    repeat(state, [text = u"12,345"_ns] { return qn::numberWithString(text); });
}
BENCHMARK(number);

/// Mixed text with markup, references and letters of several alphabets, in code units.
std::u16string page(std::size_t size) {
    std::u16string made;
    while (made.size() < size)
        made +=
            u"<p>The toner of \"Büro 2\" is at 5 &lt; 10 %, 激光 &amp; more:</p>\n see http://a.example/x ";
    made.resize(size);
    return made;
}

void escapeHtml(benchmark::State &state) {
    repeat(state, [text = make<NSString>(page(megabyte))] { return qn::stringByEscapingForHTML(text); });
}
BENCHMARK(escapeHtml);
void escapeHtmlQt(benchmark::State &state) {
    repeat(state, [text = QString::fromStdU16String(page(megabyte))] { return text.toHtmlEscaped(); });
}
BENCHMARK(escapeHtmlQt);

/// Texts of 1, 2 and 4 million units: time is to grow no faster than they do.
template <Ref<NSString> (*operation)(const Ref<NSString> &)>
void convertPage(benchmark::State &state) {
    repeat(state, [text = make<NSString>(page(static_cast<std::size_t>(state.range(0)) * megabyte))] {
        return operation(text);
    });
}
BENCHMARK_TEMPLATE(convertPage, qn::stringByUnescapingFromHTML)->RangeMultiplier(2)->Range(1, 4);
BENCHMARK_TEMPLATE(convertPage, qn::stringByConvertingHTMLToPlainText)->RangeMultiplier(2)->Range(1, 4);
BENCHMARK_TEMPLATE(convertPage, qn::stringByStrippingTags)->RangeMultiplier(2)->Range(1, 4);

/// A different tag after every few units, or nothing but one unit.
template <Ref<NSString> (*operation)(const Ref<NSString> &), char16_t unit>
void convertHostile(benchmark::State &state) {
    const auto size = static_cast<std::size_t>(state.range(0)) * megabyte;
    std::u16string made(unit ? size : 0, unit);
    for (unsigned i = 0; made.size() < size; ++i) {
        const std::string tag = "<" + std::to_string(i) + ">";
        made.append(tag.begin(), tag.end());
    }
    repeat(state, [text = make<NSString>(std::move(made))] { return operation(text); });
}
BENCHMARK_TEMPLATE(convertHostile, qn::stringByUnescapingFromHTML, u'&')->RangeMultiplier(2)->Range(1, 4);
BENCHMARK_TEMPLATE(convertHostile, qn::stringByConvertingHTMLToPlainText, u'<')
    ->RangeMultiplier(2)
    ->Range(1, 4);
BENCHMARK_TEMPLATE(convertHostile, qn::stringByStrippingTags, u'\0')->RangeMultiplier(2)->Range(1, 4);

/// What the guarded array does, by hand.
class MutexArray {
public:
    id objectAtIndex(NSUInteger index) {
        const std::scoped_lock guard(lock_);
        return array_->objectAtIndex(index);
    }
    void replaceObjectAtIndex(NSUInteger index, const id &object) {
        const std::scoped_lock guard(lock_);
        array_->replaceObjectAtIndex(index, object);
    }
    void addObject(const id &object) {
        const std::scoped_lock guard(lock_);
        array_->addObject(object);
    }

private:
    std::mutex lock_;
    const Ref<NSMutableArray> array_ = NSMutableArray::array();
};

template <class Array>
void readAndWrite(benchmark::State &state) {
    static const auto array = [] {
        auto made = std::make_shared<Array>();
        for (int i = 0; i < 64; ++i)
            made->addObject(make<NSObject>());
        return made;
    }();
    const auto first = static_cast<NSUInteger>(state.thread_index()) * 32;
    NSUInteger i = 0;
    for (auto _ : state) {
        const id object = array->objectAtIndex(first + i);
        array->replaceObjectAtIndex(first + i, object);
        i = (i + 1) % 32;
    }
}
BENCHMARK_TEMPLATE(readAndWrite, QNThreadSafeArray)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK_TEMPLATE(readAndWrite, MutexArray)->ThreadRange(1, 2)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
