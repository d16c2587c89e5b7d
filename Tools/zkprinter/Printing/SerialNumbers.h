// Hides serial numbers in texts that leave the computer. Not thread-safe while numbers are added.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class SerialNumbers {
public:
    /// "SN00012345" becomes "SN0…45"; one with fewer than 8 bytes, or with anything but ASCII letters and
    /// digits, becomes "…".
    static std::string shortened(std::string_view serial);

    /// Remembers a serial number to hide wherever it occurs, in upper or lower case, percent-encoded or
    /// escaped as in JSON; with fewer than 8 bytes only as a whole word. Numbers with fewer than 4 bytes are
    /// not remembered, as they occur in anything.
    void add(const std::string &serial);

    /// The text with every remembered number shortened, and also every value behind a word for a serial
    /// number ("sn", "S/N", "Serial No.", "serialNumber", "SERN", "número de serie"), in URIs, device IDs,
    /// JSON, XML and plain text. A text with more than 8 layers of escapes becomes "…" as a whole.
    std::string hide(std::string_view text) const;

private:
    struct Known {
        std::string serial, folded;
    };
    std::vector<Known> known_; // the longest first, so that none is hidden in part
};

/// The text without addresses in memory: "<ZKUSB: 0x…>".
std::string withoutAddresses(std::string_view text);
