// Texts between plain and HTML form, beside slow and obvious implementations of the same.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNHTML.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

namespace {

using Units = std::u16string;

constexpr auto none = Units::npos;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int randomTexts = 20000;
#else
constexpr int randomTexts = 400000;
#endif

const Units breaks = u"\n\r\u0085\f\u2028\u2029", white = u" \t" + breaks;

/// 0 for what is no number throughout.
long valueOfDigits(const Units &units, int base, const Units &digits) {
    const bool whole = !units.empty() && units.find_first_not_of(digits) == none;
    return whole ? std::stol(std::string(units.begin(), units.end()), nullptr, base) : 0;
}

/// From the end to the start, as one replaces by hand.
Units slowUnescape(Units text) {
    std::size_t limit = text.size();
    for (std::size_t at = text.rfind(u'&'); at != none; at = at ? text.rfind(u'&', at - 1) : none) {
        const std::size_t end = text.find(u';', at), length = end + 1 - at;
        const bool candidate = end < limit && length >= 4 && length <= 10;
        limit = at;
        if (!candidate)
            continue;
        const Units reference = text.substr(at, length);
        long value = 0;
        if (reference.starts_with(u"&#x") || reference.starts_with(u"&#X"))
            value = valueOfDigits(reference.substr(3, length - 4), 16, u"0123456789abcdefABCDEF");
        else if (reference[1] == u'#')
            value = valueOfDigits(reference.substr(2, length - 3), 10, u"0123456789");
        for (const auto &entry : qn::gAsciiHTMLEscapeMap)
            if (reference == entry.text)
                value = entry.unit;
        if (value >= 1 && value <= 65534)
            text.replace(at, length, 1, static_cast<char16_t>(value));
    }
    return text;
}

Units slowCollapse(const Units &text) {
    Units made;
    for (std::size_t at = 0; (at = text.find_first_not_of(white, at)) != none;) {
        const std::size_t end = std::min(text.find_first_of(white, at), text.size());
        made += (made.empty() ? u"" : u" ") + text.substr(at, end - at);
        at = end;
    }
    return made;
}

Units slowStrip(Units text) {
    if (text.find(u'<') == none)
        return text;
    std::vector<Units> tags;
    for (std::size_t at = text.find(u'<'); at != none;) {
        const std::size_t end = std::min(text.find(u'>', at), text.size());
        tags.push_back(text.substr(at, end - at) + u">");
        at = text.find(u'<', end);
    }
    std::stable_sort(tags.begin(), tags.end(),
                     [](const Units &a, const Units &b) { return a.size() > b.size(); });
    for (const Units &tag : tags) {
        const bool silent = Units(u"<a></a><span></span><strong></strong><em></em>").find(tag) != none;
        const Units instead = silent ? u"" : u" ";
        for (std::size_t at = 0; (at = text.find(tag, at)) != none; at += instead.size())
            text.replace(at, tag.size(), instead);
    }
    return slowCollapse(text);
}

Units slowPlain(const Units &text) {
    static const std::string inlineNames = " a b i q span em strong cite abbr acronym label ";
    Units made;
    std::size_t at = 0;
    const auto skipped = [&](const Units &opening, const Units &end) {
        if (text.compare(at, opening.size(), opening) != 0)
            return false;
        const std::size_t found = text.find(end, at + opening.size());
        at = found == none ? text.size() : found + end.size();
        return true;
    };
    const auto blank = [&] {
        if (!made.empty() && at < text.size())
            made += u' ';
    };
    while (at < text.size()) {
        if (skipped(u"<!--", u"-->") || skipped(u"<script", u"</script>"))
            continue;
        if (text.compare(at, 2, u"</") == 0) {
            std::string name;
            for (at += 2; at < text.size() && text[at] < 128 && std::isalpha(text[at]); ++at)
                name += static_cast<char>(std::tolower(text[at]));
            if (inlineNames.find(" " + name + " ") == none)
                blank();
            skipped(u"", u">");
        } else if (text[at] == u'<') {
            skipped(u"<", u">");
        } else if (white.find(text[at]) != none) {
            at = std::min(text.find_first_not_of(white, at), text.size());
            blank();
        } else {
            made += text[at++];
        }
    }
    return slowUnescape(made);
}

Ref<NSString> of(Units units) {
    return make<NSString>(std::move(units));
}

/// Whether all operations give what the slow ones give.
void compare(const Units &units) {
    const auto value = of(units);
    ASSERT_NE(qn::stringByLinkifyingURLs(value), nullptr);
    ASSERT_EQ(qn::stringByUnescapingFromHTML(value)->units(), slowUnescape(units)) << text(value);
    ASSERT_EQ(qn::stringByConvertingHTMLToPlainText(value)->units(), slowPlain(units)) << text(value);
    ASSERT_EQ(qn::stringByStrippingTags(value)->units(), slowStrip(units)) << text(value);
    ASSERT_EQ(qn::stringByRemovingNewLinesAndWhitespace(value)->units(), slowCollapse(units)) << text(value);
}

constexpr Ref<NSString> (*operations[])(const Ref<NSString> &) = {
    qn::stringByEscapingForHTML,    qn::stringByEscapingForAsciiHTML,
    qn::stringByUnescapingFromHTML, qn::stringByConvertingHTMLToPlainText,
    qn::stringByStrippingTags,      qn::stringByRemovingNewLinesAndWhitespace,
    qn::stringWithNewLinesAsBRs,    qn::stringByLinkifyingURLs};

std::string linked(const std::string &address) {
    return "<a href=\"" + address + "\" class=\"linkified\">" + address + "</a>";
}

} // namespace

TEST(HTMLEscapeMap, hasEveryNameThatPythonKnows) {
    std::FILE *names = popen("python3 -c 'import html.entities as h\n"
                             "for n, c in h.name2codepoint.items(): print(c, n)'",
                             "r");
    std::map<unsigned, Units> all = {{39, u"&apos;"}};
    unsigned unit = 0;
    for (char name[32]; names && std::fscanf(names, "%u %31s", &unit, name) == 2;)
        all[unit] = string("&" + std::string(name) + ";")->units();
    ASSERT_EQ(pclose(names), 0);
    ASSERT_EQ(all.size(), 253u);
    std::map<unsigned, Units> special; // beyond Latin-1: neither Greek nor symbols
    for (const auto &[code, text] : all)
        if (code < 160 || (code > 255 && code < 400) || code == 710 || code == 732 ||
            (code > 8000 && code <= 8364 &&
             !std::set{8226u, 8230u, 8242u, 8243u, 8254u, 8260u}.contains(code)))
            special[code] = text;
    const auto expectEqual = [](const auto &table, const std::map<unsigned, Units> &expected) {
        EXPECT_TRUE(std::equal(std::begin(table), std::end(table), expected.begin(), expected.end(),
                               [](const qn::HTMLEscape &entry, const auto &pair) {
                                   return entry.unit == pair.first && entry.text == pair.second;
                               }));
    };
    expectEqual(qn::gAsciiHTMLEscapeMap, all);
    expectEqual(qn::gUnicodeHTMLEscapeMap, special);
    for (const int order : {-1, 0, 1})
        EXPECT_EQ(qn::EscapeMapCompare(static_cast<unichar>(60 + order), {u"&lt;", 60}), order);
}

TEST(HTMLEscaping, isUndoneByUnescaping) {
    EXPECT_EQ(text(qn::stringByEscapingForHTML(u"a<b & c\u00E9\u20AC\u4E00"_ns)),
              "a&lt;b &amp; c\u00E9&euro;\u4E00");
    EXPECT_EQ(text(qn::stringByEscapingForAsciiHTML(u"\u007F\u0080\u00E9\u20AC\u4E00\U0001F600"_ns)),
              "\u007F&#128;&eacute;&euro;&#19968;&#55357;&#56832;");
    EXPECT_EQ(text(qn::stringByEscapingHTMLUsingTable(u"<&>\u00E9"_ns, qn::gAsciiHTMLEscapeMap, 47, true)),
              "<&amp;>&#233;")
        << "two whole entries";
    Random random(1);
    for (int i = 0; i < randomTexts / 40; ++i) {
        Units units;
        for (auto count = random.below(12); count > 0; --count)
            units += static_cast<char16_t>(random.oneIn(7)   ? random.below(9000)
                                           : random.oneIn(6) ? 0xD800 + random.below(0x800)
                                                             : random.of(std::u16string_view(u"&<;#a")));
        ASSERT_EQ(qn::stringByUnescapingFromHTML(qn::stringByEscapingForHTML(of(units)))->units(), units);
        const auto ascii = qn::stringByEscapingForAsciiHTML(of(units));
        ASSERT_TRUE(std::ranges::all_of(ascii->units(), [](auto one) { return one < 128; }));
        ASSERT_EQ(qn::stringByUnescapingFromHTML(ascii)->units(), units);
    }
}

TEST(HTMLConversions, agreeWithTheSlowOnes) {
    const Units pieces[] = {
        u"<!--", u"-->",  u"<script", u"</script>",     u"<",      u"</",     u">",     u"a>",
        u"</P>", u"SPAN", u"&",       u"&amp;",         u"&#x",    u"&#",     u"6553",  u"4",
        u"5;",   u";",    u" ",       u"\r\n",          u"\u2028", u"\u0085", u"\f\t",  u"</em>",
        u"<em>", u"é",    u"\u0131",  Units(1, 0xDC00), u"#",      u"lt;",    u"00000", u"thetasym;"};
    Random random(2);
    for (int i = 0; i < randomTexts; ++i) {
        ASSERT_NO_FATAL_FAILURE(compare(random.text<Units>(pieces, 12)));
        ASSERT_NO_FATAL_FAILURE(compare(random.text<Units>(std::u16string_view(u"<>/&;#ab \n"), 10)));
    }
}

TEST(NewLinesAsBRs, countsBreaks) {
    const std::pair<const char *, std::size_t> table[] = {
        {"\r\n", 1},       {"\n\n", 2}, {"\r\n\r\n", 2},   {"\n\r\n", 3},
        {"\r\n\n\r\n", 4}, {"\n\r", 2}, {"\r\n\r\n\r", 3}, {"\f\u0085\u2028\u2029\r", 5}};
    EXPECT_EQ(text(qn::stringWithNewLinesAsBRs(u" \t\v"_ns)), " \t\v");
    for (const auto &[lines, count] : table) {
        EXPECT_EQ(text(qn::stringWithNewLinesAsBRs(string("a" + std::string(lines) + "b"))),
                  "a" + repeated("<br />", count) + "b");
    }
}

TEST(Linkifying, findsAddresses) {
    for (const std::string address : {"http://a.example", "https://a.example:8080/x?q=1&b=%20#top",
                                      "http://a-b_c.d.e/~f/?x=y&amp;z=%%", "http://\u00FC.example/\u6FC0"})
        for (const auto &[before, after] :
             {std::pair{"", ""}, {"see ", ". So"}, {"(", ")"}, {"='", "'"}, {">", "<"}})
            EXPECT_EQ(text(qn::stringByLinkifyingURLs(string(before + address + after))),
                      before + linked(address) + after);
    for (const char *same : {"", "<a href=\"http://a.example/b\">", "xhttp://a.example", "http://localhost/",
                             "HTTP://A.B", "ftp://a.b", "http://", "http://a."})
        EXPECT_EQ(text(qn::stringByLinkifyingURLs(string(same))), same);
    EXPECT_EQ(text(qn::stringByLinkifyingURLs(u"http://a.b,http://c.d http://e.f:"_ns)),
              linked("http://a.b,http://c.d") + " " + linked("http://e.f") + ":");
}

TEST(HTMLConversions, giveNoneForNoneAndKeepTheReceiver) {
    for (const auto operation : operations) {
        EXPECT_EQ(operation(nullptr), nullptr);
        EXPECT_EQ(text(operation(u""_ns)), "");
        const auto receiver = make<NSMutableString>(u" <p>&lt;\u00E9\n http://a.b"_ns->units());
        EXPECT_NE(operation(receiver)->units(), receiver->units());
        EXPECT_EQ(receiver->units(), u" <p>&lt;\u00E9\n http://a.b");
    }
}

TEST(HTMLConversions, surviveHostileTexts) {
    for (const Units piece : {u"&", u"<", u"&#", u"<!--", u"</a", u"<a>", u"<b<a>", u"http://", u"http://a.",
                              u"http://a.b,", u".a", u"\r\n", u"\u0301"}) {
        Units units = u"http://a";
        while (units.size() < 300000)
            units += piece;
        for (const auto operation : operations)
            EXPECT_NE(operation(of(units)), nullptr);
        const auto linkified = qn::stringByLinkifyingURLs(of(units));
        EXPECT_EQ(linkified->units() == units, piece != u"http://a." && piece != u"http://a.b,")
            << testing::PrintToString(piece);
    }
}
