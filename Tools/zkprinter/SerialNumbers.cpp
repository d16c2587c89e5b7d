#include "Tools/zkprinter/SerialNumbers.h"

#include "Platform/Foundation/NSLog.h"

#include <algorithm>

namespace {

constexpr std::size_t shortest = 8; // of which some characters may be shown
constexpr std::string_view uriItem = "serial=";
constexpr std::string_view uriItemEnds = "&#\"' \t\r\n";

bool isPlain(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

bool isWordCharacter(char character) {
    return isPlain(character) || static_cast<unsigned char>(character) >= 0x80;
}

bool isWord(std::string_view text, std::size_t at, std::size_t length) {
    return (at == 0 || !isWordCharacter(text[at - 1])) &&
           (at + length == text.size() || !isWordCharacter(text[at + length]));
}

void hideInURIs(std::string &text) {
    for (std::size_t at = 0; (at = text.find(uriItem, at)) != std::string::npos;) {
        at += uriItem.size();
        const std::size_t length = std::min(text.find_first_of(uriItemEnds, at), text.size()) - at;
        const std::string shown = SerialNumbers::shortened(std::string_view(text).substr(at, length));
        text.replace(at, length, shown);
        at += shown.size();
    }
}

void hideOne(std::string &text, const std::string &serial) {
    const std::string shown = SerialNumbers::shortened(serial);
    for (std::size_t at = 0; (at = text.find(serial, at)) != std::string::npos;) {
        if (serial.size() < shortest && !isWord(text, at, serial.size())) {
            ++at;
            continue;
        }
        text.replace(at, serial.size(), shown);
        at += shown.size();
    }
}

} // namespace

std::string SerialNumbers::shortened(std::string_view serial) {
    if (serial.empty())
        return {};
    const bool showsEnds = serial.size() >= shortest && std::ranges::all_of(serial, isPlain);
    return showsEnds ? std::string(serial.substr(0, 3)) + "…" + std::string(serial.substr(serial.size() - 2))
                     : "…";
}

void SerialNumbers::add(const std::string &serial) {
    for (const std::string &form : {serial, escapedControlCharacters(serial)})
        if (!form.empty() && std::ranges::find(known_, form) == known_.end())
            known_.push_back(form);
    std::ranges::stable_sort(known_, std::ranges::greater(), &std::string::size);
}

std::string SerialNumbers::hide(std::string text) const {
    hideInURIs(text);
    for (const std::string &serial : known_)
        hideOne(text, serial);
    return text;
}
