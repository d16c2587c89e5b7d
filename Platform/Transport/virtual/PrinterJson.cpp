#include "Platform/Transport/virtual/PrinterJson.h"

#include <algorithm>
#include <charconv>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <stdexcept>

namespace transport {

namespace {

using rapidjson::Document;
using rapidjson::Value;

constexpr size_t longestText = 65536;
constexpr size_t longestIdentity = 255; // a device record holds it with a terminating zero
constexpr int deepestNesting = 16;      // writing recurses

struct Malformed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void fail(const std::string &key, const char *expected) {
    throw Malformed(key + " must be " + expected + ".");
}

bool nestsDeeperThan(int levels, const Value &value) {
    const auto inner = [levels](const Value &child) { return nestsDeeperThan(levels - 1, child); };
    if (value.IsArray()) {
        return levels == 0 || std::any_of(value.Begin(), value.End(), inner);
    }
    return value.IsObject() &&
           (levels == 0 || std::any_of(value.MemberBegin(), value.MemberEnd(),
                                       [&inner](const auto &member) { return inner(member.value); }));
}

// The parser lets an escaped half of a surrogate pair through, which could not be written back.
bool isUnicode(const Document &document) {
    using rapidjson::CrtAllocator, rapidjson::StringBuffer, rapidjson::UTF8;
    StringBuffer discarded;
    rapidjson::Writer<StringBuffer, UTF8<>, UTF8<>, CrtAllocator, rapidjson::kWriteValidateEncodingFlag>
        writer(discarded);
    return document.Accept(writer);
}

Document parsed(std::string_view text) {
    if (text.size() > longestText) {
        throw Malformed("The text is longer than 65536 bytes.");
    }
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseFullPrecisionFlag;
    Document document;
    document.Parse<flags>(text.data(), text.size());
    if (document.HasParseError()) {
        throw Malformed("Not JSON at byte " + std::to_string(document.GetErrorOffset()) + ": " +
                        rapidjson::GetParseError_En(document.GetParseError()));
    }
    if (!document.IsObject()) {
        throw Malformed("The text must be a JSON object.");
    }
    if (nestsDeeperThan(deepestNesting, document)) {
        throw Malformed("The text nests deeper than 16 levels.");
    }
    if (!isUnicode(document)) {
        throw Malformed("A text holds half of a surrogate pair.");
    }
    return document;
}

const Value *find(const Document &document, const char *key) {
    const auto member = document.FindMember(key);
    return member == document.MemberEnd() ? nullptr : &member->value;
}

const Value &need(const Document &document, const char *key) {
    const Value *const value = find(document, key);
    if (value == nullptr) {
        throw Malformed(std::string(key) + " is missing.");
    }
    return *value;
}

std::string textOf(const Value &value, const char *key) {
    if (!value.IsString()) {
        fail(key, "a text");
    }
    std::string text(value.GetString(), value.GetStringLength());
    if (text.find('\0') != std::string::npos) {
        fail(key, "a text without a zero byte");
    }
    return text;
}

std::string identity(const Document &document, const char *key) {
    std::string text = textOf(need(document, key), key);
    if (text.size() > longestIdentity) {
        fail(key, "at most 255 bytes long");
    }
    return text;
}

std::string name(const Document &document, const char *key) {
    std::string text = identity(document, key);
    if (text.empty()) {
        fail(key, "a text that is not empty");
    }
    return text;
}

std::optional<uint16_t> hexadecimal(std::string_view text) {
    uint16_t number = 0;
    const char *const end = text.data() + text.size();
    if (!text.starts_with("0x")) {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(text.data() + 2, end, number, 16);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// 23115 or "0x5A4B".
uint16_t identifier(const Document &document, const char *key) {
    const Value &value = need(document, key);
    if (value.IsUint() && value.GetUint() <= 0xFFFF) {
        return static_cast<uint16_t>(value.GetUint());
    }
    const std::optional<uint16_t> number = value.IsString() ? hexadecimal(textOf(value, key)) : std::nullopt;
    if (!number) {
        fail(key, "a number from 0 to 65535 or a text like \"0x5A4B\"");
    }
    return *number;
}

int32_t integer(const Document &document, const char *key, int32_t absent) {
    const Value *const value = find(document, key);
    if (value == nullptr) {
        return absent;
    }
    if (!value->IsInt()) {
        fail(key, "an integer of 32 bits");
    }
    return value->GetInt();
}

std::set<Fault> faults(const Document &document) {
    std::set<Fault> found;
    const Value *const list = find(document, "faults");
    if (list == nullptr) {
        return found;
    }
    if (!list->IsArray()) {
        fail("faults", "an array of texts");
    }
    for (const Value &item : list->GetArray()) {
        const std::string text = textOf(item, "each of faults");
        const std::optional<Fault> fault = faultNamed(text);
        if (!fault) {
            throw Malformed("faults holds the unknown name \"" + text + "\".");
        }
        found.insert(*fault);
    }
    return found;
}

VirtualPrinterState stateOf(const Document &document) {
    VirtualPrinterState state;
    state.manufacturer = name(document, "manufacturer");
    state.product = name(document, "product");
    state.serial = identity(document, "serial");
    state.vid = identifier(document, "vid");
    state.pid = identifier(document, "pid");
    state.printerStatus = integer(document, "printer_status", state.printerStatus);
    state.threshold = integer(document, "threshold", state.threshold);
    if (const Value *const text = find(document, "status_text")) {
        state.statusText = textOf(*text, "status_text");
    }
    state.faults = faults(document);
    return state;
}

} // namespace

std::optional<VirtualPrinterState> printerFromJson(std::string_view text, std::string *reason) {
    try {
        return stateOf(parsed(text));
    } catch (const Malformed &malformed) {
        if (reason != nullptr) {
            *reason = malformed.what();
        }
        return std::nullopt;
    }
}

std::optional<std::string> jsonWithThreshold(std::string_view text, int32_t threshold) {
    if (!printerFromJson(text)) {
        return std::nullopt;
    }
    Document document = parsed(text);
    if (const auto member = document.FindMember("threshold"); member != document.MemberEnd()) {
        member->value.SetInt(threshold);
    } else {
        document.AddMember("threshold", threshold, document.GetAllocator());
    }
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter writer(buffer);
    document.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

} // namespace transport
