// Builds a long text piece by piece, through a small buffer: nothing is cleared before it is written, and no
// single character asks the text for room.
//
//     TextWriter writer(bytes.size() * 2);
//     for (const std::uint8_t byte : bytes)
//         writer.wrote(std::copy_n(digits(byte), 2, writer.room(2)));
//     return make<NSString>(writer.take());
//
// One thread at a time.
#pragma once

#include <array>
#include <cstddef>
#include <string>

class TextWriter {
public:
    static constexpr std::size_t largestRoom = 1024;

    /// `expected` is about the length of the text to come; more is fine.
    explicit TextWriter(std::size_t expected) { text_.reserve(expected); }

    /// Room for `count` units, at most `largestRoom`.
    char16_t *room(std::size_t count) {
        if (static_cast<std::size_t>(buffer_.data() + buffer_.size() - end_) < count)
            flush();
        return end_;
    }
    /// Says how far the room was used.
    void wrote(char16_t *end) { end_ = end; }
    std::u16string take() {
        flush();
        return std::move(text_);
    }

private:
    void flush() {
        text_.append(buffer_.data(), end_);
        end_ = buffer_.data();
    }

    std::u16string text_;
    std::array<char16_t, largestRoom> buffer_;
    char16_t *end_ = buffer_.data();
};
