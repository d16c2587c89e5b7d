// Reads a JSON text and tells a handler what is in it:
//
//     JSONBuilder builder(false);
//     if (const auto failure = readJSON(text, builder))
//         ... failure->reason, failure->offset
//
// A byte-order mark before the text is skipped. Numbers have the nearest double, whatever their digits and
// exponents; one that is too large for any is refused. Bytes within texts pass as they are, valid UTF-8 or
// not: the handler converts and so checks them. What the escapes of a text stand for is always valid.
//
// Threads: any; a handler one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Is told what a text holds, in its order. Each answers whether to go on. The handler bounds how deep
/// containers nest, which bounds the recursion of the reader, too.
class JSONHandler {
public:
    virtual bool Null() = 0;
    virtual bool Bool(bool flag) = 0;
    virtual bool Int64(std::int64_t number) = 0;
    virtual bool Uint64(std::uint64_t number) = 0; ///< beyond the signed
    virtual bool Double(double number) = 0;
    /// The bytes stay until the whole text is read.
    virtual bool String(std::string_view bytes) = 0;
    virtual bool Key(std::string_view bytes) = 0;
    virtual bool StartObject() = 0;
    virtual bool StartArray() = 0;
    virtual bool EndObject(std::size_t count) = 0;
    virtual bool EndArray(std::size_t count) = 0;

    /// Why the last answer was no.
    virtual const char *refusal() const = 0;

protected:
    ~JSONHandler() = default;
};

struct JSONFailure {
    std::string reason; ///< a sentence
    std::size_t offset; ///< in bytes, of the text
};

std::optional<JSONFailure> readJSON(std::string_view text, JSONHandler &handler);
