// One exchange of `sendACLWithPJL` beside the same calls of the transport alone, and what it allocates.
#include "Benchmarks/AllocationCount.h"
#include "Manager/ZKCommand.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Transport/zkcomtl.h"

#include <array>
#include <benchmark/benchmark.h>
#include <string_view>

namespace {

constexpr std::string_view question = "<!--#ssi IDr OID_PLATFORM_CONSUMEABLE_HINT -->";
constexpr std::int32_t timeout_ms = 10000;

Ref<NSData> request() {
    return ZKCommand::PJLWithCMD(0xFF21, NSData::dataWithBytes(question.data(), question.size()));
}

Ref<ZKUSB> printer() {
    auto printer = make<ZKUSB>();
    printer->setManufacturer(u"Zelkor"_ns);
    printer->setPrinterName(u"Sample Laser Series"_ns);
    printer->setSerialNumber(u"SN0001"_ns);
    return printer;
}

template <class Function>
double allocationsOf(Function function) {
    const std::size_t before = allocationCount();
    function();
    return static_cast<double>(allocationCount() - before);
}

void exchange(benchmark::State &state) {
    NSLogSetSink([](NSLogLevel, std::string_view) {});
    const auto envelope = request();
    const auto device = printer();
    std::size_t answers = 0;
    const auto completion = makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>(
        [&](const Ref<NSData> &, const Ref<NSData> &data) { answers += data && data->length() == 1; });
    std::size_t exchanges = 1;
    device->sendACLWithPJL(envelope, timeout_ms, completion); // grows the buffers of the log
    for (auto _ : state) {
        device->sendACLWithPJL(envelope, timeout_ms, completion);
        ++exchanges;
    }
    if (answers != exchanges)
        state.SkipWithError("an exchange went wrong");

    const double all = allocationsOf([&] { device->sendACLWithPJL(envelope, timeout_ms, completion); });
    const double uri = allocationsOf([&] { benchmark::DoNotOptimize(device->URI()->utf8()); });
    const double results = allocationsOf([&] {
        benchmark::DoNotOptimize(NSData::dataWithBytes("12345678", 8));
        benchmark::DoNotOptimize(NSData::dataWithBytes("5", 1));
    });
    state.counters["allocations"] = all;
    state.counters["uri_text"] = uri;
    state.counters["result_buffers"] = results;
    state.counters["rest"] = all - uri - results;
}
BENCHMARK(exchange);

void transportAlone(benchmark::State &state) {
    const auto envelope = request();
    std::array<std::uint8_t, 4096> buffer;
    const auto read = [&](void *handle) {
        auto length = static_cast<std::int32_t>(buffer.size());
        const auto status =
            tl_usb_data_transfer_by_handle(handle, nullptr, 0, timeout_ms, buffer.data(), &length, 0);
        benchmark::DoNotOptimize(status);
        benchmark::DoNotOptimize(length);
        benchmark::ClobberMemory();
    };
    for (auto _ : state) {
        void *handle = nullptr;
        tl_usb_get_device_handle("usb://Zelkor/Sample%20Laser%20Series?serial=SN0001", 2, &handle);
        read(handle); // what may be queued
        tl_usb_data_transfer_by_handle(handle, envelope->bytes(),
                                       static_cast<std::uint32_t>(envelope->length()), timeout_ms, nullptr,
                                       nullptr, 0);
        read(handle); // the reply header
        read(handle); // the reply data
    }
}
BENCHMARK(transportAlone);

} // namespace

BENCHMARK_MAIN();
