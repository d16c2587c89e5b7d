// Hostile bytes: nothing crashes, memory stays bounded, and the printer always finds its way back.
#include "Platform/Transport/virtual/PrinterJson.h"
#include "Platform/Transport/virtual/VirtualPrinter.h"
#include "Tests/Support/Envelopes.h"
#include "Tests/Support/Random.h"

using transport::VirtualPrinter;

namespace {

// Half the pieces are envelopes with a few wrong bytes, the others noise of the bytes that matter most.
Bytes hostilePiece(Random &random) {
    constexpr std::string_view telling("\x00\xAC\xFF\x20\x1B@\n%", 8);
    if (random.oneIn(2)) {
        const Bytes &whole = random.oneIn(2) ? envelopes::readThreshold : envelopes::writeThreshold5;
        return bytesOf(random.mutated({whole.begin(), whole.end()}, telling));
    }
    Bytes noise(random.below(200));
    for (std::uint8_t &byte : noise)
        byte = static_cast<std::uint8_t>(random.oneIn(2) ? random.of(telling) : static_cast<char>(random()));
    return noise;
}

std::size_t drain(VirtualPrinter &printer) {
    std::size_t count = 0;
    for (Bytes transfer; printer.read(transfer) == TL_USB_OK; ++count)
        EXPECT_TRUE(transfer.size() == 1 || transfer.size() == 8);
    return count;
}

} // namespace

TEST(VirtualPrinterFuzz, survivesAnyBytesAndRecovers) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        Random random(seed);
        VirtualPrinter printer({});
        for (int piece = 0; piece < 100; ++piece) {
            ASSERT_EQ(printer.write(hostilePiece(random)), TL_USB_OK);
            const std::int32_t threshold = printer.state().threshold;
            ASSERT_TRUE(threshold >= 0 && threshold <= 9 && threshold != 1) << threshold;
        }
        ASSERT_LE(drain(printer), 64u);
        // More than any frame can still swallow.
        ASSERT_EQ(printer.write(Bytes(65'551, 'A')), TL_USB_OK);
        drain(printer);
        ASSERT_EQ(printer.write(envelopes::readThreshold), TL_USB_OK);
        ASSERT_EQ(drain(printer), 2u);
    }
}

TEST(VirtualPrinterFuzz, unreadRepliesAreBounded) {
    VirtualPrinter printer({});
    for (int i = 0; i < 1'000; ++i)
        ASSERT_EQ(printer.write(envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(drain(printer), 64u);
}

TEST(PrinterJsonFuzz, AMutatedFileIsAPrinterOrSaysWhyNot) {
    const std::string valid =
        R"({"manufacturer": "Zelkor", "product": "L\u00e4ser", "serial": "SN1", "vid": "0x5A4B",
        "pid": 17, "printer_status": 3, "threshold": 3, "status_text": "{}", "faults": ["silent", "busy"],
        "note": [1.5, null, {"a": [true, "\ud83d\ude00"]}]})";
    std::size_t printers = 0;
    Random random(1);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = random.mutated(valid, "{}[]:,\"\\0e.-\x1F\xC3");
        std::string reason;
        auto state = transport::printerFromJson(text, &reason);
        ASSERT_EQ(state.has_value(), reason.empty()) << text;
        const auto changed = transport::jsonWithThreshold(text, 10);
        ASSERT_EQ(changed.has_value(), state.has_value()) << text;
        if (state) {
            ++printers;
            state->threshold = 10;
            ASSERT_EQ(transport::printerFromJson(*changed), state) << text << *changed;
        }
    }
    EXPECT_GT(printers, 1'000u);
    EXPECT_LT(printers, 19'000u);
}
