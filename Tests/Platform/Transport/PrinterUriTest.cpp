// Device URIs: both ways, and the printers that they name and do not name.
#include "Platform/Transport/PrinterUri.h"

#include "Tests/Support/Random.h"

#include <cctype>
#include <cstdio>
#include <cstring>

using namespace transport;

namespace {

/// A printer whose texts are of bytes that separate, escape, continue characters or do nothing, and of whole
/// words of URIs.
PrinterIdentity anyPrinter(Random &random) {
    static constexpr std::string_view pieces[] = {// of one byte
                                                  "a", "B", "7", "?", "/", "#", "&", "=", "%", " ", "+", "(",
                                                  "\"", "\x1F", "\xC3", "\xBC", "\xFF",
                                                  // of several
                                                  "\u00FC", "打", "\xF0\x9F\x96\xA8", "%41", "%3F", "SN",
                                                  "usb://", "?serial=", "?interface=1", "&interface=2"};
    const auto next = [&] {
        const std::string text = random.text(pieces, 6);
        return random.oneIn(20) ? text + std::string(250 + random.below(10), 'x') + text : text;
    };
    return {next(), next(), next()};
}

/// By the book, without the code under test: everything that is no word of a query, in hexadecimal.
std::string encodedByTheBook(const std::string &text) {
    std::string encoded;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", byte);
        const bool stays =
            byte < 0x80 && (std::isalnum(byte) || std::strchr("-._~!$&'()*+,;=:@/?", byte) != nullptr);
        encoded += stays ? std::string(1, character) : escape;
    }
    return encoded;
}

std::string joined(const PrinterIdentity &printer) {
    return printer.manufacturer + "/" + printer.product + "?serial=" + printer.serial;
}

} // namespace

TEST(PrinterUri, goesBothWaysForAnyBytes) {
    Random random(20261121);
    for (int round = 0; round < 20'000; ++round) {
        const PrinterIdentity printer = anyPrinter(random);
        const std::string uri = printerUri(printer);
        ASSERT_EQ(uri, "usb://" + encodedByTheBook(joined(printer)));
        const auto parsed = parsePrinterUri(uri);
        ASSERT_TRUE(parsed) << uri;
        EXPECT_EQ(printerUri(*parsed), uri);
        if (printer.manufacturer.find('/') == std::string::npos &&
            printer.serial.find("?serial=") == std::string::npos)
            EXPECT_EQ(*parsed, printer) << uri;
        EXPECT_TRUE(names(uri, printer)) << uri;
        // What is listed for a printer, however long or wrong its texts, names that printer.
        const PrinterIdentity listed = recorded(printer);
        EXPECT_EQ(listed, recorded(listed));
        EXPECT_TRUE(names(printerUri(listed), printer)) << printerUri(listed);
    }
}

TEST(PrinterUri, namesPrintersInTheSpellingsOfCups) {
    const PrinterIdentity printers[] = {
        {"Zelkor", "Sample? Laser", "S N%1"},
        {"Zelkor", "A/B", ""},
        {"Zelkor", "ZELKOR  L200 Series", "SN0002"},
        {"Zelkor", "L200 Series", "SN00021"},
        {"Zelkor", "Bürodrucker", "\xC3\xA4 1"},
        {"", "L300", "x&y=z"},
        {"zelkor", "A/B", ""},
        {"Zelkor", "A", "/B"},
        {"Zelkor", "L200 Series", "XSN00021"},
        {"Zelkor", "L200 Series", "SN%300021"},
    };
    for (const PrinterIdentity &one : printers)
        for (const PrinterIdentity &other : printers)
            EXPECT_EQ(names(printerUri(one), other), one == other)
                << printerUri(one) << " " << printerUri(other);
    constexpr int none = -1;
    const struct {
        const char *uri;
        int printer;
    } cases[] = {
        {"usb://Zelkor/Sample%3F%20Laser?serial=S%20N%251", 0},
        {"usb://Zelkor/Sample%3f Laser?serial=S%20N%1&interface=1", 0},
        {"usb://Zelkor/Sample?%20Laser?serial=S%20N%251", 0},
        {"usb://Zelkor/Sample%3F%20Laser?serial=S%20N%252", none},
        {"usb://Zelkor/Sample%3F%20Laser?serial=s%20n%251", none},
        {"usb://Zelkor/Sample%3F%20Laser", none},
        {"usb://Zelkor/A/B?serial=", 1},
        {"usb://Zelkor/A%2fB", 1},
        {"usb://Zelkor/A%2FB?interface=12", 1},
        {"usb://Zelkor/A%2FB?interface=", none},
        {"usb://Zelkor/L200%20Series?serial=SN0002", 2},
        {"usb://Zelkor/ZELKOR%20%20L200%20Series?serial=SN0002", 2},
        {"usb://Zelkor/Zelkor%20L200%20Series?serial=SN0002", none},
        {"usb://Other/L200%20Series?serial=SN0002", none},
        {"usb://Zelkor/L300?serial=SN0002", none},
        {"usb://Zelkor/L200%20Series?serial=SN00021", 3},
        {"usb://Zelkor/L200%20Series?serial=SN000", none},
        {"usb://Zelkor/L200%20Series?serial=SN000211", none},
        {"usb://Zelkor/L200+Series?serial=SN00021", none},
        {"usb://Zelkor/B%C3%BCrodrucker?serial=%C3%A4%201", 4},
        {"usb://Zelkor/B\u00FCrodrucker?serial=\u00E4 1", 4},
        {"usb:///L300?serial=x&y=z", 5},
        {"usb:///L300?serial=x%26y%3Dz&interface=0", 5},
        {"usb://Zelkor", none},
        {"usb://", none},
        {"usb:///", none},
        {"ipp://Zelkor/A/B", none},
        {"", none},
    };
    for (const auto &[uri, expected] : cases)
        for (int printer = 0; printer < std::ssize(printers); ++printer)
            EXPECT_EQ(names(uri, printers[printer]), printer == expected) << uri << " " << printer;
    EXPECT_FALSE(parsePrinterUri("ipp://Zelkor/A/B"));
}

TEST(PrinterUri, isOfWholeCharactersWhereATextIsTooLong) {
    std::string umlauts;
    for (int i = 0; i < 200; ++i)
        umlauts += "ä";
    EXPECT_EQ(recorded({"", umlauts, "a\xFFz"}), (PrinterIdentity{"", umlauts.substr(0, 254), "a\uFFFDz"}));
    EXPECT_EQ(recorded({"\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"}).manufacturer,
              "\uFFFD\uFFFD\uFFFD");
}
