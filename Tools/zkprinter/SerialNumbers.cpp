#include "Tools/zkprinter/SerialNumbers.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Platform/Foundation/NSLog.h"
#include "Platform/Foundation/NSString.h"

#include <algorithm>

namespace {

constexpr std::size_t shortest = 8; // of which some characters may be shown

/// Where a serial number stands, known or not: what comes before it, and what ends it.
constexpr struct Place {
    std::string_view before, ends;
} places[] = {{"serial=", "&#\" \t\r\n"}, // in a device URI
              {"\"SN\":\"", "\""},        // in the device ID that a status tells
              {"\"SERN\":\"", "\""},
              {"\"SERIALNUMBER\":\"", "\""}};

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

std::size_t lengthUntil(std::string_view ends, std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && ends.find(text[length]) == std::string_view::npos)
        length += text[length] == '\\' ? 2U : 1U; // what is escaped ends nothing
    return std::min(length, text.size());
}

/// A known number may hold what ends an unknown one.
std::size_t lengthOfFirst(const std::vector<std::string> &longestFirst, std::string_view text) {
    const auto found =
        std::ranges::find_if(longestFirst, [&](const auto &known) { return text.starts_with(known); });
    return found == longestFirst.end() ? 0 : found->size();
}

void hideAt(const Place &place, std::string &text, const std::vector<std::string> &known) {
    for (std::size_t at = 0; (at = text.find(place.before, at)) != std::string::npos;) {
        at += place.before.size();
        const std::string_view rest = std::string_view(text).substr(at);
        const std::size_t length = std::max(lengthUntil(place.ends, rest), lengthOfFirst(known, rest));
        const std::string shown = SerialNumbers::shortened(rest.substr(0, length));
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
    const auto inURIs = qn::URLEncode(NSString::stringWithUTF8String(serial));
    for (const std::string &form :
         {serial, escapedControlCharacters(serial), inURIs ? inURIs->utf8() : std::string()})
        if (!form.empty() && std::ranges::find(known_, form) == known_.end())
            known_.push_back(form);
    std::ranges::stable_sort(known_, std::ranges::greater(), &std::string::size);
}

std::string SerialNumbers::hide(std::string text) const {
    for (const Place &place : places)
        hideAt(place, text, known_);
    for (const std::string &serial : known_)
        hideOne(text, serial);
    return text;
}
