#include "Platform/Foundation/Serialization/JSON/JSONWriter.h"

#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

using json::Kind;
using json::Reason;

template <class T>
const T &known(const id &object) {
    return static_cast<const T &>(*object);
}

/// For each ASCII character the one behind the backslash: 'u' for a code, 0 when it needs no escape.
constexpr auto escapes = [] {
    std::array<char, 128> table{};
    std::fill_n(table.begin(), 0x20, 'u');
    constexpr std::string_view special = "\"\\\b\f\n\r\t/", letters = "\"\\bfnrt/";
    for (std::size_t i = 0; i < special.size(); ++i)
        table[static_cast<unsigned char>(special[i])] = letters[i];
    return table;
}();

} // namespace

JSONWriter::JSONWriter(NSJSONWritingOptions options)
    : pretty_(options & NSJSONWritingOptions::PrettyPrinted),
      sorted_(options & NSJSONWritingOptions::SortedKeys), escapes_(escapes) {
    if (options & NSJSONWritingOptions::WithoutEscapingSlashes)
        escapes_['/'] = 0;
}

Reason JSONWriter::value(const id &object) {
    switch (json::kindOf(object.get())) {
    case Kind::string:
        return string(known<NSString>(object));
    case Kind::number:
        return number(known<NSNumber>(object));
    case Kind::array:
        return list(object, "[]", [&](auto item) {
            return json::eachElement(known<NSArray>(object), [&](const id &element) {
                item();
                return value(element);
            });
        });
    case Kind::dictionary:
        return list(object, "{}", [&](auto item) {
            return entries(known<NSDictionary>(object), [&](const id &key, const id &element) {
                item();
                return entry(key, element);
            });
        });
    case Kind::null:
        out_.put("null");
        return nullptr;
    case Kind::other:
        break;
    }
    return json::invalidType;
}

template <class Visit>
Reason JSONWriter::entries(const NSDictionary &dictionary, Visit visit) const {
    if (!sorted_)
        return json::eachEntry(dictionary, visit);
    if (!dictionary.table() && json::LockedVisit::isWithin(dictionary))
        return json::tooDeep;
    auto all = dictionary.allEntries();
    for (const auto &[key, object] : all)
        if (json::kindOf(key.get()) != Kind::string)
            return json::notText;
    std::sort(all.begin(), all.end(), [](const auto &a, const auto &b) {
        return known<NSString>(a.first).units() < known<NSString>(b.first).units();
    });
    for (const auto &[key, object] : all)
        if (Reason reason = visit(key, object))
            return reason;
    return nullptr;
}

Reason JSONWriter::entry(const id &key, const id &object) {
    if (json::kindOf(key.get()) != Kind::string)
        return json::notText;
    if (Reason reason = string(known<NSString>(key)))
        return reason;
    out_.put(pretty_ ? " : " : ":");
    return value(object);
}

Reason JSONWriter::open(char bracket) {
    if (depth_ >= NSJSONSerialization::deepestNesting)
        return json::tooDeep;
    out_.put(bracket);
    ++depth_;
    return nullptr;
}

template <class Items>
Reason JSONWriter::list(const id &container, const char (&brackets)[3], Items items) {
    if (Reason reason = open(brackets[0]))
        return reason;
    bool empty = true;
    const Reason reason = items([&] {
        if (!empty)
            out_.put(',');
        empty = false;
        startLine();
    });
    if (pretty_ && empty)
        out_.put('\n');
    close(brackets[1]);
    if (reason)
        refusedContainers_.push_back(container);
    return reason;
}

void JSONWriter::startLine() {
    if (!pretty_)
        return;
    out_.put('\n');
    out_.fill(2 * depth_, ' ');
}

void JSONWriter::number(std::int64_t value) {
    DecimalBuffer buffer;
    out_.put(decimalText(value, buffer));
}
void JSONWriter::number(std::uint64_t value) {
    DecimalBuffer buffer;
    out_.put(decimalText(value, buffer));
}
void JSONWriter::number(double value) {
    DecimalBuffer buffer;
    out_.put(decimalText(value, buffer));
}

Reason JSONWriter::number(const NSNumber &value) {
    if (value.isBoolean())
        number(value.boolValue());
    else if (!std::isfinite(value.doubleValue()))
        return json::notFinite;
    else if (value.isDecimal()) // with all its digits
        out_.put(value.stringValue()->utf8());
    else if (value.isFloating()) // a float is written as a double, since it is read as one
        number(value.doubleValue());
    else if (value.objCType() >= 'A' && value.objCType() <= 'Z')
        number(value.unsignedLongLongValue());
    else
        number(value.longLongValue());
    return nullptr;
}

/// Copies characters that need no escape, eight at a time, and returns how many.
std::size_t JSONWriter::putPlain(const char16_t *units, std::size_t count, char *out) const {
    using Units = std::int16_t __attribute__((vector_size(16)));
    using Bytes = std::int8_t __attribute__((vector_size(8)));
    const std::int16_t slash = escapes_['/'] ? std::int16_t{'/'} : std::int16_t{'"'};
    std::size_t done = 0;
    for (; done + 8 <= count; done += 8) {
        Units unit;
        std::memcpy(&unit, units + done, sizeof unit);
        const Units special =
            (unit < 0x20) | (unit > 0x7E) | (unit == '"') | (unit == '\\') | (unit == slash);
        std::uint64_t found[2];
        std::memcpy(found, &special, sizeof found);
        if (found[0] | found[1])
            break;
        const Bytes bytes = __builtin_convertvector(unit, Bytes);
        std::memcpy(out + done, &bytes, sizeof bytes);
    }
    return done;
}

Reason JSONWriter::string(const NSString &text) {
    const std::u16string &units = text.units();
    constexpr std::size_t longest = 6; // bytes per unit: a backslash, "u" and four digits
    char *out = out_.room(longest * units.size() + 2);
    *out++ = '"';
    for (std::size_t i = 0; i < units.size();) {
        const std::size_t plain = putPlain(units.data() + i, units.size() - i, out);
        i += plain;
        out += plain;
        for (const std::size_t end = std::min(i + 8, units.size()); i < end;) {
            const char16_t unit = units[i];
            if (unit < 0x80 && !escapes_[unit]) {
                *out++ = static_cast<char>(unit);
                ++i;
            } else if (unit < 0x80) {
                out = escaped(out, unit);
                ++i;
            } else {
                const std::size_t length = unicode::encodeCharacter(units, i, out);
                if (length == 0)
                    return "Invalid text: a surrogate stands alone.";
                out += length;
            }
        }
    }
    *out++ = '"';
    out_.wrote(out);
    return nullptr;
}

char *JSONWriter::escaped(char *out, char16_t unit) const {
    *out++ = '\\';
    *out++ = escapes_[unit];
    if (escapes_[unit] == 'u')
        for (const char digit :
             {'0', '0', ascii::lowerHexDigit<char>(unit >> 4), ascii::lowerHexDigit<char>(unit)})
            *out++ = digit;
    return out;
}
