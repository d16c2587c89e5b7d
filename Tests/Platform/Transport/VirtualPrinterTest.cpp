// What a virtual printer makes of requests, good and bad.
#include "Platform/Transport/virtual/VirtualPrinter.h"
#include "Tests/Support/Envelopes.h"

using transport::VirtualPrinter;

namespace {

const std::string exitLanguage = "\x1B%-12345X";
const std::string enterAcl = "@PJL ENTER LANGUAGE=ACL\r\n";
const std::string readReply = "<00acff2100010001>", writeReply = "<00acff2000010000>";
const std::string refusal = "<00acff2000020000>"; // of a write

std::string text(const Bytes &bytes) {
    return {bytes.begin(), bytes.end()};
}

std::string frame(std::uint16_t command, const std::string &data) {
    const auto bigEndian = [](std::size_t value) {
        return std::string{static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
    };
    return std::string("\0\xAC", 2) + bigEndian(command) + bigEndian(data.size()) + std::string(10, '\0') +
           data;
}

std::string acl(const std::string &frames) {
    return exitLanguage + enterAcl + frames;
}

std::string readFrame() {
    return text(Bytes(envelopes::readThreshold.begin() + 34, envelopes::readThreshold.end() - 9));
}

/// The transfers that the printer has to send.
std::string replies(VirtualPrinter &printer) {
    std::string all;
    for (Bytes transfer; printer.read(transfer) == TL_USB_OK;)
        all += hex(transfer);
    return all;
}

std::string answers(VirtualPrinter &printer, const std::string &request) {
    EXPECT_EQ(printer.write(bytesOf(request)), TL_USB_OK);
    return replies(printer);
}

} // namespace

TEST(VirtualPrinter, answersTheSameHoweverTheBytesAreSplit) {
    for (std::size_t split = 0; split <= envelopes::readThreshold.size(); ++split) {
        SCOPED_TRACE(split);
        VirtualPrinter printer({.threshold = 7});
        const std::span<const std::uint8_t> all = envelopes::readThreshold;
        ASSERT_EQ(printer.write(all.first(split)), TL_USB_OK);
        ASSERT_EQ(printer.write(all.subspan(split)), TL_USB_OK);
        ASSERT_EQ(replies(printer), readReply + "<37>");
    }
}

TEST(VirtualPrinter, findsTheFrameAmongOtherPjl) {
    const std::string longLine = "@PJL COMMENT " + std::string(100'000, 'x') + "\r\n";
    const std::string nested = frame(0xFF22, acl(readFrame())), once = readReply + "<37>",
                      twice = once + once;
    const std::tuple<const char *, std::string, std::string> cases[] = {
        {"other lines first", exitLanguage + "@PJL\r\n@PJL JOB NAME=\"a\"\r\n \r\n" + enterAcl + readFrame(),
         once},
        {"an endless line first", exitLanguage + longLine + enterAcl + readFrame(), once},
        {"looser spelling", exitLanguage + "@PJL  enter language = acl \n" + readFrame(), once},
        {"a false start of UEL", "\x1B%-1" + acl(readFrame()), once},
        {"two frames in one envelope", acl(readFrame() + readFrame()), twice},
        {"two envelopes", text(envelopes::readThreshold) + text(envelopes::readThreshold), twice},
        {"an envelope after print data", exitLanguage + "text\n" + text(envelopes::readThreshold), once},
        {"UEL and a request inside data", acl(nested + exitLanguage), "<00acff2200020000>"},
        {"no UEL", enterAcl + readFrame(), ""},
        {"no language", exitLanguage + readFrame(), ""},
        {"another language", exitLanguage + "@PJL ENTER LANGUAGE=PCL\r\n" + enterAcl + readFrame(), ""},
        {"a byte before the frame", acl('\0' + readFrame()), ""},
        {"data that never ends", acl(frame(0xFF21, std::string(65535, 'x')).substr(0, 500)), ""},
    };
    for (const auto &[what, request, expected] : cases) {
        VirtualPrinter printer({.threshold = 7});
        EXPECT_EQ(answers(printer, request), expected) << what;
    }
}

TEST(VirtualPrinter, storesOnlyTheThresholdsThereAre) {
    const std::string key = "OID_PLATFORM_CONSUMEABLE_HINT=";
    const auto request = [](const std::string &name, const std::string &value) {
        return acl(frame(0xFF20, name + value));
    };
    for (int value = 0; value <= 12; ++value) {
        VirtualPrinter printer({.threshold = 3});
        const bool good = value == 0 || (value >= 2 && value <= 10);
        ASSERT_EQ(answers(printer, request(key, std::to_string(value))), good ? writeReply : refusal);
        EXPECT_EQ(printer.state().threshold, good ? value : 3);
    }
    const std::pair<std::string, std::string> malformed[] = {
        {"", ""},         {key, ""},           {key, "-2"},         {key, "+2"},
        {key, "2%"},      {key, " 2"},         {key, "4294967298"}, {key, std::string("5\0", 2)},
        {"X" + key, "5"}, {key.substr(1), "5"}};
    for (const auto &[name, value] : malformed) {
        VirtualPrinter printer({.threshold = 3});
        ASSERT_EQ(answers(printer, request(name, value)), refusal) << name << value;
        EXPECT_EQ(printer.state().threshold, 3) << name << value;
    }
    VirtualPrinter printer({});
    EXPECT_EQ(answers(printer, acl(frame(0xFF21, "") + frame(0x0102, "abc"))),
              "<00acff2100020000><00ac010200020000>");
}

TEST(VirtualPrinter, reportsAChangedThresholdAndKeepsTheOldOneWhenItCannotBeKept) {
    std::vector<std::int32_t> reported;
    bool accepts = true;
    VirtualPrinter printer({.threshold = 3}, [&](std::int32_t threshold) {
        reported.push_back(threshold);
        return accepts;
    });
    const std::string request = text(envelopes::writeThreshold5);
    EXPECT_EQ(answers(printer, request + request), writeReply + writeReply);
    EXPECT_THAT(reported, ElementsAre(5));

    accepts = false;
    printer.setState({.threshold = 4});
    EXPECT_EQ(answers(printer, request), refusal);
    EXPECT_EQ(printer.state().threshold, 4);
}

TEST(VirtualPrinter, openingForgetsHalfARequestAndUnreadReplies) {
    VirtualPrinter printer({.threshold = 7});
    const std::string request = text(envelopes::readThreshold);
    ASSERT_EQ(printer.write(bytesOf(request + request.substr(0, 60))), TL_USB_OK);
    ASSERT_EQ(printer.open(), TL_USB_OK);
    EXPECT_EQ(replies(printer), "");
    EXPECT_EQ(answers(printer, request), readReply + "<37>");
}
