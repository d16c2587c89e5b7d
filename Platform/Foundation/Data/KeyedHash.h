// Hashes that cannot be predicted outside the process, so that input cannot be made to collide in a table.
//
//     NSUInteger NSData::hash() const { return keyedHash(bytes(), length()); }
//
// The key is random for each process, so hashes must not be stored or sent. Safe from any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

struct HashKey {
    std::uint64_t first = 0, second = 0;
};

/// SipHash-1-3 of the bytes, which may be null when there are none.
std::uint64_t sipHash(HashKey key, const void *bytes, std::size_t size);

/// The same with the key of this process.
NSUInteger keyedHash(const void *bytes, std::size_t size);

inline NSUInteger keyedHash(std::u16string_view units) {
    return keyedHash(units.data(), units.size() * sizeof units[0]);
}
inline NSUInteger keyedHash(std::string_view bytes) {
    return keyedHash(bytes.data(), bytes.size());
}
inline NSUInteger keyedHash(std::uint64_t word) {
    return keyedHash(&word, sizeof word);
}
/// Both zeros have the same hash, and so have all NaNs.
NSUInteger keyedHash(double value);
