#include "Platform/Transport/virtual/PrinterJson.h"

#include <boost/json/parse.hpp>
#include <boost/json/stream_parser.hpp>
#include <boost/json/value.hpp>

#include <charconv>
#include <stdexcept>

namespace transport {

namespace {

namespace json = boost::json;

constexpr std::size_t longestIdentity = 255; // a device record holds it with a terminating zero
constexpr std::size_t deepestNesting = 16;   // reading recurses

constexpr std::string_view blanks = " \t\r\n";

struct Malformed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void fail(const std::string &key, const char *expected) {
    throw Malformed(key + " must be " + expected + ".");
}

json::object parsed(std::string_view text) {
    if (text.size() > longestPrinterText)
        throw Malformed("The text is longer than 65536 bytes.");
    json::stream_parser parser({}, {.max_depth = deepestNesting});
    json::error_code error;
    const std::size_t used = parser.write_some(text.data(), text.size(), error);
    if (!error && used == text.size())
        parser.finish(error);
    if (error == json::error::too_deep)
        throw Malformed("The text nests deeper than 16 levels.");
    if (error || used < text.size()) {
        throw Malformed("Not JSON at byte " + std::to_string(used) + ": " +
                        (error ? error : make_error_code(json::error::extra_data)).message() + ".");
    }
    json::value value = parser.release();
    if (!value.is_object())
        throw Malformed("The text must be a JSON object.");
    return std::move(value.get_object());
}

const json::value &need(const json::object &document, const char *key) {
    const json::value *const value = document.if_contains(key);
    if (!value)
        throw Malformed(std::string(key) + " is missing.");
    return *value;
}

std::string textOf(const json::value &value, const char *key) {
    if (!value.is_string())
        fail(key, "a text");
    std::string text(value.get_string());
    if (text.find('\0') != std::string::npos)
        fail(key, "a text without a zero byte");
    return text;
}

std::string identity(const json::object &document, const char *key) {
    std::string text = textOf(need(document, key), key);
    if (text.size() > longestIdentity)
        fail(key, "at most 255 bytes long");
    return text;
}

std::string name(const json::object &document, const char *key) {
    std::string text = identity(document, key);
    if (text.empty())
        fail(key, "a text that is not empty");
    return text;
}

std::optional<std::uint16_t> hexadecimal(std::string_view text) {
    std::uint16_t number = 0;
    const char *const end = text.data() + text.size();
    if (!text.starts_with("0x"))
        return std::nullopt;
    const auto [stop, error] = std::from_chars(text.data() + 2, end, number, 16);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// 23115 or "0x5A4B".
std::uint16_t identifier(const json::object &document, const char *key) {
    const json::value &value = need(document, key);
    if (const std::int64_t *const number = value.if_int64(); number && *number >= 0 && *number <= 0xFFFF)
        return static_cast<std::uint16_t>(*number);
    const std::optional<std::uint16_t> number =
        value.is_string() ? hexadecimal(textOf(value, key)) : std::nullopt;
    if (!number)
        fail(key, "a number from 0 to 65535 or a text like \"0x5A4B\"");
    return *number;
}

std::int32_t integer(const json::object &document, const char *key, std::int32_t absent) {
    const json::value *const value = document.if_contains(key);
    if (!value)
        return absent;
    const std::int64_t *const number = value->if_int64();
    if (!number || !std::in_range<std::int32_t>(*number))
        fail(key, "an integer of 32 bits");
    return static_cast<std::int32_t>(*number);
}

std::set<Fault> faults(const json::object &document) {
    std::set<Fault> found;
    const json::value *const list = document.if_contains("faults");
    if (!list)
        return found;
    if (!list->is_array())
        fail("faults", "an array of texts");
    for (const json::value &item : list->get_array()) {
        const std::string text = textOf(item, "each of faults");
        const std::optional<Fault> fault = faultNamed(text);
        if (!fault)
            throw Malformed("faults holds the unknown name \"" + text + "\".");
        found.insert(*fault);
    }
    return found;
}

VirtualPrinterState stateOf(const json::object &document) {
    VirtualPrinterState state;
    state.manufacturer = name(document, "manufacturer");
    state.product = name(document, "product");
    state.serial = identity(document, "serial");
    state.vid = identifier(document, "vid");
    state.pid = identifier(document, "pid");
    state.printerStatus = integer(document, "printer_status", state.printerStatus);
    state.threshold = integer(document, "threshold", state.threshold);
    if (const json::value *const text = document.if_contains("status_text"))
        state.statusText = textOf(*text, "status_text");
    state.faults = faults(document);
    return state;
}

/// Where the value of a member of the outermost object is in the text, which is valid JSON; empty without the
/// member. Of several members with that name it is the last, which is the one that counts.
std::string_view placeOfMember(std::string_view text, std::string_view name) {
    std::string_view found, last; // the latest string, which is a key if a colon follows
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t start = i;
        switch (text[i]) {
        case '"':
            while (text[++i] != '"')
                i += text[i] == '\\';
            last = text.substr(start, i + 1 - start);
            break;
        case '{':
        case '[':
            ++depth;
            break;
        case '}':
        case ']':
            --depth;
            break;
        case ':':
            if (depth == 1 && json::parse(json::string_view(last.data(), last.size())).as_string() == name) {
                const std::size_t begin = text.find_first_not_of(blanks, i + 1);
                found = text.substr(begin, text.find_first_of(" \t\r\n,}", begin) - begin);
            }
            break;
        default:
            break;
        }
    }
    return found;
}

} // namespace

std::optional<VirtualPrinterState> printerFromJson(std::string_view text, std::string *reason) {
    try {
        return stateOf(parsed(text));
    } catch (const Malformed &malformed) {
        if (reason)
            *reason = malformed.what();
        return std::nullopt;
    }
}

std::optional<std::string> jsonWithThreshold(std::string_view text, std::int32_t threshold) {
    if (!printerFromJson(text))
        return std::nullopt;
    const std::string number = std::to_string(threshold);
    std::string changed(text);
    if (const auto old = placeOfMember(text, "threshold"); !old.empty()) {
        changed.replace(static_cast<std::size_t>(old.data() - text.data()), old.size(), number);
    } else { // the object has other members, as it describes a printer
        const std::size_t end = changed.find_last_not_of(blanks, changed.rfind('}') - 1) + 1;
        changed.insert(end, ", \"threshold\": " + number);
    }
    return changed;
}

} // namespace transport
