#include "Tools/zkprinter/Printing/SerialNumbers.h"

#include "Tests/Support/Random.h"

#include <cctype>

namespace {

std::string hexadecimal(unsigned value, int width, bool capitals) {
    std::string digits;
    for (; width > 0; --width, value >>= 4)
        digits.insert(digits.begin(), (capitals ? "0123456789ABCDEF" : "0123456789abcdef")[value & 15]);
    return digits;
}

/// Writes texts in the ways that others write them.
class Scribe : public Random {
public:
    using Random::Random;

    std::string serial() {
        static const std::string characters = "0123456789ABCXYZabcxyz0123456789-_.%&/\"\\ +";
        std::string text = "Q"; // a letter, so that its case can be changed
        for (std::size_t count = 7 + below(12); count > 0; --count)
            text += of(characters);
        return text + "7";
    }
    std::string inOtherCase(std::string text) {
        for (char &character : text)
            if (below(2))
                character = static_cast<char>(below(2) ? std::toupper(character) : std::tolower(character));
        return text;
    }
    std::string percentEncoded(const std::string &text, bool all) {
        std::string encoded;
        for (const char character : text)
            if (!all && std::isalnum(static_cast<unsigned char>(character)))
                encoded += character;
            else
                encoded += "%" + hexadecimal(static_cast<unsigned char>(character), 2, below(2));
        return encoded;
    }
    std::string inJson(const std::string &text) {
        std::string escaped;
        for (const char character : text)
            if (character == '"' || character == '\\')
                escaped += std::string("\\") + character;
            else if (below(4) == 0)
                escaped += "\\u" + hexadecimal(static_cast<unsigned char>(character), 4, below(2));
            else
                escaped += character;
        return escaped;
    }
    std::string blanks() {
        std::string text;
        for (std::size_t count = below(3); count > 0; --count)
            text += " \t\r\n"[below(4)];
        return text;
    }
    std::string key() {
        static const std::vector<std::string> keys = {
            "sn",      "SN",         "S/N",       "s.n.",         "S_N",           "SERN",
            "serial",  "Serial No.", "serial_no", "SerialNumber", "serial-number", "usb_serial",
            "iSerial", "SNR",        "snum",      "Seriennummer", "N° de série",   "número de serie",
            "序列号"};
        return inOtherCase(of(keys));
    }
};

/// Nothing that somebody could take for the number, however they read the text.
bool tells(std::string text, std::string serial) {
    const auto lower = [](std::string &all) {
        for (char &character : all)
            character = static_cast<char>(std::tolower(character));
    };
    lower(text);
    lower(serial);
    const std::string end = serial.substr(serial.size() - std::min<std::size_t>(serial.size(), 5));
    return end.size() > 2 && text.find(end) != std::string::npos;
}

} // namespace

TEST(SerialNumbers, areHiddenWhereverTheyOccur) {
    SerialNumbers serials;
    for (const char *serial : {"SN001", "SN00112345", "7", "ab\tc", "序列号一二三", "A B&'SECRET", ""})
        serials.add(serial);
    const std::pair<const char *, const char *> rows[] = {
        {"", ""},
        {"serialNumber:SN00112345", "serialNumber:SN0…45"},
        {"xSN00112345SN00112345y", "xSN0…45SN0…45y"},
        {"SN001 Desk_SN001 (sn001)", "… Desk_… (…)"},
        {"SN0019 xSN001 SN001é", "SN0019 xSN001 SN001é"}, // other words
        {"7 of 17, usb:7, serial 7", "7 of 17, usb:7, serial …"},
        {"ab\tc ab\\tc", "… …"}, // as it is, and as the log writes it
        {"nr 序列号一二三", "nr …"},
        {"\"usb://Z/L?serial=UNKNOWN123&x=1\" serial=Q%20 serial=",
         "\"usb://Z/L?serial=UNK…23&x=1\" serial=… serial="},
        {"usb://Z/L?serial=%E5%BA%8F", "usb://Z/L?serial=…"},
        {"usb://Z/L?serial=A%20B&'SECRET a%20b&'secret", "usb://Z/L?serial=… …"},
        {"serial=UNKNOWN'123&x", "serial=…&x"},
        {R"({"MFG":"Z","SN":"UNKNOWN123","SERN":"a\"SECRET","SERIALNUMBER":"x"})",
         R"({"MFG":"Z","SN":"UNK…23","SERN":"…","SERIALNUMBER":"…"})"},
        {R"({"sn" : 12345678, "x":1})", R"({"sn" : 123…78, "x":1})"},
        {R"(str:"{\"Serial\":\"UNKNOWN123\",\"x\":1}")", R"(str:"{\"Serial\":\"UNK…23\",\"x\":1}")"},
        {"MFG:Z;SN:UNKNOWN123;CMD:PJL", "MFG:Z;SN:UNK…23;CMD:PJL"},
        {"<serial>UNKNOWN123</serial>", "<serial>UNK…23</serial>"},
        {"status:ok dsn:5 version=1", "status:ok dsn:5 version=1"},
        {"%3Fserial%3DUNKNOWN123", "%3Fserial%3DUNK…23"},
        {"%53%4E001", "…"},
        {"%2553N00112345", "SN0…45"},
        {"serial port 3, no serial at 5", "serial port 3, no serial at 5"},
        {R"({"serial":["a]1","b"],"x":[1]})", R"({"serial":[…],"x":[1]})"},
        {R"({"key":"serial","value":"UNKNOWN123"},{"key":"x","value":1})",
         R"({"key":"serial","value":"UNK…23"},{"key":"x","value":1})"},
        {"Serial No. UNKNOWN123, S/N: UNKNOWN123", "Serial No. UNK…23, S/N: UNK…23"},
    };
    for (const auto &[text, hidden] : rows)
        EXPECT_EQ(serials.hide(text), hidden) << text;
    EXPECT_EQ(withoutAddresses("<ZKUSB: 0x55d0c0ffee10> 0x1b 0x12345"), "<ZKUSB: 0x…> 0x1b 0x…");
}

TEST(SerialNumbers, areHiddenHoweverTheyAreWritten) {
    Scribe scribe(20261121);
    for (int round = 0; round < 5000; ++round) {
        const std::string serial = scribe.serial();
        SerialNumbers knowing;
        knowing.add(serial);
        const std::string ways[] = {scribe.inOtherCase(serial),
                                    scribe.percentEncoded(serial, scribe.below(2)), scribe.inJson(serial),
                                    scribe.percentEncoded(scribe.inJson(serial), true)};
        const std::string known = "of " + ways[scribe.below(4)] + " here";
        EXPECT_EQ(knowing.hide(known), "of " + SerialNumbers::shortened(serial) + " here") << known;

        // One that nobody told of, by the word in front of it.
        const SerialNumbers unknowing;
        const std::string quotedKey =
            "{\"a\":1,\"" + scribe.key() + "\"" + scribe.blanks() + ":" + scribe.blanks();
        const std::string named[] = {
            quotedKey + "\"" + scribe.inJson(serial) + "\",\"b\":2}",
            quotedKey + "[\"" + scribe.inJson(serial) + "\"],\"b\":2}",
            quotedKey + "{\"value\":\"" + scribe.inJson(serial) + "\"},\"b\":2}",
            "{\"key\":\"" + scribe.key() + "\"," + scribe.blanks() + "\"value\":\"" + scribe.inJson(serial) +
                "\"}",
            "<" + scribe.key() + " value=\"" + serial.substr(0, serial.find('"')) + "\"/>",
            scribe.key() + (scribe.below(2) ? " " : "\t") + scribe.percentEncoded(serial, false) + " here",
            "Zelkor/L200?" + scribe.key() + "=" + scribe.percentEncoded(serial, false) + "&b",
            scribe.percentEncoded(quotedKey + "\"" + serial.substr(0, serial.find('"')) + "\"", true)};
        for (const std::string &text : named)
            EXPECT_FALSE(tells(unknowing.hide(text), serial.substr(0, serial.find('"')))) << text;
    }
}

TEST(SerialNumbers, areHiddenBelowAnyNumberOfEscapes) {
    std::string text = "serial";
    for (int layer = 0; layer < 15000; ++layer)
        text += layer == 0 ? "%25" : "25";
    EXPECT_EQ(SerialNumbers().hide(text + "3DUNKNOWN123"), "…");
}
