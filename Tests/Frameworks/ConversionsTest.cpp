#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSString.h"

#include <gtest/gtest.h>

namespace {
std::string text(const id &object) {
    return object ? object->description()->utf8() : "(none)";
}
const auto loneSurrogate = std::u16string(1, 0xDC00);
} // namespace

TEST(URLEncode, leavesWhatAQueryAllowsAndEncodesTheRest) {
    const std::string allowed =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/?";
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        char encoded[4];
        std::snprintf(encoded, sizeof encoded, "%%%02X", static_cast<unsigned>(unit));
        const bool stays = allowed.find(static_cast<char>(unit)) != std::string::npos;
        EXPECT_EQ(text(qn::URLEncode(make<NSString>(std::u16string(1, unit)))),
                  unit && stays ? std::string(1, static_cast<char>(unit)) : encoded);
    }
    EXPECT_EQ(text(qn::URLEncode(u"a b/ü?"_ns)), "a%20b/%C3%BC?");
    EXPECT_EQ(text(qn::URLEncode(u"100%"_ns)), "100%25");
    EXPECT_EQ(text(qn::URLEncode(u"激光 😀"_ns)), "%E6%BF%80%E5%85%89%20%F0%9F%98%80");
    EXPECT_EQ(text(qn::URLEncode(u""_ns)), "");
    EXPECT_EQ(qn::URLEncode(nullptr), nullptr);
    EXPECT_EQ(qn::URLEncode(make<NSString>(u"a" + loneSurrogate)), nullptr);
}

TEST(DataValue, isTheUtf8OfTheText) {
    EXPECT_EQ(text(qn::dataValue(u"aü"_ns)), "<61c3bc>");
    EXPECT_EQ(text(qn::dataValue(u""_ns)), "<>");
    EXPECT_EQ(text(qn::dataValue(make<NSString>(std::u16string{u'a', 0, u'b'}))), "<610062>");
    EXPECT_EQ(qn::dataValue(nullptr), nullptr);
    EXPECT_EQ(qn::dataValue(make<NSString>(loneSurrogate)), nullptr);
}

TEST(UTF8String, readsToTheFirstZeroByte) {
    const auto read = [](std::string_view bytes) {
        return text(qn::UTF8String(NSData::dataWithBytes(bytes.data(), bytes.size())));
    };
    using namespace std::string_view_literals;
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("\0"sv), "");
    EXPECT_EQ(read("Toner\0\xFF"sv), "Toner");
    EXPECT_EQ(read("ü\0\0"sv), "ü");
    EXPECT_EQ(read("no zero"), "no zero");
    EXPECT_EQ(read("\xC3\0"sv), "(none)");
    EXPECT_EQ(read("\xED\xA0\x80"), "(none)");
    EXPECT_EQ(qn::UTF8String(nullptr), nullptr);
}
