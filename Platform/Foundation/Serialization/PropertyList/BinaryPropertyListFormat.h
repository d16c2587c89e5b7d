// The format of binary property lists, for their reader and writer.
//
//     "bplist00"   the objects, side by side   the table of their offsets   the trailer
//
// An object begins with a marker byte. Its high four bits are the kind, its low four bits:
//
//     flag 0     8 for false, 9 for true
//     whole 1    0 to 4 for an integer of 1, 2, 4, 8 or 16 bytes; those of 8 and 16 bytes are signed
//     real 2     2 for a float, 3 for a double
//     date 3     3: a double, in seconds from 2001-01-01 00:00 UTC
//     uid 8      the number of its bytes minus one
//     data 4, ascii 5, utf16 6, array A, dictionary D
//                the number of bytes, units, elements or entries, or 15 if an object `whole` follows with it
//
// An array consists of references to its elements, a dictionary of those to its keys and then to its values.
// A reference is the object's index in the table. The trailer consists of 6 unused bytes, the size of an
// offset, the size of a reference (a byte each), and three numbers of 8 bytes: the number of objects, the
// index of the topmost one, and the offset of the table. All numbers are big-endian.
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
// written is always read: a reference takes a byte at least and leads to no more than a short object. A limit
// on the number of objects would take the same bookkeeping, and a long text could still be copied for each of
// its places.

/// The size of an object besides its bytes, about.
inline constexpr std::uint64_t overhead = 32;
/// The longest object, in bytes, that the writer shares.
inline constexpr std::uint64_t longestShared = 224;
inline constexpr std::uint64_t mostPerByte = overhead + longestShared;
inline constexpr std::uint64_t mostFree = 64 << 20;

} // namespace binaryPropertyList
