// Digests, HMAC and AES against published vectors.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Tests/Support/Objects.h"

#include <gtest/gtest.h>

namespace {

Ref<NSData> hex(const char *digits) {
    return qn::hexData(string(digits));
}

Ref<NSData> repeated(std::uint8_t byte, std::size_t count) {
    return make<NSData>(std::vector<std::uint8_t>(count, byte));
}

using TextForm = Ref<NSString> (*)(const Ref<NSString> &);
using DataForm = Ref<NSData> (*)(const Ref<NSData> &);

} // namespace

TEST(Digests, areThePublishedOnes) {
    const std::tuple<std::uint32_t, TextForm, DataForm, const char *> table[] = {
        {0, qn::SHA1_string, qn::SHA1_data, "A9993E364706816ABA3E25717850C26C9CD0D89D"},
        {1, qn::MD5_string, qn::MD5_data, "900150983CD24FB0D6963F7D28E17F72"},
        {2, qn::SHA256_string, qn::SHA256_data,
         "BA7816BF8F01CFEA414140DE5DAE2223B00361A396177A9CB410FF61F20015AD"},
        {3, qn::SHA384_string, qn::SHA384_data,
         "CB00753F45A35E8BB5A03D699AC65007272C32AB0EDED1631A8B605A43FF5BED8086072BA1E7CC2358BAECA134C825A7"},
        {4, qn::SHA512_string, qn::SHA512_data,
         "DDAF35A193617ABACC417349AE20413112E6FA4E89A97EA20A9EEEE64B55D39A"
         "2192992A274FC1A836BA3C23A3FEEBBD454D4423643CE80E2A9AC94FA54CA49F"},
        {5, qn::SHA224_string, qn::SHA224_data, "23097D223405D8228642A477BDA255B32AADBCE4BDA0B3F7E36C9DA7"}};
    const auto abc = qn::dataValue(u"abc"_ns);
    for (const auto &[number, ofText, ofData, expected] : table) {
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
    const std::pair<std::uint32_t, const char *> table[] = {
        {0, "EFFCDF6AE5EB2FA2D27416D5F184DF9C259A7C79"},
        {1, "750C783E6AB0B503EAA86E310A5DB738"},
        {2, "5BDCC146BF60754E6A042426089575C75A003F089D2739839DEC58B964EC3843"},
        {3, "AF45D2E376484031617F78D2B58A6B1B9C7EF464F5A01B47"
            "E42EC3736322445E8E2240CA5E69E2C78B3239ECFAB21649"},
        {4, "164B7A7BFCF819E2E395FBE73B56E0A387BD64222E831FD610270CD7EA250554"
            "9758BF75C05A994A6D034F65F8F0E6FDCAEAB1A34D4A6B4B636E070A38BCE737"},
        {5, "A30E01098BC6DBBF45690F3A7E9E6D0F8BBEA2A39E6148008FD05E44"}};
    const auto question = u"what do ya want for nothing?"_ns, key = u"Jefe"_ns;
    for (const auto &[number, expected] : table) {
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
    const std::pair<const char *, const char *> table[] = {
        {"2b7e151628aed2a6abf7158809cf4f3c",
         "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
         "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7"},
        {"8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b",
         "4f021db243bc633d7178183a9fa071e8b4d9ada9ad7dedf4e5e738763f69145a"
         "571b242012fb7ae07fa9baac3df102e008b0e27988598881d920a9e64f5615cd"},
        {"603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4",
         "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
         "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b"}};
    for (const auto &[keyDigits, expected] : table) {
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
