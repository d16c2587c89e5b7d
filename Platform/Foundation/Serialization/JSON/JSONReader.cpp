#include "Platform/Foundation/Serialization/JSON/JSONReader.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Numbers/DecimalText.h"

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

/// Tells the handler what the parser finds, each text and each number in one piece.
class Events {
public:
    // Sizes are bounded by the text's.
    static constexpr std::size_t max_object_size = SIZE_MAX, max_array_size = SIZE_MAX,
                                 max_key_size = SIZE_MAX, max_string_size = SIZE_MAX;

    Events(JSONHandler &handler, std::string_view text) : handler_(handler), text_(text) {}

    /// Whether what was parsed up to now ends within a number.
    bool isWithinNumber() const { return !number_.empty(); }
    const char *refusal() const { return refusal_; }

    // What the parser calls.
    bool on_document_begin(json::error_code &) { return true; }
    bool on_document_end(json::error_code &) { return true; }
    bool on_object_begin(json::error_code &error) { return answer(handler_.StartObject(), error); }
    bool on_object_end(std::size_t count, json::error_code &error) {
        return answer(handler_.EndObject(count), error);
    }
    bool on_array_begin(json::error_code &error) { return answer(handler_.StartArray(), error); }
    bool on_array_end(std::size_t count, json::error_code &error) {
        return answer(handler_.EndArray(count), error);
    }
    bool on_key_part(json::string_view part, std::size_t, json::error_code &) { return keep(part); }
    bool on_key(json::string_view last, std::size_t, json::error_code &error) {
        return answer(handler_.Key(whole(last)), error);
    }
    bool on_string_part(json::string_view part, std::size_t, json::error_code &) { return keep(part); }
    bool on_string(json::string_view last, std::size_t, json::error_code &error) {
        return answer(handler_.String(whole(last)), error);
    }
    bool on_number_part(json::string_view part, json::error_code &) {
        number_ += viewOf(part);
        return true;
    }
    bool on_int64(std::int64_t number, json::string_view, json::error_code &error) {
        return answer(handler_.Int64(number), error);
    }
    bool on_uint64(std::uint64_t number, json::string_view, json::error_code &error) {
        return answer(handler_.Uint64(number), error);
    }
    /// The parser's own number is not always the nearest.
    bool on_double(double, json::string_view last, json::error_code &error) {
        number_ += viewOf(last);
        const double number = doubleOfDecimalText(number_);
        number_.clear();
        return std::isfinite(number) ? answer(handler_.Double(number), error)
                                     : refuse("Number too large.", error);
    }
    bool on_bool(bool flag, json::error_code &error) { return answer(handler_.Bool(flag), error); }
    bool on_null(json::error_code &error) { return answer(handler_.Null(), error); }
    bool on_comment_part(json::string_view, json::error_code &) { return false; }
    bool on_comment(json::string_view, json::error_code &) { return false; }

private:
    bool answer(bool goOn, json::error_code &error) { return goOn || refuse(handler_.refusal(), error); }
    bool refuse(const char *why, json::error_code &error) {
        refusal_ = why;
        error = make_error_code(boost::system::errc::operation_canceled);
        return false;
    }

    /// Puts a part of a text with escapes behind the earlier ones.
    bool keep(json::string_view part) {
        if (!unescaped_) // no text gets longer by that
            unescaped_ = std::make_unique_for_overwrite<char[]>(text_.size());
        std::copy(part.begin(), part.end(), unescaped_.get() + end_);
        end_ += part.size();
        return true;
    }
    /// The whole of a text: where it stands, or of its parts.
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
    const char *refusal_ = nullptr;
    std::string number_;                // the parts of the number that the parser is in the middle of
    std::unique_ptr<char[]> unescaped_; // texts with escapes, one after the other
    std::size_t begin_ = 0, end_ = 0;   // of the last of them
};

/// What the parser takes exponents of: 32 bits.
constexpr std::size_t longestExponent = 9;

/// The digits of the next exponent, if it is one, that the parser could find too long; empty at the text's
/// end when there is none. One byte in ten is looked at.
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

/// The same exponent in few digits, or one that is just as much out of range.
std::string_view shortened(std::string_view exponent) {
    exponent.remove_prefix(std::min(exponent.find_first_not_of('0'), exponent.size() - 1));
    return exponent.size() > longestExponent ? "999999999" : exponent;
}

class Reader {
public:
    Reader(std::string_view text, JSONHandler &handler) : text_(text), parser_(options(), handler, text) {}

    std::optional<JSONFailure> read() {
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

    /// Parses a piece, which stands for one of the text.
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
    auto failure = Reader(text.substr(start), handler).read();
    if (failure)
        failure->offset += start;
    return failure;
}
