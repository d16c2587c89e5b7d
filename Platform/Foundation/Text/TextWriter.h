// Builds a long UTF-16 text through a small buffer, so that code units can be written through a plain pointer
// without checking the text's capacity for each.
//
//     TextWriter writer(bytes.size() * 2);
//     for (const std::uint8_t byte : bytes)
//         writer.wrote(std::copy_n(digits(byte), 2, writer.room(2)));
//     return make<NSString>(writer.take());
//
// A writer belongs to one thread at a time.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#pragma GCC visibility push(default)

class TextWriter {
public:
    static constexpr std::size_t largestRoom = 1024;

    /// `expected` is the approximate length of the text, in code units; the text may become longer.
    explicit TextWriter(std::size_t expected) { text_.reserve(expected); }

    /// A buffer for `count` code units, at most `largestRoom`; valid until the next call.
    char16_t *room(std::size_t count) {
        if (static_cast<std::size_t>(buffer_.data() + buffer_.size() - end_) < count)
            flush();
        return end_;
    }
    /// To be called after writing to the buffer that `room` returned, with the end of what was written.
    void wrote(char16_t *end) { end_ = end; }
    /// The text; the writer is then empty.
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

#pragma GCC visibility pop
