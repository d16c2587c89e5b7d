// The values made last of short pieces of a text, for pieces that come again and again.
//
//     RecentValues<Ref<NSString>> texts;
//     const Ref<NSString> &text = texts.find(bytes, [&] { return NSString::stringWithUTF8String(bytes); });
//
// Threads: one at a time.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

template <class Value>
class RecentValues {
public:
    /// The value that was made of equal bytes, or a new one. The bytes must stay as long as the table, and
    /// seven more behind them be readable.
    template <class Make>
    const Value &find(std::string_view bytes, const Make &make) {
        Slot &slot = slots_[slotOf(bytes)];
        if (!slot.bytes.data() || !same(slot.bytes, bytes))
            slot = {bytes, make()};
        return slot.value;
    }

private:
    using Word = std::uint64_t;

    struct Slot {
        std::string_view bytes;
        Value value{};
    };

    /// Bytes from there on, up to eight.
    static Word wordAt(std::string_view bytes, std::size_t index) {
        Word word;
        std::memcpy(&word, bytes.data() + index, sizeof word);
        const std::size_t rest = bytes.size() - index;
        if (rest >= sizeof word)
            return word;
        return std::endian::native == std::endian::little ? word & ((Word{1} << 8 * rest) - 1)
                                                          : word & ~(~Word{0} >> 8 * rest);
    }

    /// Calling for a comparison would take longer than comparing.
    static bool same(std::string_view a, std::string_view b) {
        if (a.size() != b.size())
            return false;
        for (std::size_t i = 0; i < a.size(); i += sizeof(Word))
            if (wordAt(a, i) != wordAt(b, i))
                return false;
        return true;
    }

    static std::size_t slotOf(std::string_view bytes) {
        const std::size_t last = bytes.size() > sizeof(Word) ? bytes.size() - sizeof(Word) : 0;
        const Word mixed = wordAt(bytes, 0) ^ std::rotl(wordAt(bytes, last), 32) ^ bytes.size();
        return (mixed * 0x9E3779B97F4A7C15u) >> 56;
    }

    std::array<Slot, 256> slots_;
};
