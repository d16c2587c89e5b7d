#include "Platform/Transport/usb/StatusText.h"

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <string_view>

namespace transport {

namespace {

constexpr uint8_t noError = 0x08, selected = 0x10, paperEmpty = 0x20;
constexpr int normal = 3, notNormal = 2;

bool isBetween(char byte, int lowest, int highest) {
    const int value = static_cast<unsigned char>(byte);
    return value >= lowest && value <= highest;
}

/// How many bytes the character takes that the text begins with; 0 when they are not UTF-8.
size_t lengthOfCharacter(std::string_view text) {
    struct Form {
        int lowestFirst, highestFirst, lowestSecond, highestSecond;
        size_t length;
    };
    static constexpr Form forms[] = {
        {0x00, 0x7F, 0x00, 0xFF, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
        {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
        {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4}};
    for (const Form &form : forms) {
        if (!isBetween(text[0], form.lowestFirst, form.highestFirst) || text.size() < form.length) {
            continue;
        }
        bool fits = form.length == 1 || isBetween(text[1], form.lowestSecond, form.highestSecond);
        for (size_t i = 2; i < form.length; ++i) {
            fits = fits && isBetween(text[i], 0x80, 0xBF);
        }
        return fits ? form.length : 0;
    }
    return 0;
}

std::string validUtf8(std::string_view text) {
    std::string valid;
    while (!text.empty()) {
        const size_t length = lengthOfCharacter(text);
        valid += length > 0 ? text.substr(0, length) : "\uFFFD";
        text.remove_prefix(length > 0 ? length : 1);
    }
    return valid;
}

} // namespace

std::string statusText(uint8_t portStatus, const DeviceId &id) {
    const bool ready = (portStatus & (noError | selected | paperEmpty)) == (noError | selected);
    boost::json::object fields;
    for (const auto &[key, value] : id) {
        fields[validUtf8(key)] = validUtf8(value);
    }
    return boost::json::serialize(boost::json::object{{"printer_status", ready ? normal : notNormal},
                                                      {"selected", (portStatus & selected) != 0},
                                                      {"paper_empty", (portStatus & paperEmpty) != 0},
                                                      {"error", (portStatus & noError) == 0},
                                                      {"device_id", fields}});
}

} // namespace transport
