#include "Platform/Foundation/Text/ControlCharacters.h"

#include "Platform/Ascii/HexDigit.h"

#include <utility>

namespace {

void appendEscaped(std::string &out, unsigned code) {
    if (code == '\n')
        out += "\\n";
    else if (code == '\r')
        out += "\\r";
    else if (code == '\t')
        out += "\\t";
    else {
        out += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            out += ascii::upperHexDigit<char>(code >> shift);
    }
}

/// The code and byte count of the control character at the front of `rest`; 0 bytes without one. Beyond ASCII
/// these are C1 controls, line and paragraph separators, and the marks that change the direction of text.
std::pair<unsigned, std::size_t> controlAtFront(std::string_view rest) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(rest[i]); };
    if (byte(0) < 0x20 || byte(0) == 0x7F)
        return {byte(0), 1};
    if (byte(0) == 0xC2 && rest.size() > 1 && byte(1) >= 0x80 && byte(1) < 0xA0)
        return {byte(1), 2};
    if (byte(0) == 0xE2 && rest.size() > 2 && (byte(1) == 0x80 || byte(1) == 0x81)) {
        const unsigned code = 0x2000u + (byte(1) & 3u) * 64 + (byte(2) & 63u);
        if ((code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069))
            return {code, 3};
    }
    return {0, 0};
}

} // namespace

void appendWithEscapedControlCharacters(std::string &out, std::string_view text) {
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] >= ' ' && text[at] < 0x7F) { // most of every text
            ++at;
            continue;
        }
        const auto [code, length] = controlAtFront(text.substr(at));
        if (length) {
            out.append(text, plain, at - plain);
            appendEscaped(out, code);
            plain = at + length;
        }
        at += length ? length : 1;
    }
    out.append(text, plain);
}

std::string escapedControlCharacters(std::string_view utf8) {
    std::string out;
    appendWithEscapedControlCharacters(out, utf8);
    return out;
}
