// Serial numbers, made unrecognisable in texts that leave the computer.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class SerialNumbers {
public:
    /// "SN00012345" as "SN0…45"; one that is shorter than 8 characters, or has other characters than
    /// ASCII letters and digits, as "…".
    static std::string shortened(std::string_view serial);

    /// Remembers a serial number to hide wherever it occurs, in capitals or not, percent-encoded or escaped
    /// as in JSON; short ones as whole words only, and those under 4 bytes only behind a word for a serial
    /// number.
    void add(const std::string &serial);

    /// The text with every remembered number shortened, and whatever stands behind a word for a serial number
    /// ("sn", "S/N", "Serial No.", "serialNumber", "SERN", "número de serie"), in a URI, a device ID, JSON,
    /// XML or plain text. Nothing is left of a text whose escapes are nested beyond all use.
    std::string hide(std::string_view text) const;

private:
    struct Known {
        std::string serial, folded;
    };
    std::vector<Known> known_; // the longest first, so that none is hidden in part
};

/// The text without addresses in memory: "<ZKUSB: 0x…>".
std::string withoutAddresses(std::string_view text);
