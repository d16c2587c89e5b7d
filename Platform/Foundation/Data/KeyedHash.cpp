#include "Platform/Foundation/Data/KeyedHash.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

// SipHash-1-3: one round per word and three at the end, which is enough for tables. OpenSSL has SipHash only
// as a message authentication code, whose context has to be allocated.
class SipState {
public:
    explicit SipState(HashKey key)
        : v0_(key.first ^ 0x736f6d6570736575), v1_(key.second ^ 0x646f72616e646f6d),
          v2_(key.first ^ 0x6c7967656e657261), v3_(key.second ^ 0x7465646279746573) {}

    void absorb(std::uint64_t word) {
        v3_ ^= word;
        round();
        v0_ ^= word;
    }
    std::uint64_t finish() {
        v2_ ^= 0xff;
        for (int i = 0; i < 3; ++i)
            round();
        return v0_ ^ v1_ ^ v2_ ^ v3_;
    }

private:
    void round() {
        v0_ += v1_;
        v1_ = std::rotl(v1_, 13) ^ v0_;
        v0_ = std::rotl(v0_, 32);
        v2_ += v3_;
        v3_ = std::rotl(v3_, 16) ^ v2_;
        v0_ += v3_;
        v3_ = std::rotl(v3_, 21) ^ v0_;
        v2_ += v1_;
        v1_ = std::rotl(v1_, 17) ^ v2_;
        v2_ = std::rotl(v2_, 32);
    }

    std::uint64_t v0_, v1_, v2_, v3_;
};

/// The next bytes as a little-endian word.
template <class Word>
std::uint64_t take(const unsigned char *&at) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    at += sizeof word;
    return word;
}

HashKey drawnKey() {
    HashKey key;
    arc4random_buf(&key, sizeof key); // never fails
    return key;
}

} // namespace

std::uint64_t sipHash(HashKey key, const void *bytes, std::size_t size) {
    SipState state(key);
    const auto *at = static_cast<const unsigned char *>(bytes);
    for (std::size_t words = size / 8; words; --words)
        state.absorb(take<std::uint64_t>(at));
    std::uint64_t last = std::uint64_t{size} << 56;
    unsigned shift = 0;
    if (size & 4) {
        last |= take<std::uint32_t>(at);
        shift = 32;
    }
    if (size & 2) {
        last |= take<std::uint16_t>(at) << shift;
        shift += 16;
    }
    if (size & 1)
        last |= take<std::uint8_t>(at) << shift;
    state.absorb(last);
    return state.finish();
}

NSUInteger keyedHash(const void *bytes, std::size_t size) {
    static const HashKey key = drawnKey();
    return sipHash(key, bytes, size);
}

NSUInteger keyedHash(double value) {
    if (std::isnan(value))
        value = std::numeric_limits<double>::quiet_NaN();
    return keyedHash(std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value));
}
