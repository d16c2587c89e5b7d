// Reads a JSON text and tells a handler what is in it, as RapidJSON's readers do:
//
//     JSONReader reader(text);
//     JSONBuilder builder(false);
//     if (const auto failure = reader.read(builder))
//         ... failure->reason, failure->offset
//
// The bytes that the handler is given are the reader's, so the reader stays as long as they are looked at.
// Threads: one at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

// Blanks and plain characters are skipped sixteen at a time where the processor can.
#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#elif defined(__ARM_NEON)
#define RAPIDJSON_NEON
#endif
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

class JSONReader {
public:
    struct Failure {
        const char *reason;
        std::size_t offset; ///< in bytes, of the text
    };

    explicit JSONReader(std::string_view text)
        : start_(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0), size_(text.size() - start_),
          copy_(std::make_unique_for_overwrite<char[]>(size_ + padding)) {
        std::copy(text.begin() + static_cast<std::ptrdiff_t>(start_), text.end(), copy_.get());
        std::fill_n(copy_.get() + size_, padding, '\0');
    }

    /// Once. The handler ends the reading by answering false; its `refusal()` says why, or null for a reason
    /// of the reader's.
    template <class Handler>
    std::optional<Failure> read(Handler &handler) {
        rapidjson::InsituStringStream stream(copy_.get());
        rapidjson::Reader reader;
        const rapidjson::ParseResult parsed =
            reader.Parse<rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag>(stream, handler);
        if (parsed.IsError())
            return Failure{handler.refusal() ? handler.refusal() : rapidjson::GetParseError_En(parsed.Code()),
                           parsed.Offset() + start_};
        if (stream.Tell() != size_) // a zero byte counts as the end
            return Failure{"Garbage at end.", stream.Tell() + start_};
        return std::nullopt;
    }

private:
    static constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    /// Zeros behind the text: they end it, and whole registers may be looked at.
    static constexpr std::size_t padding = 32;

    std::size_t start_, size_;
    std::unique_ptr<char[]> copy_; // is read in place
};
