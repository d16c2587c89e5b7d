// Parses type encodings: where a type ends, and how many bytes a value of it takes.
//
// Any text may be given; for one that is not an encoding the functions return nothing.
#pragma once

#include "Platform/Ascii/Ascii.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#pragma GCC visibility push(default)

namespace runtime {

struct EncodedType {
    std::size_t length;    ///< of the encoding, in characters, its qualifiers included
    std::size_t size;      ///< in bytes; 0 for void, and for a structure whose fields are not given
    std::size_t alignment; ///< in bytes
};

inline constexpr std::string_view typeQualifiers = "rnNoORV";
inline constexpr int deepestType = 32;                           // levels of nesting
inline constexpr std::size_t largestType = std::size_t{1} << 32; // bytes

constexpr std::optional<EncodedType> firstType(std::string_view text, int depth = 0);

/// The size of a one-character type; nothing for any other character.
constexpr std::optional<std::size_t> simpleSize(char code) {
    constexpr std::string_view codes = "vBcCsSiIlLfqQd#:*D";
    constexpr std::size_t sizes[] = {0, 1, 1, 1, 2, 2, 4, 4, 4, 4, 4, 8, 8, 8, 8, 8, 8, 16};
    const std::size_t index = codes.find(code);
    return index == codes.npos ? std::nullopt : std::optional(sizes[index]);
}

/// The length of `@`, `@?`, `@?<…>` or `@"…"`.
constexpr std::optional<EncodedType> objectType(std::string_view text) {
    std::size_t length = 1;
    if (text.starts_with("@\"")) {
        const std::size_t end = text.find('"', 2);
        if (end == text.npos)
            return std::nullopt;
        length = end + 1;
    } else if (text.starts_with("@?<")) {
        int open = 1;
        for (length = 3; open > 0 && length < text.size(); ++length)
            open += text[length] == '<' ? 1 : text[length] == '>' ? -1 : 0;
        if (open > 0)
            return std::nullopt;
    } else if (text.starts_with("@?"))
        length = 2;
    return EncodedType{length, sizeof(void *), alignof(void *)};
}

/// `[`, a count, a type and `]`.
constexpr std::optional<EncodedType> arrayType(std::string_view text, int depth) {
    std::size_t at = 1, count = 0;
    for (; at < text.size() && ascii::isDigit(text[at]); ++at)
        count = std::min(count * 10 + static_cast<std::size_t>(text[at] - '0'), largestType);
    const auto element = firstType(text.substr(at), depth + 1);
    if (!element)
        return std::nullopt;
    at += element->length;
    if (at >= text.size() || text[at] != ']' || (element->size && count > largestType / element->size))
        return std::nullopt;
    return EncodedType{at + 1, count * element->size, element->alignment};
}

/// A structure `{name=…}` or a union `(name=…)` of types, each optionally preceded by its field's name in
/// double quotes. Without the equals sign the fields are not given.
constexpr std::optional<EncodedType> compoundType(std::string_view text, int depth) {
    const bool isUnion = text.front() == '(';
    const char close = isUnion ? ')' : '}';
    const char stops[] = {'=', close, '\0'};
    std::size_t at = text.find_first_of(stops);
    EncodedType whole{0, 0, 1};
    if (at != text.npos && text[at] == '=')
        for (++at; at < text.size() && text[at] != close;) {
            if (text[at] == '"') {
                at = text.find('"', at + 1);
                if (at == text.npos)
                    return std::nullopt;
                ++at;
            }
            const auto field = firstType(text.substr(at), depth + 1);
            if (!field)
                return std::nullopt;
            at += field->length;
            whole.alignment = std::max(whole.alignment, field->alignment);
            const std::size_t begin =
                isUnion ? 0 : (whole.size + field->alignment - 1) / field->alignment * field->alignment;
            whole.size = std::max(whole.size, begin + field->size);
        }
    if (at >= text.size() || whole.size > largestType)
        return std::nullopt;
    whole.size = (whole.size + whole.alignment - 1) / whole.alignment * whole.alignment;
    whole.length = at + 1;
    return whole;
}

/// The type that the text begins with; nothing when it begins with none, or with one that nests too deep or
/// is too large.
constexpr std::optional<EncodedType> firstType(std::string_view text, int depth) {
    const std::size_t qualifiers = std::min(text.find_first_not_of(typeQualifiers), text.size());
    text.remove_prefix(qualifiers);
    if (text.empty() || depth > deepestType)
        return std::nullopt;
    std::optional<EncodedType> type;
    if (const auto size = simpleSize(text.front()))
        type = EncodedType{1, *size, std::max<std::size_t>(*size, 1)};
    else if (text.front() == '@')
        type = objectType(text);
    else if (text.front() == '[')
        type = arrayType(text, depth);
    else if (text.front() == '{' || text.front() == '(')
        type = compoundType(text, depth);
    else if (text.starts_with("^?"))
        type = EncodedType{2, sizeof(void *), alignof(void *)};
    else if (text.front() == '^')
        if (const auto pointee = firstType(text.substr(1), depth + 1))
            type = EncodedType{1 + pointee->length, sizeof(void *), alignof(void *)};
    if (type)
        type->length += qualifiers;
    return type;
}

/// Takes the first type off a method's encoding, with its offset; empty when there is none.
constexpr std::string_view takeType(std::string_view &types) {
    const auto type = firstType(types);
    if (!type)
        return {};
    const auto taken = types.substr(0, type->length);
    types.remove_prefix(type->length);
    types.remove_prefix(std::min(types.find_first_not_of("0123456789"), types.size()));
    return taken;
}

/// The type at `index` of a method's encoding, the result being the first; empty past the end.
constexpr std::string_view typeAt(std::string_view types, std::size_t index) {
    for (;; --index) {
        const auto type = takeType(types);
        if (type.empty() || index == 0)
            return type;
    }
}

} // namespace runtime

#pragma GCC visibility pop
