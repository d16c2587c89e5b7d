// Numbers are searched in a folded copy of the text, without escapes and in lower case, which knows where
// each of its bytes comes from; what is found is then replaced in the original.
#include "Tools/zkprinter/Printing/SerialNumbers.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

constexpr std::size_t shortest = 8;        // of numbers of which some characters are shown
constexpr std::size_t shortestKnown = 4;   // of remembered numbers; shorter ones occur in anything
constexpr int mostLayers = 8;              // of escapes
constexpr std::size_t longestWord = 24;    // for "serial number", with what stands between its letters
constexpr std::size_t shortestAddress = 5; // digits
constexpr std::string_view blanks = " \t\r\n";

bool isPlain(char character) {
    return ascii::isLetter(character) || ascii::isDigit(character);
}

bool isWordCharacter(char character) {
    return isPlain(character) || static_cast<unsigned char>(character) >= 0x80;
}

std::optional<unsigned> hexadecimal(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(value) : std::nullopt;
}

/// The meaning of an escape at the front of a text, and its length.
struct Escape {
    std::string meaning;
    std::size_t length;
};

std::optional<Escape> unicodeEscape(std::string_view text) {
    std::u16string units;
    while (text.size() >= 6 && text.starts_with("\\u") && units.size() < 2) {
        const auto unit = hexadecimal(text.substr(2, 4));
        if (!unit)
            break;
        units += static_cast<char16_t>(*unit);
        text.remove_prefix(6);
        if ((*unit & 0xFC00) != 0xD800)
            break; // not the first half of a pair
    }
    Escape escape{{}, units.size() * 6};
    unicode::appendUTF8(escape.meaning, units);
    return units.empty() ? std::nullopt : std::optional(escape);
}

/// The percent-encoded byte, or the escape of JSON or the log, at the front.
std::optional<Escape> escapeAt(std::string_view text) {
    if (text.size() >= 3 && text[0] == '%')
        if (const auto byte = hexadecimal(text.substr(1, 2)))
            return Escape{{static_cast<char>(*byte)}, 3};
    if (text.size() < 2 || text[0] != '\\')
        return std::nullopt;
    if (text[1] == 'u')
        return unicodeEscape(text);
    constexpr std::string_view letters = "bfnrt", meanings = "\b\f\n\r\t";
    const std::size_t letter = letters.find(text[1]);
    const bool itself = text[1] == '"' || text[1] == '\\' || text[1] == '/';
    if (letter == std::string_view::npos && !itself)
        return std::nullopt;
    return Escape{{itself ? text[1] : meanings[letter]}, 2};
}

/// A text with escapes resolved and in lower case, which knows where in the original its bytes come from.
class Folded {
public:
    explicit Folded(std::string_view original) : original_(original), text_(original) {
        for (std::size_t at = 0; at <= original.size(); ++at)
            from_.push_back(at);
        for (int layer = 0; isDeep_ && layer <= mostLayers; ++layer) {
            // Escapes may be written in capitals, and may stand for capitals.
            std::ranges::transform(text_, text_.begin(), ascii::lowerCase<char>);
            isDeep_ = unescape();
        }
    }

    /// Whether there are still more layers of escapes.
    bool isDeep() const { return isDeep_; }
    const std::string &text() const { return text_; }
    /// The offset in the original of the byte at `at`, and the bytes there that became it; npos stands for
    /// the end.
    std::size_t origin(std::size_t at) const { return from_[std::min(at, text_.size())]; }
    std::string_view originOf(std::size_t at) const {
        return original_.substr(origin(at), origin(at + 1) - origin(at));
    }

private:
    /// Resolves one layer of escapes; false when there is none.
    bool unescape() {
        std::string text;
        std::vector<std::size_t> from;
        for (std::size_t at = 0; at < text_.size();) {
            const auto escape = escapeAt(std::string_view(text_).substr(at));
            const std::string meaning = escape ? escape->meaning : std::string(1, text_[at]);
            text += meaning;
            from.insert(from.end(), meaning.size(), from_[at]);
            at += escape ? escape->length : 1;
        }
        from.push_back(from_.back());
        const bool changed = text.size() != text_.size();
        text_ = std::move(text);
        from_ = std::move(from);
        return changed;
    }

    std::string_view original_;
    bool isDeep_ = true;
    std::string text_;
    std::vector<std::size_t> from_; // the offset in the original of each byte and of the end
};

/// The bytes of the original from `begin` to `end` are to be replaced by `shown`.
struct Cover {
    std::size_t begin, end;
    std::string shown;
};

bool isQuote(char character) {
    return character == '"' || character == '\'';
}

bool isWord(std::string_view text, std::size_t at, std::size_t length) {
    return (at == 0 || !isWordCharacter(text[at - 1])) &&
           (at + length == text.size() || !isWordCharacter(text[at + length]));
}

enum class Nearness { exactly, withMore };

/// Whether the text, in lower case, ends with a word for a serial number; `withMore`: other letters may
/// follow the word.
bool endsWithWordForSerial(std::string_view text, Nearness nearness) {
    constexpr std::string_view endings[] = {"",   "r",   "o",     "no",     "nr",
                                            "um", "num", "umber", "number", "nummer"};
    std::string letters, others;
    std::vector<bool> begins; // whether a word begins with the letter
    for (std::size_t at = text.size() - std::min(text.size(), longestWord); at < text.size(); ++at) {
        if (std::string_view("{};,&?\n").find(text[at]) != std::string_view::npos) {
            letters.clear(); // what is before belongs to another value
            others.clear();
            begins.clear();
        } else if (isPlain(text[at])) {
            letters += text[at];
            begins.push_back(at == 0 || !isWordCharacter(text[at - 1]));
        } else if (isWordCharacter(text[at])) {
            others += text[at];
        }
    }
    // Without its accent, "de série" is "desrie".
    for (const std::string_view part : {"serial", "serien", "deserie", "desrie", "diserie"})
        if (const std::size_t found = letters.rfind(part); found != std::string::npos)
            if (nearness == Nearness::withMore ||
                std::ranges::count(endings, std::string_view(letters).substr(found + part.size())) > 0)
                return true;
    for (const std::string_view word : {"sn", "sern", "ser"})
        for (const std::string_view more : endings) {
            const std::string whole = std::string(word).append(more);
            if (whole != "ser" && letters.ends_with(whole) && begins[letters.size() - whole.size()])
                return true;
        }
    for (const std::string_view word : {"序列号", "序列號"})
        if (nearness == Nearness::withMore ? others.find(word) != std::string::npos : text.ends_with(word))
            return true;
    return false;
}

/// Where the quotation ends that begins at `at`: at the same quote, in the same escaping.
std::size_t endOfQuotation(const Folded &folded, std::size_t at) {
    const std::string &text = folded.text();
    const std::string_view quote = folded.originOf(at++);
    while (at < text.size() && !(isQuote(text[at]) && folded.originOf(at) == quote))
        ++at;
    return at;
}

/// Where the JSON array or object ends whose bracket is at `at`.
std::size_t endOfBrackets(const Folded &folded, std::size_t at) {
    const std::string &text = folded.text();
    for (int depth = 0; at < text.size(); ++at)
        if (isQuote(text[at]))
            at = std::min(endOfQuotation(folded, at), text.size() - 1);
        else if (text[at] == '[' || text[at] == '{')
            ++depth;
        else if ((text[at] == ']' || text[at] == '}') && --depth == 0)
            return at;
    return at;
}

/// The end of the value that begins at `at`, behind the separator `separator`.
std::size_t endOfValue(const Folded &folded, std::size_t &at, char separator) {
    const std::string &text = folded.text();
    const auto firstNotOf = [&](std::string_view some) {
        return std::min(text.find_first_not_of(some, at), text.size());
    };
    const std::size_t next = firstNotOf(blanks);
    const bool isEnclosed =
        next < text.size() && (isQuote(text[next]) || text[next] == '[' || text[next] == '{');
    at = isEnclosed ? next : firstNotOf(" \t");
    if (isEnclosed)
        return isQuote(text[at++]) ? endOfQuotation(folded, at - 1) : endOfBrackets(folded, at - 1);
    const std::string_view ends = separator == '='   ? "&#\" \t\r\n"
                                  : separator == '>' ? "<\n"
                                                     : "\",;}] \t\r\n";
    std::size_t end = at;
    while (end < text.size() &&
           !(ends.find(text[end]) != std::string_view::npos && folded.originOf(end).size() == 1))
        ++end; // escaped characters belong to the value
    return end;
}

/// Whether the text before a separator announces a serial number behind it.
bool announcesSerial(std::string_view before) {
    constexpr std::string_view between = " \t\r\n\"'=";
    const auto upToWord = [&](std::string_view marks) {
        return before.substr(0, before.find_last_not_of(marks) + 1);
    };
    before = upToWord(between);
    if (before.ends_with("value")) { // as in {"name": "serial", "value": …}: look at the name
        before.remove_suffix(std::string_view("value").size());
        before = upToWord(" \t\r\n\"'=,");
    }
    return endsWithWordForSerial(before, Nearness::withMore);
}

/// The same where the separator is a blank, the first of several.
bool announcesSerialBehindBlank(std::string_view before) {
    if (before.empty() || blanks.find(before.back()) != std::string_view::npos)
        return false;
    return endsWithWordForSerial(before.substr(0, before.find_last_not_of("\"'.") + 1), Nearness::exactly);
}

/// Whether a word of plain text may be a serial number: it has a digit.
bool looksLikeSerial(std::string_view word) {
    return !word.empty() && std::string_view(":=>").find(word.front()) == std::string_view::npos &&
           std::ranges::any_of(word, ascii::isDigit<char>);
}

void coverNamed(const Folded &folded, std::string_view original, std::vector<Cover> &covers) {
    const std::string_view text = folded.text();
    for (std::size_t separator = 0;
         (separator = text.find_first_of(":=> \t\r\n", separator)) != std::string::npos;) {
        const std::string_view before = text.substr(0, separator);
        const char kind = text[separator++];
        const bool isBlank = blanks.find(kind) != std::string_view::npos;
        if (!(isBlank ? announcesSerialBehindBlank(before) : announcesSerial(before)))
            continue;
        std::size_t at =
            isBlank ? std::min(text.find_first_not_of(blanks, separator), text.size()) : separator;
        const std::size_t end = endOfValue(folded, at, kind);
        if (isBlank && !looksLikeSerial(text.substr(at, end - at)))
            continue;
        const std::size_t first = folded.origin(at), last = folded.origin(end);
        if (first < last)
            covers.push_back({first, last, SerialNumbers::shortened(original.substr(first, last - first))});
    }
}

} // namespace

std::string SerialNumbers::shortened(std::string_view serial) {
    if (serial.empty())
        return {};
    const bool showsEnds = serial.size() >= shortest && std::ranges::all_of(serial, isPlain);
    return showsEnds ? std::string(serial.substr(0, 3)) + "…" + std::string(serial.substr(serial.size() - 2))
                     : "…";
}

void SerialNumbers::add(const std::string &serial) {
    const std::string folded = Folded(serial).text();
    if (folded.size() < shortestKnown || std::ranges::find(known_, serial, &Known::serial) != known_.end())
        return;
    known_.push_back({serial, folded});
    std::ranges::stable_sort(known_, std::ranges::greater(),
                             [](const Known &known) { return known.folded.size(); });
}

std::string SerialNumbers::hide(std::string_view text) const {
    const Folded folded(text);
    if (folded.isDeep())
        return "…";
    std::vector<Cover> covers;
    for (const auto &[serial, form] : known_)
        for (std::size_t at = 0; (at = folded.text().find(form, at)) != std::string::npos;) {
            const bool counts = form.size() >= shortest || isWord(folded.text(), at, form.size());
            if (counts)
                covers.push_back({folded.origin(at), folded.origin(at + form.size()), shortened(serial)});
            at += counts ? form.size() : 1;
        }
    coverNamed(folded, text, covers);
    // Of covers that begin at the same place the longest counts; covers that overlap it are merged into it.
    std::ranges::stable_sort(covers, [](const Cover &a, const Cover &b) {
        return a.begin != b.begin ? a.begin < b.begin : a.end > b.end;
    });
    std::string shown;
    std::size_t done = 0;
    for (const Cover &cover : covers) {
        if (cover.begin >= done)
            shown.append(text, done, cover.begin - done).append(cover.shown);
        done = std::max(done, cover.end);
    }
    return shown.append(text, done);
}

std::string withoutAddresses(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t digits =
            text.starts_with("0x")
                ? std::min(text.find_first_not_of("0123456789abcdefABCDEF", 2), text.size()) - 2
                : 0;
        shown += digits >= shortestAddress ? "0x…" : text.substr(0, 1);
        text.remove_prefix(digits >= shortestAddress ? digits + 2 : 1);
    }
    return shown;
}
