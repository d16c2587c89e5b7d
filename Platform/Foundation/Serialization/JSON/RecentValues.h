// A small cache of the values made from pieces of a text, for pieces that are often repeated: 256 slots, each
// with the last value whose bytes hash to it.
//
//     RecentValues<Ref<NSString>> texts;
//     const Ref<NSString> &text = texts.find(bytes, [&] { return NSString::stringWithUTF8String(bytes); });
//
// A cache belongs to one thread at a time.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#pragma GCC visibility push(default)

template <class Value>
class RecentValues {
public:
    /// The value made earlier from equal bytes if it is still cached, else the result of `make`. The bytes
    /// must stay valid as long as the cache is used; the reference is valid until the next call.
    template <class Make>
    const Value &find(std::string_view bytes, const Make &make) {
        const EdgeWords ends(bytes);
        Slot &slot = slots_[ends.mixed(bytes.size())];
        if (!slot.bytes.data() || !isOf(slot, bytes, ends))
            slot = {bytes, ends, make()};
        return slot.value;
    }

private:
    static constexpr std::size_t slotBits = 8;

    /// The first and the last eight bytes, which may overlap; of fewer than eight bytes enough to rebuild
    /// them. So up to 16 bytes are compared as two words. Never reads beyond the bytes: if something was just
    /// written there, the processor would have to wait for it.
    struct EdgeWords {
        std::uint64_t first = 0, last = 0;

        EdgeWords() = default;
        explicit EdgeWords(std::string_view bytes) {
            const char *begin = bytes.data(), *end = begin + bytes.size();
            if (bytes.size() >= 8) {
                std::memcpy(&first, begin, 8);
                std::memcpy(&last, end - 8, 8);
            } else if (bytes.size() >= 4) {
                std::memcpy(&first, begin, 4);
                std::memcpy(&last, end - 4, 4);
            } else if (!bytes.empty()) {
                std::memcpy(&first, begin, 1);
                std::memcpy(&last, end - 1, 1);
                last |= std::uint64_t{static_cast<unsigned char>(begin[bytes.size() / 2])} << 8;
            }
        }

        bool operator==(const EdgeWords &) const = default;

        std::size_t mixed(std::size_t size) const {
            return ((first ^ std::rotl(last, 32) ^ size) * 0x9E3779B97F4A7C15u) >> (64 - slotBits);
        }
    };

    struct Slot {
        std::string_view bytes;
        EdgeWords ends;
        Value value{};
    };

    static bool isOf(const Slot &slot, std::string_view bytes, const EdgeWords &ends) {
        return slot.bytes.size() == bytes.size() && slot.ends == ends &&
               (bytes.size() <= 16 || slot.bytes == bytes);
    }

    std::array<Slot, std::size_t{1} << slotBits> slots_;
};

#pragma GCC visibility pop
