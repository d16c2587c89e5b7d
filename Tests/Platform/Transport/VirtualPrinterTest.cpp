// What a virtual printer makes of requests, good and bad.
#include "Platform/Transport/virtual/VirtualPrinter.h"
#include "Tests/Support/Envelopes.h"
#include "Tests/Support/Testing.h"

using envelopes::Bytes;
using transport::VirtualPrinter;

namespace {

const std::string exitLanguage = "\x1B%-12345X";
const std::string enterAcl = "@PJL ENTER LANGUAGE=ACL\r\n";
const Bytes readReply = {0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, 0x01};
const Bytes writeReply = {0x00, 0xAC, 0xFF, 0x20, 0x00, 0x01, 0x00, 0x00};

Bytes refusalOf(std::uint16_t command) {
    return {
        0x00, 0xAC, static_cast<std::uint8_t>(command >> 8), static_cast<std::uint8_t>(command), 0x00, 0x02,
        0x00, 0x00};
}

Bytes bytes(const std::string &text) {
    return {text.begin(), text.end()};
}

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

std::vector<Bytes> replies(VirtualPrinter &printer) {
    std::vector<Bytes> found;
    for (Bytes transfer; printer.read(transfer) == TL_USB_OK;)
        found.push_back(transfer);
    return found;
}

std::vector<Bytes> answers(VirtualPrinter &printer, const std::string &request) {
    EXPECT_EQ(printer.write(bytes(request)), TL_USB_OK);
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
        ASSERT_THAT(replies(printer), ElementsAre(readReply, Bytes{'7'}));
    }
}

TEST(VirtualPrinter, findsTheFrameAmongOtherPjl) {
    const std::string longLine = "@PJL COMMENT " + std::string(100'000, 'x') + "\r\n";
    const std::string nested = frame(0xFF22, acl(readFrame()));
    const struct {
        const char *what;
        std::string request;
        std::size_t transfers;
    } cases[] = {
        {"other lines first", exitLanguage + "@PJL\r\n@PJL JOB NAME=\"a\"\r\n \r\n" + enterAcl + readFrame(),
         2},
        {"an endless line first", exitLanguage + longLine + enterAcl + readFrame(), 2},
        {"looser spelling", exitLanguage + "@PJL  enter language = acl \n" + readFrame(), 2},
        {"a false start of UEL", "\x1B%-1" + acl(readFrame()), 2},
        {"two frames in one envelope", acl(readFrame() + readFrame()), 4},
        {"two envelopes", text(envelopes::readThreshold) + text(envelopes::readThreshold), 4},
        {"an envelope after print data", exitLanguage + "text\n" + text(envelopes::readThreshold), 2},
        {"UEL and a request inside data", acl(nested + exitLanguage), 1},
        {"no UEL", enterAcl + readFrame(), 0},
        {"no language", exitLanguage + readFrame(), 0},
        {"another language", exitLanguage + "@PJL ENTER LANGUAGE=PCL\r\n" + enterAcl + readFrame(), 0},
        {"a byte before the frame", acl('\0' + readFrame()), 0},
        {"data that never ends", acl(frame(0xFF21, std::string(65535, 'x')).substr(0, 500)), 0},
    };
    for (const auto &[what, request, transfers] : cases) {
        VirtualPrinter printer({});
        EXPECT_EQ(answers(printer, request).size(), transfers) << what;
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
        ASSERT_THAT(answers(printer, request(key, std::to_string(value))),
                    ElementsAre(good ? writeReply : refusalOf(0xFF20)));
        EXPECT_EQ(printer.state().threshold, good ? value : 3);
    }
    const std::pair<std::string, std::string> malformed[] = {
        {"", ""},         {key, ""},           {key, "-2"},         {key, "+2"},
        {key, "2%"},      {key, " 2"},         {key, "4294967298"}, {key, std::string("5\0", 2)},
        {"X" + key, "5"}, {key.substr(1), "5"}};
    for (const auto &[name, value] : malformed) {
        VirtualPrinter printer({.threshold = 3});
        ASSERT_THAT(answers(printer, request(name, value)), ElementsAre(refusalOf(0xFF20))) << name << value;
        EXPECT_EQ(printer.state().threshold, 3) << name << value;
    }
    VirtualPrinter printer({});
    EXPECT_THAT(answers(printer, acl(frame(0xFF21, "") + frame(0x0102, "abc"))),
                ElementsAre(refusalOf(0xFF21), refusalOf(0x0102)));
}

TEST(VirtualPrinter, reportsAChangedThresholdAndKeepsTheOldOneWhenItCannotBeKept) {
    std::vector<std::int32_t> reported;
    bool accepts = true;
    VirtualPrinter printer({.threshold = 3}, [&](std::int32_t threshold) {
        reported.push_back(threshold);
        return accepts;
    });
    const std::string request = text(envelopes::writeThreshold5);
    EXPECT_THAT(answers(printer, request + request), ElementsAre(writeReply, writeReply));
    EXPECT_THAT(reported, ElementsAre(5));

    accepts = false;
    printer.setState({.threshold = 4});
    EXPECT_THAT(answers(printer, request), ElementsAre(refusalOf(0xFF20)));
    EXPECT_EQ(printer.state().threshold, 4);
}

TEST(VirtualPrinter, openingForgetsHalfARequestAndUnreadReplies) {
    VirtualPrinter printer({});
    const std::string request = text(envelopes::readThreshold);
    ASSERT_EQ(printer.write(bytes(request + request.substr(0, 60))), TL_USB_OK);
    ASSERT_EQ(printer.open(), TL_USB_OK);
    EXPECT_THAT(replies(printer), IsEmpty());
    EXPECT_EQ(answers(printer, request).size(), 2u);
}
