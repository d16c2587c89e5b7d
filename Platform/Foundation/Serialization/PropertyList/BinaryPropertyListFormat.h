// What the reader and the writer of binary property lists agree on.
//
//     "bplist00"   the objects, side by side   the table of their offsets   the trailer
//
// An object begins with a marker: its kind in the high half, in the low half
//
//     flag 0     8 false, 9 true
//     whole 1    the power of two of its bytes, 0 to 4. Of 8 and 16 bytes it has a sign.
//     real 2     2 or 3: a float or a double
//     date 3     3: a double of seconds from 2001-01-01 00:00 UTC
//     uid 8      one less than its bytes
//     data 4, ascii 5, utf16 6, array A, dictionary D
//                how many bytes, units, elements or entries follow; 15 when a whole number says that first
//
// An array is the numbers of its elements in the table, a dictionary those of its keys and then those of its
// values. The trailer is 6 unused bytes, the bytes of an offset, those of a reference, and three numbers of 8
// bytes: how many objects there are, the number of the topmost, and where the table begins. All numbers are
// big-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace binaryPropertyList {

inline constexpr std::string_view head = "bplist00";
inline constexpr std::size_t trailerSize = 32;

enum Kind : std::uint8_t {
    flag = 0x0,
    whole = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    asciiText = 0x5,
    utf16Text = 0x6,
    uid = 0x8,
    array = 0xA,
    dictionary = 0xD,
};

// Objects may be shared, so that a small list could unfold into an endless one. A list is read when it weighs
// no more than `mostFree` and `mostPerByte` for each of its bytes, shared objects counted each time. What is
// written is always read: a reference takes a byte at least and leads to no more than a short object.

/// About what an object costs beside its bytes.
inline constexpr std::uint64_t overhead = 32;
/// Bytes of the longest object that is written once for several places.
inline constexpr std::uint64_t longestShared = 224;
inline constexpr std::uint64_t mostPerByte = overhead + longestShared;
inline constexpr std::uint64_t mostFree = 64 << 20;

} // namespace binaryPropertyList
