// A growing buffer of bytes whose end is written to through a plain pointer, for JSONWriter.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

class JSONOutput {
public:
    /// Memory for `count` more bytes, valid until the next call. After writing, call `wrote` with the end of
    /// what was written.
    char *room(std::size_t count) {
        if (bytes_.size() - used_ < count)
            bytes_.resize(std::max(2 * bytes_.size(), used_ + count));
        return reinterpret_cast<char *>(bytes_.data()) + used_;
    }
    void wrote(const char *end) {
        used_ = static_cast<std::size_t>(end - reinterpret_cast<char *>(bytes_.data()));
    }

    void put(char byte) {
        *room(1) = byte;
        ++used_;
    }
    void put(std::string_view text) { wrote(std::copy(text.begin(), text.end(), room(text.size()))); }
    std::size_t size() const { return used_; }
    /// Drops all bytes but the first `size`.
    void cutTo(std::size_t size) { used_ = size; }
    void fill(std::size_t count, char byte) { wrote(std::fill_n(room(count), count, byte)); }

    std::vector<std::uint8_t> take() {
        bytes_.resize(used_);
        return std::move(bytes_);
    }

private:
    std::vector<std::uint8_t> bytes_ = std::vector<std::uint8_t>(256);
    std::size_t used_ = 0;
};

#pragma GCC visibility pop
