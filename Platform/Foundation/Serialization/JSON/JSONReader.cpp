#include "Platform/Foundation/Serialization/JSON/JSONReader.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Foundation/Serialization/JSON/JSONEscapes.h"

#include <boost/json/basic_parser_impl.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

namespace {

namespace json = boost::json;

std::string_view viewOf(json::string_view text) {
    return {text.data(), text.size()};
}

/// Passes what the parser finds on to the handler, each string and each number in one piece.
class Events {
public:
    // Sizes are bounded by the text's.
    static constexpr std::size_t max_object_size = SIZE_MAX, max_array_size = SIZE_MAX,
                                 max_key_size = SIZE_MAX, max_string_size = SIZE_MAX;

    /// The first `toldBefore` events are not passed on: the handler has had them already.
    Events(JSONHandler &handler, std::string_view text, std::size_t toldBefore)
        : handler_(handler), text_(text), toldBefore_(toldBefore) {}

    /// Whether the part of the text parsed so far ends within a number.
    bool isWithinNumber() const { return !number_.empty(); }
    const char *refusal() const { return refusal_; }
    /// Whether the handler has ended the reading, with or without a reason.
    bool isRefused() const { return isRefused_; }
    std::size_t told() const { return told_; }

    /// Unescapes a string behind its opening quote, and appends it to the parts of the string that the parser
    /// is reading. Returns the number of bytes up to the closing quote; nothing when the parser is to report
    /// the error.
    std::optional<std::size_t> unescape(std::string_view behindQuote) {
        const auto unescaped = unescapeJSON(behindQuote, room());
        if (!unescaped)
            return std::nullopt;
        end_ += unescaped->made;
        return unescaped->used;
    }

    // Called by the parser.
    bool on_document_begin(json::error_code &) { return true; }
    bool on_document_end(json::error_code &) { return true; }
    bool on_object_begin(json::error_code &error) {
        return tell(error, [&] { return handler_.StartObject(); });
    }
    bool on_object_end(std::size_t count, json::error_code &error) {
        return tell(error, [&] { return handler_.EndObject(count); });
    }
    bool on_array_begin(json::error_code &error) {
        return tell(error, [&] { return handler_.StartArray(); });
    }
    bool on_array_end(std::size_t count, json::error_code &error) {
        return tell(error, [&] { return handler_.EndArray(count); });
    }
    bool on_key_part(json::string_view part, std::size_t, json::error_code &) { return keep(part); }
    bool on_key(json::string_view last, std::size_t, json::error_code &error) {
        const std::string_view key = whole(last);
        return tell(error, [&] { return handler_.Key(key); });
    }
    bool on_string_part(json::string_view part, std::size_t, json::error_code &) { return keep(part); }
    bool on_string(json::string_view last, std::size_t, json::error_code &error) {
        const std::string_view text = whole(last);
        return tell(error, [&] { return handler_.String(text); });
    }
    bool on_number_part(json::string_view part, json::error_code &) {
        number_ += viewOf(part);
        return true;
    }
    bool on_int64(std::int64_t number, json::string_view, json::error_code &error) {
        return tell(error, [&] { return handler_.Int64(number); });
    }
    bool on_uint64(std::uint64_t number, json::string_view, json::error_code &error) {
        return tell(error, [&] { return handler_.Uint64(number); });
    }
    /// Converts the digits again, since the parser's own double is not always the nearest.
    bool on_double(double, json::string_view last, json::error_code &error) {
        number_ += viewOf(last);
        const double number = doubleOfDecimalText(number_);
        number_.clear();
        return std::isfinite(number) ? tell(error, [&] { return handler_.Double(number); })
                                     : refuse("Number too large.", error);
    }
    bool on_bool(bool flag, json::error_code &error) {
        return tell(error, [&] { return handler_.Bool(flag); });
    }
    bool on_null(json::error_code &error) {
        return tell(error, [&] { return handler_.Null(); });
    }
    bool on_comment_part(json::string_view, json::error_code &) { return false; }
    bool on_comment(json::string_view, json::error_code &) { return false; }

private:
    template <class Telling>
    bool tell(json::error_code &error, Telling telling) {
        return told_++ < toldBefore_ || telling() || refuse(handler_.refusal(), error);
    }
    bool refuse(const char *why, json::error_code &error) {
        refusal_ = why;
        isRefused_ = true;
        error = make_error_code(boost::system::errc::operation_canceled);
        return false;
    }

    /// Appends a part of a string to the earlier ones.
    bool keep(json::string_view part) {
        std::copy(part.begin(), part.end(), room());
        end_ += part.size();
        return true;
    }
    /// Where the next part goes.
    char *room() {
        if (!unescaped_) // unescaped strings are no longer than the text
            unescaped_ = std::make_unique_for_overwrite<char[]>(text_.size());
        return unescaped_.get() + end_;
    }
    /// A whole string: in the text itself if it is in one piece there, else put together.
    std::string_view whole(json::string_view last) {
        const std::less<const char *> before;
        const bool stands =
            !before(last.data(), text_.data()) && before(last.data(), text_.data() + text_.size());
        if (begin_ == end_ && stands)
            return viewOf(last);
        keep(last);
        const std::size_t begin = std::exchange(begin_, end_);
        return {unescaped_.get() + begin, end_ - begin};
    }

    JSONHandler &handler_;
    const std::string_view text_;
    const std::size_t toldBefore_;
    std::size_t told_ = 0;
    const char *refusal_ = nullptr;
    bool isRefused_ = false;
    std::string number_;                // the parts of the number that the parser is reading
    std::unique_ptr<char[]> unescaped_; // strings with escapes, one after the other
    std::size_t begin_ = 0, end_ = 0;   // of the last of them
};

/// The most digits with which the parser's exponent, of 32 bits, cannot overflow.
constexpr std::size_t longestExponent = 9;

/// The next digits that may be an exponent too long for the parser; empty, at the text's end, without any.
/// Looks at every tenth byte only, so a run of ten digits is not missed.
std::string_view nextLongExponent(std::string_view text) {
    for (std::size_t at = longestExponent; at < text.size(); at += longestExponent + 1) {
        if (!ascii::isDigit(text[at]))
            continue;
        std::size_t begin = at, end = at;
        while (begin > 0 && ascii::isDigit(text[begin - 1]))
            --begin;
        while (end < text.size() && ascii::isDigit(text[end]))
            ++end;
        const std::string_view before = text.substr(0, begin);
        const std::size_t mark = before.find_last_not_of("+-");
        if (end - begin > longestExponent && mark != before.npos && (before[mark] | 0x20) == 'e')
            return text.substr(begin, end - begin);
        at = end;
    }
    return text.substr(text.size());
}

/// The exponent in few digits; one out of range becomes another one out of range.
std::string_view shortened(std::string_view exponent) {
    exponent.remove_prefix(std::min(exponent.find_first_not_of('0'), exponent.size() - 1));
    return exponent.size() > longestExponent ? "999999999" : exponent;
}

/// The last quote before the next escape: the one that opens the string, or an escaped one in it. Nothing
/// without an escape.
std::optional<std::size_t> quoteBeforeEscape(std::string_view text, std::size_t searched) {
    while (searched < text.size()) {
        const std::size_t escape = text.find('\\', searched);
        if (escape == text.npos)
            return std::nullopt;
        if (const void *const quote = memrchr(text.data() + searched, '"', escape - searched))
            return static_cast<std::size_t>(static_cast<const char *>(quote) - text.data());
        searched = escape + 1;
    }
    return std::nullopt;
}

// In bytes.
constexpr std::size_t shortestText = 32;  ///< the shortest string for which the parser is interrupted
constexpr std::size_t mostSkipped = 4096; ///< not searched after short strings

/// The length of the string that goes on here if it is a short one; else nothing.
std::optional<std::size_t> lengthOfShortText(std::string_view text) {
    for (std::size_t at = 0; at < std::min(text.size(), shortestText); at += text[at] == '\\' ? 2u : 1u)
        if (text[at] == '"')
            return at;
    return std::nullopt;
}

class Reader {
public:
    Reader(std::string_view text, JSONHandler &handler, std::size_t toldBefore = 0)
        : text_(text), parser_(options(), handler, text, toldBefore) {}

    /// The fast way: reads valid JSON without too long exponents. It fails for other texts, but not always at
    /// the right place; `readWithCare` then finds that.
    ///
    /// The parser reads strings with escapes byte by byte. Long ones are therefore unescaped here, and the
    /// parser is given only their quotes. After short ones more and more of the text is not searched for
    /// escapes.
    std::optional<JSONFailure> read() {
        std::string_view rest = text_;
        std::size_t searched = 0, skipped = 0; // of the rest
        while (const auto quote = quoteBeforeEscape(rest, searched)) {
            const std::string_view behind = rest.substr(*quote + 1);
            if (const auto length = lengthOfShortText(behind)) {
                skipped = std::min(2 * skipped + shortestText, mostSkipped);
                searched = *quote + 1 + *length + skipped;
                continue;
            }
            const auto piece = rest.substr(0, *quote + 1);
            if (auto failure = parse(piece, piece, true))
                return failure;
            const auto length = parser_.handler().unescape(behind);
            rest = behind.substr(length.value_or(0));
            if (!length)
                break; // invalid: the parser is to refuse it
            searched = 1;
            skipped = 0;
        }
        return parse(rest, rest, false);
    }
    /// Whether the handler has ended the reading.
    bool isRefused() const { return parser_.handler().isRefused(); }
    /// The number of events that the handler has had.
    std::size_t told() const { return parser_.handler().told(); }

    /// The careful way: reads any text as the parser does, shortening exponents, and finds where it is
    /// invalid.
    std::optional<JSONFailure> readWithCare() {
        std::string_view rest = text_;
        while (true) {
            const std::string_view exponent = nextLongExponent(rest);
            const auto before = rest.substr(0, static_cast<std::size_t>(exponent.data() - rest.data()));
            if (auto failure = parse(before, before, !exponent.empty()))
                return failure;
            if (exponent.empty())
                return std::nullopt;
            const bool isOne = parser_.handler().isWithinNumber();
            if (auto failure = parse(isOne ? shortened(exponent) : exponent, exponent, true))
                return failure;
            rest.remove_prefix(before.size() + exponent.size());
        }
    }

private:
    static json::parse_options options() {
        json::parse_options made;
        made.max_depth = SIZE_MAX;
        made.allow_invalid_utf8 = true;
        return made;
    }

    /// Parses a piece, which replaces `original` in the text.
    std::optional<JSONFailure> parse(std::string_view piece, std::string_view original, bool more) {
        json::error_code error;
        const std::size_t used = parser_.write_some(more, piece.data(), piece.size(), error);
        if (!error && used == piece.size())
            return std::nullopt;
        const auto offset = static_cast<std::size_t>(original.data() - text_.data()) + used;
        return JSONFailure{reason(error), std::min(offset, text_.size())};
    }

    std::string reason(const json::error_code &error) {
        if (const char *refusal = parser_.handler().refusal())
            return refusal;
        std::string message = (error ? error : make_error_code(json::error::extra_data)).message() + ".";
        message.front() = static_cast<char>(message.front() & ~0x20);
        return message;
    }

    const std::string_view text_;
    json::basic_parser<Events> parser_;
};

} // namespace

std::optional<JSONFailure> readJSON(std::string_view text, JSONHandler &handler) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const std::size_t start = text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    Reader reader(text.substr(start), handler); // keeps the strings that the handler has had
    auto failure = reader.read();
    if (failure && !reader.isRefused())
        failure = Reader(text.substr(start), handler, reader.told()).readWithCare();
    if (failure)
        failure->offset += start;
    return failure;
}
