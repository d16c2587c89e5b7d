// Digests, HMAC and AES against published vectors.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/TextTable.h"

#include <gtest/gtest.h>

namespace {

Ref<NSData> hex(std::string_view digits) {
    return qn::hexData(string(digits));
}

Ref<NSData> repeated(std::uint8_t byte, std::size_t count) {
    return make<NSData>(std::vector<std::uint8_t>(count, byte));
}

/// The algorithms by their numbers.
const Lines names = {"SHA1", "MD5", "SHA256", "SHA384", "SHA512", "SHA224"};

std::string published(const std::string &name) {
    static const auto rows = rowsOf(ZK_TABLES "/Foundation/NSData/Digests.txt");
    const auto found = std::ranges::find(rows, name, [](const auto &row) { return row.first; });
    return found == rows.end() ? "not published" : found->second;
}

using TextForm = Ref<NSString> (*)(const Ref<NSString> &);
using DataForm = Ref<NSData> (*)(const Ref<NSData> &);

} // namespace

TEST(Digests, areThePublishedOnes) {
    const std::pair<TextForm, DataForm> forms[] = {
        {qn::SHA1_string, qn::SHA1_data},     {qn::MD5_string, qn::MD5_data},
        {qn::SHA256_string, qn::SHA256_data}, {qn::SHA384_string, qn::SHA384_data},
        {qn::SHA512_string, qn::SHA512_data}, {qn::SHA224_string, qn::SHA224_data}};
    const auto abc = qn::dataValue(u"abc"_ns);
    for (std::uint32_t number = 0; number < names.size(); ++number) {
        const auto &[ofText, ofData] = forms[number];
        const std::string expected = published(names[number]);
        EXPECT_EQ(text(ofText(u"abc"_ns)), expected);
        EXPECT_EQ(text(qn::hexString(ofData(abc))), expected);
        EXPECT_EQ(text(qn::stringWithAlg(abc, number)), expected);
        EXPECT_EQ(qn::dataWithAlg(abc, number)->length(), qn::size_t_alg(number));
        EXPECT_EQ(ofText(nullptr), nullptr);
        EXPECT_EQ(ofText(make<NSString>(std::u16string(1, 0xDC00))), nullptr);
    }
    EXPECT_EQ(text(qn::MD5_string(u""_ns)), "D41D8CD98F00B204E9800998ECF8427E");
    EXPECT_EQ(text(qn::SHA1_string(repeated('a', 1000000))), "34AA973CD4C4DAA4F61EEB2BDBAD27316534016F");
    EXPECT_TRUE(qn::MD5_data(u"abc"_ns)->isEqual(qn::MD5_data(abc)));
    for (const std::uint32_t unknown : {6u, 0xFFFFFFFFu})
        EXPECT_TRUE(!qn::stringWithAlg(abc, unknown) && !qn::dataWithAlg(abc, unknown) &&
                    qn::size_t_alg(unknown) == 20);
}

TEST(Hmac, isThePublishedOne) {
    const auto question = u"what do ya want for nothing?"_ns, key = u"Jefe"_ns;
    for (std::uint32_t number = 0; number < names.size(); ++number) {
        const std::string expected = published("HMAC " + names[number]);
        EXPECT_EQ(text(qn::hmacStringUsingAlg(question, number, key)), expected);
        EXPECT_EQ(text(qn::hmacStringUsingAlg(qn::dataValue(question), number, u"Jefe\0x"_ns)), expected)
            << "the key ends at a zero";
        EXPECT_EQ(text(qn::hexString(qn::hmacDataUsingAlg(question, number, qn::dataValue(key)))), expected);
    }
    const auto longKey = repeated(0xAA, 131),
               data = qn::dataValue(u"Test Using Larger Than Block-Size Key - Hash Key First"_ns);
    EXPECT_EQ(text(qn::hexString(qn::hmacDataUsingAlg(data, 2, longKey))),
              "60E431591EE0B67F0D8A26AACBF5B77F8E0BC6213728C5140546040F0EE37F54");
    for (const auto &empty : {u""_ns, u"\0x"_ns})
        EXPECT_EQ(text(qn::hmacStringUsingAlg(u""_ns, 1, empty)), "74E6F7298A9C2D168935F58C001BAD88");
    for (const std::uint32_t unknown : {6u, 0xFFFFFFFFu})
        EXPECT_FALSE(qn::hmacStringUsingAlg(question, unknown, key) ||
                     qn::hmacDataUsingAlg(data, unknown, longKey));
    EXPECT_FALSE(qn::hmacDataUsingAlg(data, 0, nullptr) || qn::hmacStringUsingAlg(Ref<NSString>(), 0, key));
}

TEST(Aes, isThePublishedOneWithPadding) {
    const auto plain = hex("6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
                           "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710");
    const auto iv = hex("000102030405060708090a0b0c0d0e0f");
    for (const auto &[keyDigits, expected] : rowsOf(ZK_TABLES "/Foundation/NSData/AES.txt")) {
        const auto key = hex(keyDigits), cipher = qn::AES256EncryptWithKey(plain, key, iv);
        ASSERT_EQ(cipher->length(), 80u) << "a whole block of padding";
        EXPECT_TRUE(cipher->subdataWithRange({0, 64})->isEqual(hex(expected)));
        EXPECT_TRUE(plain->isEqual(qn::AES256DecryptWithkey(cipher, key, iv)));
        EXPECT_EQ(qn::AES256DecryptWithkey(cipher->subdataWithRange({0, 79}), key, iv), nullptr);
        EXPECT_EQ(qn::AES256DecryptWithkey(cipher->subdataWithRange({0, 64}), key, iv), nullptr)
            << "no padding";
        for (NSUInteger length = 0; length < 33; ++length) {
            const auto part = plain->subdataWithRange({0, length}),
                       sealed = qn::AES256EncryptWithKey(part, key, iv);
            EXPECT_EQ(sealed->length(), (length / 16 + 1) * 16);
            EXPECT_TRUE(part->isEqual(qn::AES256DecryptWithkey(sealed, key, iv)));
        }
    }
}

TEST(Aes, refusesOtherKeysAndVectors) {
    const auto plain = repeated('p', 16), key = repeated('k', 16), zeros = repeated(0, 16);
    const auto cipher = qn::AES256EncryptWithKey(plain, key, zeros);
    EXPECT_EQ(cipher->length(), 32u);
    EXPECT_TRUE(cipher->isEqual(qn::AES256EncryptWithKey(plain, key, NSData::data())));
    EXPECT_TRUE(cipher->isEqual(qn::AES256EncryptWithKey(plain, key, nullptr)));
    EXPECT_TRUE(plain->isEqual(qn::AES256DecryptWithkey(cipher, key, NSData::data())));
    for (std::size_t length = 0; length <= 40; ++length) {
        const bool fits = length == 16 || length == 24 || length == 32;
        EXPECT_EQ(qn::AES256EncryptWithKey(plain, repeated('k', length), zeros) != nullptr, fits) << length;
        EXPECT_EQ(qn::AES256EncryptWithKey(plain, key, repeated(0, length)) != nullptr,
                  length == 0 || length == 16)
            << length;
    }
    EXPECT_EQ(qn::AES256DecryptWithkey(NSData::data(), key, zeros), nullptr);
    EXPECT_EQ(qn::AES256EncryptWithKey(Ref<NSData>(), key, zeros), nullptr);
    EXPECT_EQ(qn::AES256EncryptWithKey(plain, nullptr, zeros), nullptr);

    // Of texts, the result is read as text: cipher bytes hardly ever are.
    const auto keyText = u"0123456789abcdef"_ns, noVector = u""_ns;
    EXPECT_EQ(text(qn::AES256EncryptWithKey(u"toner"_ns, keyText, noVector)),
              text(qn::UTF8String(
                  qn::AES256EncryptWithKey(qn::dataValue(u"toner"_ns), qn::dataValue(keyText), nullptr))));
    EXPECT_EQ(qn::AES256DecryptWithkey(u"toner"_ns, keyText, noVector), nullptr);
    EXPECT_EQ(qn::AES256EncryptWithKey(u"toner"_ns, u"short"_ns, noVector), nullptr);
}
