// Reads a JSON text and reports its parts to a handler:
//
//     JSONBuilder builder(false);
//     if (const auto failure = readJSON(text, builder))
//         ... failure->reason, failure->offset
//
// A byte-order mark before the text is skipped. Numbers that are not 64-bit integers are rounded to the
// nearest double, whatever their digits and exponents; one that is too large for any double is refused.
// Strings are unescaped, but their bytes are not checked: the handler has to check that they are UTF-8.
//
// Safe from any thread; a handler belongs to one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

/// Receives the parts of a text in their order. Each call returns whether to go on. The handler must limit
/// the nesting of containers: that limits the recursion of the reader, too.
class JSONHandler {
public:
    virtual bool Null() = 0;
    virtual bool Bool(bool flag) = 0;
    virtual bool Int64(std::int64_t number) = 0;
    virtual bool Uint64(std::uint64_t number) = 0; ///< larger than any std::int64_t
    virtual bool Double(double number) = 0;
    /// The bytes stay valid until `readJSON` returns.
    virtual bool String(std::string_view bytes) = 0;
    virtual bool Key(std::string_view bytes) = 0;
    virtual bool StartObject() = 0;
    virtual bool StartArray() = 0;
    /// `count` is the number of entries or elements.
    virtual bool EndObject(std::size_t count) = 0;
    virtual bool EndArray(std::size_t count) = 0;

    /// Why the last call returned false; may be null.
    virtual const char *refusal() const = 0;

protected:
    ~JSONHandler() = default;
};

struct JSONFailure {
    std::string reason; ///< a sentence
    std::size_t offset; ///< in bytes, of the text
};

/// Reads the whole text. Nothing on success.
std::optional<JSONFailure> readJSON(std::string_view text, JSONHandler &handler);

#pragma GCC visibility pop
