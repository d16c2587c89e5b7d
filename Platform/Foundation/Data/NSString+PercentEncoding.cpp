// Percent-encoding, both ways.
#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/TextWriter.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Platform/Runtime/Object/Raise.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

/// The encoding of one byte: itself, or "%" and two digits.
struct Piece {
    std::array<char16_t, 3> units;
    char16_t length;
};

constexpr Piece escape(std::size_t byte) {
    return {{u'%', ascii::upperHexDigit<char16_t>(byte >> 4), ascii::upperHexDigit<char16_t>(byte)}, 3};
}

using Pieces = std::array<Piece, 256>;

/// The encoding of each byte; those above 127 are always escaped.
Pieces piecesOf(const NSCharacterSet &allowed) {
    Pieces pieces;
    for (std::size_t byte = 0; byte < pieces.size(); ++byte) {
        const auto unit = static_cast<char16_t>(byte);
        pieces[byte] = unit < 0x80 && allowed.characterIsMember(unit) ? Piece{{unit}, 1} : escape(byte);
    }
    return pieces;
}

/// Always copies three units, so that the copy needs no branch; returns the end of those that count.
char16_t *write(char16_t *out, const Piece &piece) {
    std::memcpy(out, piece.units.data(), sizeof piece.units);
    return out + piece.length;
}

} // namespace

Ref<NSString>
NSString::stringByAddingPercentEncodingWithAllowedCharacters(const Ref<NSCharacterSet> &allowed) const {
    runtime::checkObject("NSString stringByAddingPercentEncodingWithAllowedCharacters:", allowed);
    const Pieces pieces = piecesOf(*allowed);
    TextWriter encoded(units_.size() + units_.size() / 2);
    constexpr std::size_t blockLength = TextWriter::largestRoom / 9; // 3 bytes per unit, 3 units per byte
    for (std::size_t at = 0; at < units_.size();) {
        const std::size_t end = std::min(units_.size(), at + blockLength - 1); // a pair may reach beyond
        char16_t *out = encoded.room(TextWriter::largestRoom);
        while (at < end) {
            if (units_[at] < 0x80) {
                out = write(out, pieces[units_[at++]]);
                continue;
            }
            char bytes[4];
            const std::size_t count = unicode::encodeCharacter(units_, at, bytes);
            if (count == 0)
                return nullptr;
            for (const char byte : std::string_view(bytes, count))
                out = write(out, pieces[static_cast<std::uint8_t>(byte)]);
        }
        encoded.wrote(out);
    }
    return make<NSString>(encoded.take());
}

Ref<NSString> NSString::stringByRemovingPercentEncoding() const {
    const auto encoded = strictUTF8();
    if (!encoded)
        return nullptr;
    std::string bytes;
    bytes.reserve(encoded->size());
    for (std::size_t at = 0; at < encoded->size(); ++at) {
        if ((*encoded)[at] != '%') {
            bytes += (*encoded)[at];
            continue;
        }
        if (encoded->size() - at < 3)
            return nullptr;
        const auto high = ascii::hexDigitValue(static_cast<unsigned char>((*encoded)[at + 1]));
        const auto low = ascii::hexDigitValue(static_cast<unsigned char>((*encoded)[at + 2]));
        if (!high || !low)
            return nullptr;
        bytes += static_cast<char>(*high * 16 + *low);
        at += 2;
    }
    return stringWithUTF8String(bytes);
}
