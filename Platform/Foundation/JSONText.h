// A JSON text as RapidJSON walks it to read it in place: what stands behind an escape moves up to where the
// escape began, and plain characters are passed eight at a time.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <rapidjson/encodings.h>
#include <rapidjson/stream.h>

class JSONText {
public:
    using Ch = char;

    /// So many zeros stand behind the text.
    static constexpr std::size_t padding = sizeof(std::uint64_t);

    /// The text is changed, and stays as long as what is read from it.
    explicit JSONText(char *text) : begin_(text), read_(text) {}

    Ch Peek() const { return *read_; }
    Ch Take() { return *read_++; }
    std::size_t Tell() const { return static_cast<std::size_t>(read_ - begin_); }

    Ch *PutBegin() { return write_ = read_; }
    void Put(Ch character) { *write_++ = character; }
    std::size_t PutEnd(const Ch *begin) const { return static_cast<std::size_t>(write_ - begin); }

    /// Takes and puts all up to the next quote, backslash or control character.
    void passPlain() {
        for (;;) {
            const std::uint64_t word = nextWord(), marks = marksOf(word);
            const std::size_t count =
                marks ? static_cast<std::size_t>(std::countr_zero(marks)) / 8 : sizeof word;
            if (write_ != read_)
                std::memmove(write_, read_, count);
            write_ += count;
            read_ += count;
            if (marks)
                return;
        }
    }

private:
    /// The first character in the lowest bits.
    std::uint64_t nextWord() const {
        std::uint64_t word;
        std::memcpy(&word, read_, sizeof word);
        return std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
    }

    /// The lowest bit that is set is in the first character to stop at; none is set without one.
    static std::uint64_t marksOf(std::uint64_t word) {
        constexpr std::uint64_t ones = 0x0101010101010101u;
        const std::uint64_t quote = word ^ (ones * '"'), backslash = word ^ (ones * '\\');
        return ((word - ones * ' ') | (quote - ones) | (backslash - ones)) & ~word & (ones * 0x80);
    }

    char *begin_;
    char *read_;
    char *write_ = nullptr;
};

template <>
struct rapidjson::StreamTraits<JSONText> {
    enum { copyOptimization = 1 };
};

/// UTF-8, of which RapidJSON takes a character at a time, as runs of plain characters.
struct JSONEncoding : rapidjson::UTF8<> {};

template <>
struct rapidjson::Transcoder<JSONEncoding, JSONEncoding> : Transcoder<UTF8<>, UTF8<>> {
    using Transcoder<UTF8<>, UTF8<>>::Transcode;
    static bool Transcode(JSONText &text, JSONText &) {
        text.passPlain();
        return true;
    }
};
