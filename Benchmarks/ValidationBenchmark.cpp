// Validators beside the bare expression that does the most of the work, opened once.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Validation.h"
#include "Platform/Foundation/Text/NSString.h"

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <memory>
#include <unicode/uregex.h>

namespace {

constexpr std::u16string_view hexadecimal = u"00f1e2d3c4b5a69788796a5b4c3d2e1f", mac = u"00:00:5e:00:53:01",
                              mailbox = u"john.q.public+printers@mail.example.com";

template <bool (*isValid)(const Ref<NSString> &), const std::u16string_view &example>
void validate(benchmark::State &state) {
    const auto text = make<NSString>(std::u16string(example));
    if (!isValid(text))
        return state.SkipWithError("is not valid");
    for (auto _ : state)
        benchmark::DoNotOptimize(isValid(text));
}
BENCHMARK(validate<qn::isHexadecimal, hexadecimal>)->Name("validateHexadecimal");
BENCHMARK(validate<qn::isMACAddress, mac>)->Name("validateMAC");
BENCHMARK(validate<qn::isEmailAddress, mailbox>)->Name("validateMailbox");

void match(benchmark::State &state, std::u16string_view pattern, std::u16string_view example) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<URegularExpression, decltype(&uregex_close)> expression(
        uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, nullptr, &status),
        uregex_close);
    const std::u16string text(example);
    for (auto _ : state) {
        uregex_setText(expression.get(), text.data(), static_cast<std::int32_t>(text.size()), &status);
        if (!uregex_matches(expression.get(), 0, &status))
            return state.SkipWithError("does not match");
    }
}
BENCHMARK_CAPTURE(match, Hexadecimal, u"[0-9A-Fa-f]++", hexadecimal);
BENCHMARK_CAPTURE(
    match, MAC,
    u"[0-9A-Fa-f]{2}([:-])[0-9A-Fa-f]{2}(?:\\1[0-9A-Fa-f]{2}){4}|[0-9A-Fa-f]{4}(?:\\.[0-9A-Fa-f]{4}){2}",
    mac);
BENCHMARK_CAPTURE(match, Mailbox,
                  u"(?:[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]++(?:\\.[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]++)*+"
                  u"|\"(?:[ !#-\\[\\]-~]|\\\\[ -~])*+\")"
                  u"@(?:(?!-)[A-Za-z0-9-]{1,63}+(?<!-)\\.)*+(?![0-9]++\\z)(?!-)[A-Za-z0-9-]{1,63}+(?<!-)",
                  mailbox);

} // namespace

BENCHMARK_MAIN();
