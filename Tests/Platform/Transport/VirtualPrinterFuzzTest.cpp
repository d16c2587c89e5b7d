// Hostile bytes: nothing crashes, memory stays bounded, and the printer always finds its way back.
#include "Platform/Transport/virtual/PrinterJson.h"
#include "Platform/Transport/virtual/VirtualPrinter.h"
#include "Tests/Support/Envelopes.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using envelopes::Bytes;
using transport::VirtualPrinter;

namespace {

class Chance {
public:
    explicit Chance(unsigned seed) : engine_(seed) {}
    size_t below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(engine_); }

    // Some bytes replaced, removed, doubled or cut off.
    template <class Sequence>
    Sequence mutated(Sequence sequence) {
        for (size_t edits = 1 + below(4); edits > 0 && !sequence.empty(); --edits) {
            const auto at = sequence.begin() + static_cast<std::ptrdiff_t>(below(sequence.size()));
            switch (below(4)) {
            case 0:
                *at = static_cast<typename Sequence::value_type>(below(256));
                break;
            case 1:
                sequence.insert(at, *at);
                break;
            default:
                below(4) == 0 ? sequence.erase(at, sequence.end()) : sequence.erase(at);
                break;
            }
        }
        return sequence;
    }

private:
    std::mt19937 engine_;
};

// Half the pieces are envelopes with a few wrong bytes, the others noise of the bytes that matter most.
Bytes hostilePiece(Chance &chance) {
    if (chance.below(2) == 0) {
        return chance.mutated(chance.below(2) == 0 ? envelopes::readThreshold : envelopes::writeThreshold5);
    }
    Bytes noise(chance.below(200));
    for (uint8_t &byte : noise) {
        constexpr uint8_t telling[] = {0x00, 0xAC, 0xFF, 0x20, 0x1B, '@', '\n', '%'};
        byte = chance.below(2) == 0 ? telling[chance.below(sizeof telling)]
                                    : static_cast<uint8_t>(chance.below(256));
    }
    return noise;
}

size_t drain(VirtualPrinter &printer) {
    size_t count = 0;
    for (Bytes transfer; printer.read(transfer) == TL_USB_OK; ++count) {
        EXPECT_TRUE(transfer.size() == 1 || transfer.size() == 8);
    }
    return count;
}

} // namespace

TEST(VirtualPrinterFuzz, SurvivesAnyBytesAndRecovers) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Chance chance(seed);
        VirtualPrinter printer({});
        for (int piece = 0; piece < 100; ++piece) {
            ASSERT_EQ(printer.write(hostilePiece(chance)), TL_USB_OK);
            const int32_t threshold = printer.state().threshold;
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

TEST(VirtualPrinterFuzz, UnreadRepliesAreBounded) {
    VirtualPrinter printer({});
    for (int i = 0; i < 1'000; ++i) {
        ASSERT_EQ(printer.write(envelopes::readThreshold), TL_USB_OK);
    }
    EXPECT_EQ(drain(printer), 64u);
}

TEST(PrinterJsonFuzz, AMutatedFileIsAPrinterOrSaysWhyNot) {
    const std::string valid =
        R"({"manufacturer": "Zelkor", "product": "L\u00e4ser", "serial": "SN1", "vid": "0x5A4B",
        "pid": 17, "printer_status": 3, "threshold": 3, "status_text": "{}", "faults": ["silent", "busy"],
        "note": [1.5, null, {"a": [true, "\ud83d\ude00"]}]})";
    size_t printers = 0;
    for (unsigned seed = 0; seed < 20'000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const std::string text = Chance(seed).mutated(valid);
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
