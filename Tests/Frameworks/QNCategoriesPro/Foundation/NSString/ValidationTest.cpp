// The forms of texts: examples from the standards that give them, other ways to the same answers, hostile
// texts. docs/validation.md quotes from here.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Validation.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/PasswordRules.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TextTable.h"
#include "Tests/Support/Words.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>

namespace {

using Validator = bool (*)(const Ref<NSString> &);
using Examples = std::vector<std::string>;

const std::string label(63, 'a'), local(64, 'a'); // the longest

Examples operator+(Examples examples, const Examples &more) {
    examples.insert(examples.end(), more.begin(), more.end());
    return examples;
}

void expect(Validator isValid, const Examples &valid, const Examples &invalid) {
    for (const std::string &one : valid) {
        EXPECT_TRUE(isValid(string(one))) << one;
        for (const auto &spoilt :
             {" " + one, one + " ", one + "\n", one + std::string(1, '\0'), one + "\u0663"})
            EXPECT_FALSE(isValid(string(spoilt))) << spoilt;
    }
    for (const std::string &one : invalid)
        EXPECT_FALSE(isValid(string(one))) << one;
    EXPECT_FALSE(isValid(nullptr));
    EXPECT_FALSE(isValid(u""_ns));
    EXPECT_FALSE(isValid(make<NSString>(std::u16string(u"\xD800"))));
}

} // namespace

TEST(Validation, theManualsExample) {
    EXPECT_TRUE(qn::isEmailAddress(u"jdoe@example.org"_ns));
    EXPECT_FALSE(qn::isHostName(u"-printer.example.org"_ns));
    EXPECT_TRUE(qn::isPostalCode(u"SW1A 1AA"_ns, u"GB"_ns));
    EXPECT_TRUE(qn::isIBAN(u"GB29 NWBK 6016 1331 9268 19"_ns));

    qn::PasswordRules rules;
    rules.words = {u"jdoe"_ns};
    const auto faults = qn::passwordFaults(u"JDoe1234"_ns, rules);
    EXPECT_THAT(faults, testing::ElementsAre(qn::PasswordFault::tooShort, qn::PasswordFault::longRun,
                                             qn::PasswordFault::knownWord));
}

// RFC 5321 (2.3.11, 4.1.2, 4.1.3, appendix D), RFC 5322 (appendix A), RFC 3696 (3, with its errata).
TEST(Validation, mailboxesOfRFC5321) {
    expect(qn::isEmailAddress,
           words(R"(
               jdoe@machine.example mary@example.net smith@home.example john.q.public@example.com one@y.test
               boss@nil.test 1234@local.machine.example userc@d.bar.org Smith@bar.com _somename@example.com
               customer/department=shipping@example.com $A12345@example.com !def!xyz%abc@example.com
               user+mailbox@example.com "Abc@def"@example.com "Abc\@def"@example.com ""@example.com
               "Joe.\\Blow"@example.com postmaster@localhost jdoe@[123.255.37.2] jdoe@[IPv6:2001:db8::1]
               jdoe@[ipv6:::ffff:192.0.2.1])") +
               Examples{R"("Fred Bloggs"@example.com)", local + "@example.com", "a@" + label + ".example",
                        local + "@" + repeated("a.", 94) + "a"}, // 254 characters
           words(R"(
               Abc\@def@example.com .jdoe@example.com jdoe.@example.com j..doe@example.com jdoe @example.com
               jdoe@ jdoe@-example.com jdoe@example..com jdoe@example.com. jdoe@192.0.2.1 jdoe@[192.0.2.256]
               jdoe@[2001:db8::1] jdoe@[IPv6:2001:db8::1 jdoe@[IPv6:192.0.2.1] jdoe@[] jdoe@[
               "a"b@example.com "a@example.com "a"b"@example.com jdoé@example.com jdoe@exämple.com)") +
               Examples{"John Doe <jdoe@machine.example>", "pete(his account)@silly.test",
                        "jdoe@test   . example", "Fred Bloggs@example.com", local + "a@example.com",
                        "a@" + label + "a.example", local + "@" + repeated("a.", 95) + "a"});
}

// RFC 3986 (1.1.2, 3, 5.4 for what is only relative, appendix C); the object identifier is of RFC 3061.
TEST(Validation, addressesOfRFC3986) {
    expect(qn::isURL, words(R"(
               ftp://ftp.is.co.za/rfc/rfc1808.txt http://www.ietf.org/rfc/rfc2396.txt
               ldap://[2001:db8::7]/c=GB?objectClass?one mailto:John.Doe@example.com
               news:comp.infosystems.www.servers.unix tel:+1-816-555-1212 telnet://192.0.2.16:80/
               urn:oid:1.3.6.1.2.1.27 foo://example.com:8042/over/there?name=ferret#nose
               urn:example:animal:ferret:nose http://a/b/c/d;p?q g:h http://[::ffff:192.0.2.1]:631/)"),
           words(R"(
               g ./g /g //g ?y #s ;x ../.. 1http://a/ : ://a http://[::g]/ http://[::1 http://a:b/
               http://a/%4 http://a/%zz http://a/ü <http://a/> http://a/")") +
               Examples{"http://a b/"});
}

// RFC 952, RFC 1123 (2.1), RFC 1035 (2.3.4); IEEE 802. What addresses are, the platform's own reader tells
// below.
TEST(Validation, namesAndNumbersOfHosts) {
    const std::string longest = label + "." + label + "." + label + "." + std::string(61, 'a');
    expect(
        qn::isHostName,
        words("localhost 3com.example sri-nic.arpa A a1 1a xn--bcher-kva.example x--y 192.0.2.1a " + longest),
        words("-a a- a.-b a-.b a..b .a a. a_b 192.0.2.1 1 a.1 bücher.example " + label + "a " + longest +
              "a") +
            Examples{"a b"});
    expect(qn::isIPv4Address, words("0.0.0.0 192.0.2.1 255.255.255.255"),
           words("256.0.0.1 1.2.3 1.2.3.4.5 01.2.3.4 1.2.3.4/8 0x1.2.3.4"));
    expect(qn::isIPv6Address,
           words("ABCD:EF01:2345:6789:ABCD:EF01:2345:6789 :: ::FFFF:129.144.52.38 0:0:0:0:0:0:13.1.68.3 "
                 "0000:0000:0000:0000:0000:FFFF:255.255.255.255"),
           words("2001:0DB8:0:CD30::/60 12345:: g:: ::1%lo [::1] ::256.0.0.1"));
    expect(qn::isMACAddress, words("00-00-5E-00-53-01 00:00:5e:00:53:01 0000.5E00.5301 AC-DE-48-23-45-67"),
           words("00-00-5E-00-53 00-00-5E-00-53-01-02 00:00-5E:00:53:01 00005E005301 0-0-5E-0-53-1 0000.5E00 "
                 "g0-00-5E-00-53-01 00:00:5e:00:53:"));
}

// ITU-T E.164 (6.2), E.123 (2 to 4), RFC 3966 (3, 6).
TEST(Validation, telephoneNumbers) {
    expect(qn::isE164TelephoneNumber, {"+12015550123", "+442079460018", "+8613800138000", "+123456789012345"},
           {"12015550123", "+0123456789", "+1 201 555 0123", "+1234567890123456", "+", "+1", "++12",
            "00442079460018"});
    expect(qn::isTelephoneNumber,
           {"+22 607 123 4567", "(0607) 123 4567", "607 123 4567", "+1-201-555-0123", "030/1234-56", "112",
            "+44 (0)20 7946 0018", "(201)555.0123", "201 555 0123 x12", "201 555 0123 ext. 12",
            "+12015550123;ext=12", "+123 456 789 012 345", "201-555-0123X1"},
           {"12", "+", "201  555", "(201 555 0123", "201) 555", "()201", "201-", "-201", "1 201 CALL NOW",
            "+1+201", "1234567890123456", "2015550123 x", "2015550123 x12345678", "++1201",
            "tel:+12015550123"});
}

TEST(Validation, postalCodesOfCountries) {
    for (const auto &[codes, countries] : rowsOf(ZK_TABLES "/Foundation/NSString/PostalCodes.txt")) {
        const auto country = string(countries.substr(countries.size() - 2));
        for (const id &code : string(codes)->componentsSeparatedByString(u", "_ns))
            EXPECT_EQ(qn::isPostalCode(as<NSString>(code), country), !countries.starts_with("not"))
                << text(code) << " " << countries;
    }
    EXPECT_FALSE(qn::isPostalCode(u""_ns, u"XX"_ns) || qn::isPostalCode(nullptr, u"DE"_ns) ||
                 qn::isPostalCode(u"10117"_ns, nullptr));
}

// The registry of ISO 13616 has an example of each country.
TEST(Validation, accountNumbersOfISO13616) {
    const auto registered = words(R"(
        AD1200012030200359100100 AE070331234567890123456 AL47212110090000000235698741 AT611904300234573201
        AZ21NABZ00000000137010001944 BA391290079401028494 BE68539007547034 BG80BNBG96611020345678
        BH67BMAG00001299123456 CH9300762011623852957 CY17002001280000001200527600 CZ6508000000192000145399
        DE89370400440532013000 DK5000400440116243 DO28BAGR00000001212453611324 EE382200221020145685
        ES9121000418450200051332 FI2112345600000785 FO6264600001631634 FR1420041010050500013M02606
        GB29NWBK60161331926819 GE29NB0000000101904917 GI75NWBK000000007099453 GL8964710001000206
        GR1601101250000000012300695 GT82TRAJ01020000001210029690 HR1210010051863000160
        HU42117730161111101800000000 IE29AIBK93115212345678 IL620108000000099999999
        IS140159260076545510730339 IT60X0542811101000000123456 JO94CBJO0010000000000131000302
        KW81CBKU0000000000001234560101 KZ86125KZT5004100100 LB62099900000001001901229114
        LI21088100002324013AA LT121000011101001000 LU280019400644750000 LV80BANK0000435195001
        MC5811222000010123456789030 MD24AG000225100013104168 ME25505000012345678951 MK07250120000058984
        MR1300020001010000123456753 MT84MALT011000012345MTLCAST001S MU17BOMM0101101030300200000MUR
        NL91ABNA0417164300 NO9386011117947 PK36SCBL0000001123456702 PL61109010140000071219812874
        PS92PALS000000000400123456702 PT50000201231234567890154 QA58DOHB00001234567890ABCDEFG
        RO49AAAA1B31007593840000 RS35260005601001611379 SA0380000000608010167519 SE4550000000058398257466
        SK3112000000198742637541 SM86U0322509800000000270100 TN5910006035183598478831
        TR330006100519786457841326 UA213223130000026007233566001 VG96VPVG0000012345678901
        XK051212012345678906)");
    expect(qn::isIBAN, registered,
           {"GB28NWBK60161331926819", "gb29nwbk60161331926819", "XX29NWBK60161331926819",
            "GB29NWBK6016133192681", "GB29 NWBK 6016 1331 9268 1", "GB29-NWBK-6016-1331-9268-19",
            "GB 29NW BK60 1613 3192 6819", "DE", "DE89", "DE8937040044053201300A"});
    Random random(1);
    for (const std::string &one : registered) {
        std::string grouped;
        for (std::size_t i = 0; i < one.size(); ++i)
            grouped += (i > 0 && i % 4 == 0 ? " " : "") + one.substr(i, 1);
        EXPECT_TRUE(qn::isIBAN(string(grouped))) << grouped;
        for (int round = 0; round < 20; ++round) { // what the check digits are for
            std::string wrong = one;
            char &digit = wrong[2 + random() % (wrong.size() - 2)];
            if (digit < '0' || digit > '9')
                continue;
            digit = static_cast<char>('0' + (digit - '0' + 1 + static_cast<int>(random() % 9)) % 10);
            EXPECT_FALSE(qn::isIBAN(string(wrong))) << wrong;
        }
    }
    for (const char *check : {"00", "01", "99"}) // of the same remainders as 97, 98 and 02
        for (int account = 0; account < 2000; ++account)
            ASSERT_FALSE(qn::isIBAN(NSString::stringWithFormat("NO%s86011%06d", check, account)));
}

// ISO/IEC 7812-1 (annex B); ISO 7064 (the examples of MOD 11-2), ISNI and ORCID; GB 11643.
TEST(Validation, checkDigits) {
    expect(qn::hasLuhnCheckDigit, {"49927398716", "4242424242424242", "490154203237518", "18", "00"},
           {"49927398717", "4992739871", "8", "4242 4242 4242 4242"});
    expect(qn::hasMod11_2CheckCharacter, {"07940", "079X", "0000000218250097", "000000021694233X", "01"},
           {"07941", "0794X", "079x", "0000-0002-1825-0097", "X", "1", "X079", "7X90"});
    expect(qn::isChineseIdentityNumber, {"11010519491231002X", "440524188001010014"},
           {"110105194912310021", "11010519491331002X", "440524188001010015", "11010519491231002x",
            "1101051949123100"});
    Random random(2);
    for (int round = 0; round < 2000; ++round) { // exactly one check character is right
        std::string digits;
        for (std::size_t size = 1 + random() % 20; size > 0; --size)
            digits += static_cast<char>('0' + random() % 10);
        int luhn = 0, mod11 = 0;
        for (const char check : std::string("0123456789X")) {
            luhn += qn::hasLuhnCheckDigit(string(digits + check));
            mod11 += qn::hasMod11_2CheckCharacter(string(digits + check));
        }
        EXPECT_EQ(luhn, 1) << digits;
        EXPECT_EQ(mod11, 1) << digits;
    }
}

TEST(Validation, charactersOfTexts) {
    expect(qn::isHexadecimal, words("09afAF beef 1"), words("0x1F beeg bee\u0301f"));
    expect(qn::isAllLetters, words("beef Straße e\u0301 打印机 ひらがな 𠀀"),
           words("09afAF \u0301e 、。 1 😀 a墨1 a\u0301-"));
    const struct {
        Validator contains;
        Examples texts, others;
    } rows[] = {{qn::containsChinese, words("打印机 toner墨 𠀀"), words("beef ひらがな 、。 😀 1")},
                {qn::containsEmoji, words("😀 a👍🏽b 🇨🇳 1\uFE0F\u20E3 ☺\uFE0F ⌚"),
                 words("打印机 1 ☺ ⌚\uFE0E #*©")}};
    for (const auto &[contains, texts, others] : rows) {
        for (const std::string &one : texts)
            EXPECT_TRUE(contains(string(one))) << one;
        for (const std::string &one : others)
            EXPECT_FALSE(contains(string(one))) << one;
        EXPECT_FALSE(contains(u""_ns) || contains(nullptr));
    }
}

TEST(Validation, passwordsByRules) {
    using enum qn::PasswordFault;
    using Faults = std::vector<qn::PasswordFault>;
    const qn::PasswordRules lenient{
        .leastLength = 4, .mostLength = 8, .leastKinds = 3, .longestRun = 3, .words = {u"Zoë"_ns, nullptr}};
    for (const std::string &sound : words("Ab1x ab1! Ab1aaa Ab1cba9 aabb1B 密码A1 😀😀A1"))
        EXPECT_EQ(qn::passwordFaults(string(sound), lenient), Faults{}) << sound;
    const std::pair<const char *, Faults> rows[] = {{"aB1", {tooShort}},      {"", {tooShort, tooFewKinds}},
                                                    {"aB1aB1aB1", {tooLong}}, {"ab12", {tooFewKinds}},
                                                    {"Ab1aaaa", {longRun}},   {"A19dcba", {longRun}},
                                                    {"aB3456", {longRun}},    {"1zoËx", {knownWord}}};
    for (const auto &[password, faults] : rows)
        EXPECT_EQ(qn::passwordFaults(string(password), lenient), faults) << password;
    EXPECT_EQ(qn::passwordFaults(nullptr), (Faults{tooShort, tooFewKinds}));
    EXPECT_EQ(qn::passwordFaults(u"correct horse battery staple"_ns), Faults{});
}

TEST(Validation, hostileTextsAreReadOnce) {
    // Steps that double with every character would never end; a stack that grows with them would.
    constexpr std::size_t size = 1 << 16;
    for (const char *piece : {"a", "a.", "a-", "-",  "1",   "1 ", "(1)",     "+", "\\", "\"",      "\"\\",
                              "@", "a@", ":",  "1:", "%41", "中", "e\u0301", "😀", "0-", "http://", "::"})
        for (const char *end : {"", "!", "\xC3\xA4", "@a", "\n"})
            for (const Validator isValid :
                 {qn::isEmailAddress, qn::isURL, qn::isHostName, qn::isIPv4Address, qn::isIPv6Address,
                  qn::isMACAddress, qn::isE164TelephoneNumber, qn::isTelephoneNumber, qn::hasLuhnCheckDigit,
                  qn::isIBAN, qn::hasMod11_2CheckCharacter, qn::isChineseIdentityNumber, qn::isHexadecimal,
                  qn::isAllLetters, qn::containsChinese, qn::containsEmoji})
                isValid(string(repeated(piece, size / std::string_view(piece).size()) + end));
    EXPECT_FALSE(qn::isHexadecimal(string(repeated("a", size) + "!")));
    EXPECT_TRUE(qn::isHexadecimal(string(repeated("a", size))));
    EXPECT_TRUE(qn::isAllLetters(string(repeated("e\u0301", size))));
    EXPECT_TRUE(qn::containsEmoji(string(repeated("☺", size) + "😀")));
}

TEST(Validation, randomAddressesAsThePlatformReadsThem) {
    Random random(3);
    const std::string pieces = "0123456789abcf.:-";
    int valid = 0;
    for (int round = 0; round < 200000; ++round) {
        std::string made;
        for (std::size_t length = 2 + random() % 14; length > 0; --length)
            made += random() % 3 ? pieces[random() % pieces.size()] : ':';
        in6_addr six;
        in_addr four;
        ASSERT_EQ(qn::isIPv6Address(string(made)), inet_pton(AF_INET6, made.c_str(), &six) == 1) << made;
        ASSERT_EQ(qn::isIPv4Address(string(made)), inet_pton(AF_INET, made.c_str(), &four) == 1) << made;
        // Who is a host by number is none by name, and an address within a URL.
        if (qn::isIPv6Address(string(made))) {
            ++valid;
            ASSERT_TRUE(qn::isURL(string("ipp://[" + made + "]/"))) << made;
            ASSERT_TRUE(qn::isEmailAddress(string("a@[IPv6:" + made + "]"))) << made;
            ASSERT_FALSE(qn::isHostName(string(made))) << made;
        }
    }
    EXPECT_GT(valid, 100);
}
