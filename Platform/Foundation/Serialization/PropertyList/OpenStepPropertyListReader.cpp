#include "Platform/Foundation/Serialization/PropertyList/OpenStepPropertyListReader.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>
#include <array>

namespace {

/// The upper half of the format's eight-bit character set, in which octal escapes are given.
constexpr std::array<char16_t, 128> upperHalf = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC,
    0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, 0x00DA, 0x00DB,
    0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, 0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192,
    0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x00AE, 0x2013, 0x2020, 0x2021,
    0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, 0x00B9,
    0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD,
    0x02DB, 0x02C7, 0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5,
    0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1,
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB,
    0x0131, 0x00FC, 0x00FD, 0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD};

bool isBlank(char16_t unit) {
    return unit == ' ' || (unit >= '\t' && unit <= '\r') || unit == 0x2028 || unit == 0x2029;
}

bool isPlain(char16_t unit) {
    return ascii::isLetter(unit) || ascii::isDigit(unit) ||
           std::u16string_view(u"_$/:.-").find(unit) != std::u16string_view::npos;
}

class Parser {
public:
    Parser(std::u16string_view text, const PropertyListObjects &objects, std::string &refusal)
        : text_(text), objects_(objects), refusal_(refusal) {}

    id whole() {
        if (atEnd())
            return entries(false, 0);
        id single = value(0);
        if (!single || atEnd())
            return single;
        if (!as<NSString>(single))
            return refuse("the end");
        at_ = 0;
        return entries(false, 0);
    }

private:
    // `depth` is the number of containers around the value.
    id value(unsigned depth) {
        skip();
        if (depth == NSPropertyListSerialization::deepestNesting && (peek() == u'{' || peek() == u'('))
            return refuse("at most 512 levels of arrays and dictionaries");
        if (take(u'{'))
            return entries(true, depth);
        if (take(u'('))
            return elements(depth);
        if (take(u'<'))
            return data();
        return objects_.leaf(text("a value"));
    }

    /// The entries of a dictionary, up to its brace or, without braces, to the end of the file.
    id entries(bool braced, unsigned depth) {
        ObjectTable table;
        while (braced ? !takeNext(u'}') : !atEnd()) {
            id key = text(braced ? "a key or }" : "a key or the end");
            if (!key)
                return nullptr;
            id object = takeNext(u'=') ? value(depth + 1) : objects_.leaf(key);
            if (!object)
                return nullptr;
            if (!takeNext(u';'))
                return refuse(";");
            table.set(std::move(key), std::move(object));
        }
        return objects_.dictionary(std::move(table));
    }

    id elements(unsigned depth) {
        std::vector<id> elements;
        while (!takeNext(u')')) {
            elements.push_back(value(depth + 1));
            if (!elements.back())
                return nullptr;
            if (takeNext(u',')) // also after the last element
                continue;
            if (!takeNext(u')'))
                return refuse(", or )");
            break;
        }
        return objects_.array(std::move(elements));
    }

    id data() {
        std::vector<std::uint8_t> bytes;
        bool odd = false;
        for (; at_ < text_.size() && text_[at_] != u'>'; ++at_) {
            if (isBlank(text_[at_]))
                continue;
            const auto digit = ascii::hexDigitValue(text_[at_]);
            if (!digit)
                return refuse("a hexadecimal digit or >");
            if (odd)
                bytes.back() = static_cast<std::uint8_t>(bytes.back() * 16u + *digit);
            else
                bytes.push_back(static_cast<std::uint8_t>(*digit));
            odd = !odd;
        }
        if (odd || !take(u'>'))
            return refuse(odd ? "a second hexadecimal digit" : ">");
        return objects_.leaf(make<NSData>(std::move(bytes)));
    }

    /// A quoted text or one of plain characters; on failure none, with a refusal that says what was
    /// `expected`.
    id text(const char *expected) {
        skip();
        if (peek() == u'"' || peek() == u'\'')
            return quoted(text_[at_++]);
        const std::size_t start = at_;
        while (at_ < text_.size() && isPlain(text_[at_]))
            ++at_;
        if (at_ == start)
            return refuse(expected);
        return make<NSString>(std::u16string(text_.substr(start, at_ - start)));
    }

    id quoted(char16_t quote) {
        std::u16string units;
        while (at_ < text_.size() && text_[at_] != quote) {
            const char16_t unit = text_[at_++];
            if (unit != u'\\')
                units += unit;
            else if (!escape(units))
                break;
        }
        if (!take(quote))
            return refuse(quote == u'"' ? "\"" : "'");
        return make<NSString>(std::move(units));
    }

    /// What follows a backslash.
    bool escape(std::u16string &units) {
        static constexpr std::u16string_view letters = u"abfnrtv", meanings = u"\a\b\f\n\r\t\v";
        const char16_t unit = peek();
        if (unit >= '0' && unit <= '7') {
            const unsigned code = number(3, 8) & 0xFF;
            units += code < 0x80 ? static_cast<char16_t>(code) : upperHalf[code - 0x80];
            return true;
        }
        if (at_ == text_.size())
            return false;
        ++at_;
        if (unit == u'U' && ascii::hexDigitValue(peek()))
            units += static_cast<char16_t>(number(4, 16));
        else if (const auto found = letters.find(unit); found != std::u16string_view::npos)
            units += meanings[found];
        else
            units += unit;
        return true;
    }

    unsigned number(int mostDigits, unsigned base) {
        unsigned code = 0;
        for (int digits = 0; digits < mostDigits; ++digits, ++at_) {
            const auto digit = ascii::hexDigitValue(peek());
            if (!digit || *digit >= base)
                break;
            code = code * base + *digit;
        }
        return code;
    }

    /// Past blanks and comments.
    void skip() {
        do
            while (at_ < text_.size() && isBlank(text_[at_]))
                ++at_;
        while (skipComment());
    }

    /// False when no comment begins here. One without an end is not skipped, so it is refused.
    bool skipComment() {
        const std::u16string_view rest = text_.substr(at_);
        if (rest.starts_with(u"//")) {
            at_ += std::min(rest.size(), rest.find_first_of(u"\n\r"));
            return true;
        }
        const auto end = rest.starts_with(u"/*") ? rest.find(u"*/", 2) : rest.npos;
        if (end == rest.npos)
            return false;
        at_ += end + 2;
        return true;
    }

    bool atEnd() {
        skip();
        return at_ == text_.size();
    }

    /// The next unit, 0 at the end.
    char16_t peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }

    bool take(char16_t unit) {
        if (at_ == text_.size() || text_[at_] != unit)
            return false;
        ++at_;
        return true;
    }

    bool takeNext(char16_t unit) {
        skip();
        return take(unit);
    }

    std::string found() const {
        std::string character;
        unicode::appendUTF8(character,
                            text_.substr(at_, at_ + 1 < text_.size() && text_[at_] >= 0xD800 ? 2 : 1));
        return character.empty() ? "the end" : character;
    }

    /// Refuses the text at the current position.
    id refuse(const char *expected) {
        const auto read = text_.substr(0, at_);
        refusal_ = "Line " + std::to_string(1 + std::count(read.begin(), read.end(), u'\n')) + ": expected " +
                   expected + ", not " + found() + ".";
        return nullptr;
    }

    const std::u16string_view text_;
    const PropertyListObjects &objects_;
    std::string &refusal_;
    std::size_t at_ = 0;
};

} // namespace

id readOpenStepPropertyList(std::string_view text, const PropertyListObjects &objects, std::string &refusal) {
    const auto units = unicode::utf16FromUTF8(text);
    if (units)
        return Parser(*units, objects, refusal).whole();
    refusal = "At the top: expected UTF-8.";
    return nullptr;
}
