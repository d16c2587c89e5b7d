// Bytes to texts and back: hexadecimal, base64, JSON, CRC-32, resources.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Tests/Support/LogLines.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace std::string_view_literals;

namespace {

/// A file among the program's resources for the length of a scope.
class Resource {
public:
    Resource(const std::string &name, std::string_view content)
        : path_(std::filesystem::read_symlink("/proc/self/exe").parent_path() / "Resources" / name) {
        std::filesystem::create_directories(path_.parent_path());
        std::ofstream(path_, std::ios::binary) << content;
    }
    ~Resource() { std::filesystem::remove(path_); }

private:
    const std::filesystem::path path_;
};

} // namespace

TEST(DataValue, isTheUtf8OfTheText) {
    EXPECT_EQ(text(qn::dataValue(u"aü\0b"_ns)), "<61c3bc00 62>");
    EXPECT_EQ(text(qn::dataValue(u""_ns)), "<>");
    EXPECT_EQ(qn::dataValue(nullptr), nullptr);
    EXPECT_EQ(qn::dataValue(make<NSString>(std::u16string(1, 0xD800))), nullptr);
}

TEST(UTF8String, readsToTheFirstZeroByte) {
    const std::pair<std::string_view, const char *> table[] = {
        {"", ""},   {"\0"sv, ""},           {"Toner\0\xFF"sv, "Toner"},
        {"ü", "ü"}, {"\xC3\0"sv, "(none)"}, {"\xED\xA0\x80", "(none)"}};
    for (const auto &[content, expected] : table)
        EXPECT_EQ(text(qn::UTF8String(dataOf(content))), expected);
    EXPECT_EQ(qn::UTF8String(nullptr), nullptr);
}

TEST(HexString, writesTwoCapitalsAByte) {
    EXPECT_EQ(text(qn::hexString(dataOf("\x0A\xFF\x00"sv))), "0AFF00");
    EXPECT_EQ(text(qn::hexString(NSData::data())), "");
    EXPECT_EQ(qn::hexString(nullptr), nullptr);
    EXPECT_EQ(text(qn::APNSToken(dataOf("\x0A\xFF\x00\x01\xAB"sv))), "0aff0001ab");
}

TEST(HexData, takesPairsAsTheyCome) {
    EXPECT_EQ(text(qn::hexData(make<NSString>(u"1\xD831"))), "<11>");
    EXPECT_EQ(qn::hexData(nullptr), nullptr);
    Random random(1);
    for (std::size_t length = 1; length < 300; ++length) {
        const auto data = dataOf(random.bytes(length));
        EXPECT_TRUE(data->isEqual(qn::hexData(qn::hexString(data)))) << length;
    }
    for (int i = 0; i < 5000; ++i) { // no text makes it fail, and each pair makes a byte
        const char16_t units[] = {static_cast<char16_t>(random()), u' ', u'0', u'7', u'f', u'G', u'-', u'~'};
        const auto value = make<NSString>(random.text<std::u16string>(units, 12));
        const auto data = qn::hexData(value);
        const auto kept = value->stringByReplacingOccurrencesOfString(u" "_ns, u""_ns)->lowercaseString();
        ASSERT_EQ(data ? data->length() : 0, kept->length() / 2);
    }
}

TEST(Base64, isWrittenInLines) {
    const std::string line(64, 'A');
    EXPECT_EQ(text(qn::base64EncodedString(dataOf(std::string(48, '\0')))), line + "\n");
    EXPECT_EQ(text(qn::base64EncodedString(dataOf(std::string(49, '\0')))), line + "\nAA==\n");
    EXPECT_EQ(text(qn::base64EncodedString(dataOf(std::string(96, '\0')))), line + "\n" + line + "\n");
    EXPECT_EQ(text(qn::base64EncodedString(dataOf("\xFB\xEF\xBE\xFF"sv))), "++++/w==\n");
    EXPECT_EQ(contents(qn::base64EncodedData(u"foob"_ns)), "Zm9vYg==\n");
    EXPECT_EQ(qn::base64EncodedString(Ref<NSData>()), nullptr);
}

TEST(Base64, isReadBackAmongForeignCharacters) {
    EXPECT_EQ(text(qn::base64DecodedString(dataOf("YQBi"))), "a") << "up to the zero byte";
    EXPECT_EQ(qn::base64DecodedString(dataOf("/w==")), nullptr) << "not UTF-8";
    EXPECT_EQ(qn::base64DecodedData(make<NSString>(std::u16string(1, 0xD800))), nullptr);
    Random random(2);
    for (std::size_t length = 0; length < 300; ++length) {
        const auto data = dataOf(random.bytes(length));
        std::string encoded = text(qn::base64EncodedString(data));
        for (int i = 0; i < 5; ++i)
            encoded.insert(random() % (encoded.size() + 1), 1, "\n -_\x01%"[random() % 6]);
        EXPECT_TRUE(data->isEqual(qn::base64DecodedData(dataOf(encoded)))) << encoded;
        const std::string noise = random.bytes(length);
        const auto decoded = qn::base64DecodedData(dataOf(noise));
        EXPECT_LE(decoded ? decoded->length() : 0, noise.size() / 4 * 3);
    }
}

TEST(Crc32, isZlibs) {
    EXPECT_EQ(text(qn::crc32String(dataOf("123456789"))), "cbf43926");
    EXPECT_EQ(qn::crc32(u"123456789"_ns), 0xCBF43926u);
    EXPECT_EQ(text(qn::crc32String(dataOf("\x00\x00"sv))), "41d912ff");
    EXPECT_EQ(qn::crc32(make<NSString>(std::u16string(1, 0xD800))), 0u);
    EXPECT_EQ(qn::crc32String(Ref<NSData>()), nullptr);
}

TEST(JsonValueDecoded, givesCollectionsOrALineInTheLog) {
    LogLines log;
    EXPECT_EQ(text(qn::jsonValueDecoded(u"[1, \"ü\"]"_ns)), text(qn::jsonValueDecoded(dataOf("[1,\"ü\"]"))));
    EXPECT_NE(qn::jsonValueDecoded(u"{}"_ns), nullptr);
    EXPECT_EQ(qn::jsonValueDecoded(Ref<NSString>()), nullptr);
    EXPECT_EQ(log.take(), Lines{});
    for (const char *broken : {"", "5", "[1", "[] []", "\xFF"})
        EXPECT_EQ(qn::jsonValueDecoded(dataOf(broken)), nullptr) << broken;
    const Lines lines = log.take();
    ASSERT_EQ(lines.size(), 5u);
    for (const std::string &line : lines)
        EXPECT_TRUE(line.starts_with("jsonValueDecoded error:Error Domain=NSCocoaErrorDomain Code=3840"))
            << line;
}

TEST(Resources, areFoundWithAndWithoutTextExtension) {
    const Resource plain("conversions-a", "grün\0x"sv), typed("conversions-b.txt", "b"),
        broken("conversions-c", "\xFF"), fallback("conversions-c.txt", "c");
    EXPECT_EQ(qn::stringNamed(u"conversions-a"_ns)->units(), u"grün\0x"sv);
    EXPECT_EQ(text(qn::stringNamed(u"conversions-b"_ns)), "b");
    EXPECT_EQ(text(qn::stringNamed(u"conversions-c"_ns)), "c");
    EXPECT_EQ(qn::stringNamed(u"conversions-d"_ns), nullptr);
    EXPECT_EQ(text(qn::dataNamed(u"conversions-c"_ns)), "<ff>");
    EXPECT_EQ(qn::dataNamed(u"conversions-b"_ns), nullptr);
    for (const auto &name : {u"/etc/hostname"_ns, u"../Resources/conversions-a"_ns, u"conversions-a\0"_ns})
        EXPECT_TRUE(!qn::dataNamed(name) && !qn::stringNamed(name)) << text(name);
    EXPECT_EQ(qn::dataNamed(nullptr), nullptr);
    EXPECT_EQ(qn::stringNamed(nullptr), nullptr);
}
