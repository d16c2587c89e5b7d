// HTML to plain text, and line breaks and web addresses to HTML.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNHTML.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/HTMLReferences.h"
#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Text/NSRegularExpression.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <string_view>

namespace {

bool isLineBreak(char16_t unit) {
    return unit == u'\n' || unit == u'\r' || unit == u'\f' || unit == 0x85 || unit == 0x2028 ||
           unit == 0x2029;
}

bool isWhiteSpace(char16_t unit) {
    return unit == u' ' || unit == u'\t' || isLineBreak(unit);
}

/// Takes pieces off the front of a text.
class Cursor {
public:
    explicit Cursor(std::u16string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }

    /// All units up to the first of the kind.
    template <class Kind>
    std::u16string_view upTo(Kind isOfKind) {
        return take(
            static_cast<std::size_t>(std::find_if(rest_.begin(), rest_.end(), isOfKind) - rest_.begin()));
    }
    /// All units up to the first that is not of the kind.
    template <class Kind>
    std::u16string_view run(Kind isOfKind) {
        return upTo([=](char16_t unit) { return !isOfKind(unit); });
    }
    bool skip(std::u16string_view text) {
        const bool there = rest_.starts_with(text);
        if (there)
            take(text.size());
        return there;
    }
    /// To the end when the text does not follow.
    void skipPast(std::u16string_view text) {
        const std::size_t found = rest_.find(text);
        take(found == rest_.npos ? rest_.size() : found + text.size());
    }
    /// The piece up to and including the unit; empty, and nothing is taken, when the unit does not follow.
    std::u16string_view through(char16_t unit) { return take(rest_.find(unit) + 1); }

private:
    std::u16string_view take(std::size_t count) {
        const auto taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }

    std::u16string_view rest_;
};

/// A blank between two pieces, never at either end.
void appendBlank(std::u16string &out, const Cursor &cursor) {
    if (!out.empty() && !cursor.atEnd())
        out += u' ';
}

template <class Texts>
bool contains(const Texts &texts, std::u16string_view text) {
    return std::find(std::begin(texts), std::end(texts), text) != std::end(texts);
}

bool isInlineName(std::u16string name) {
    static constexpr std::u16string_view names[] = {u"a",      u"b",    u"i",    u"q",       u"span", u"em",
                                                    u"strong", u"cite", u"abbr", u"acronym", u"label"};
    for (char16_t &unit : name)
        unit = static_cast<char16_t>(unit | 0x20); // the name has only ASCII letters
    return contains(names, name);
}

/// After the "<".
void skipTag(Cursor &cursor, std::u16string &out) {
    if (cursor.skip(u"!--"))
        return cursor.skipPast(u"-->");
    if (cursor.skip(u"script"))
        return cursor.skipPast(u"</script>");
    if (cursor.skip(u"/") && !isInlineName(std::u16string(cursor.run(ascii::isLetter<char16_t>))))
        appendBlank(out, cursor);
    cursor.skipPast(u">");
}

bool leavesNoBlank(std::u16string_view tag) {
    static constexpr std::u16string_view tags[] = {u"<a>",      u"</a>",      u"<span>", u"</span>",
                                                   u"<strong>", u"</strong>", u"<em>",   u"</em>"};
    return contains(tags, tag);
}

/// In place: runs of white space become one blank, those at both ends vanish.
void collapse(std::u16string &text) {
    auto out = text.begin(); // never ahead of what was read
    bool blank = false;
    for (const char16_t unit : text) {
        if (isWhiteSpace(unit)) {
            blank = out != text.begin();
            continue;
        }
        if (blank)
            *out++ = u' ';
        blank = false;
        *out++ = unit;
    }
    text.erase(out, text.end());
}

} // namespace

Ref<NSString> qn::stringByConvertingHTMLToPlainText(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    std::u16string plain;
    plain.reserve(text->length());
    for (Cursor cursor(text->units()); !cursor.atEnd();) {
        plain += cursor.upTo([](char16_t unit) { return unit == u'<' || isWhiteSpace(unit); });
        if (cursor.skip(u"<"))
            skipTag(cursor, plain);
        else if (!cursor.run(isWhiteSpace).empty())
            appendBlank(plain, cursor);
    }
    html::resolveReferences(plain);
    return make<NSString>(std::move(plain));
}

// One pass from left to right. Replacing each distinct tag throughout the text, longest first, would give the
// same, but takes quadratic time.
Ref<NSString> qn::stringByStrippingTags(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    if (text->units().find(u'<') == std::u16string::npos)
        return make<NSString>(text->units());
    std::u16string stripped;
    stripped.reserve(text->length());
    for (Cursor cursor(text->units()); !cursor.atEnd();) {
        stripped += cursor.upTo([](char16_t unit) { return unit == u'<'; });
        const auto tag = cursor.through(u'>');
        if (tag.empty())
            stripped += cursor.upTo([](char16_t) { return false; });
        else if (!leavesNoBlank(tag))
            stripped += u' ';
    }
    collapse(stripped);
    return make<NSString>(std::move(stripped));
}

Ref<NSString> qn::stringByRemovingNewLinesAndWhitespace(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    std::u16string units = text->units();
    collapse(units);
    return make<NSString>(std::move(units));
}

Ref<NSString> qn::stringWithNewLinesAsBRs(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    std::u16string made;
    for (Cursor cursor(text->units()); !cursor.atEnd();) {
        made += cursor.upTo(isLineBreak);
        const std::size_t breaks = cursor.skip(u"\r\n") ? 1 : cursor.run(isLineBreak).size();
        for (std::size_t i = 0; i < breaks; ++i)
            made += u"<br />";
    }
    return make<NSString>(std::move(made));
}

Ref<NSString> qn::stringByLinkifyingURLs(const Ref<NSString> &text) {
    static const auto &address = *new Ref<
        NSRegularExpression>(NSRegularExpression::regularExpressionWithPattern(
        uR"((?<!=")\b((http|https):\/\/[\w\-_]+(\.[\w\-_]+)+([\w\-\.,@?^=%%&amp;:/~\+#]*[\w\-\@?^=%%&amp;/~\+#])?))"_ns));
    const auto linkified =
        text
            ? address->stringByReplacingMatchesInString(text, u"<a href=\"$1\" class=\"linkified\">$1</a>"_ns)
            : nullptr;
    return linkified ? linkified : text;
}
