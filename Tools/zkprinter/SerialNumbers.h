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

    /// Remembers a serial number to hide wherever it occurs; short ones as whole words only.
    void add(const std::string &serial);

    /// The text with every remembered number, and that of every device URI and device ID, shortened.
    std::string hide(std::string text) const;

private:
    std::vector<std::string> known_; // the longest first, so that none is hidden in part
};
