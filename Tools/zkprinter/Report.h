// A report of named facts, printed as text for people or as JSON.
#pragma once

#include "Tools/zkprinter/Commands.h"
#include "Tools/zkprinter/Failure.h"
#include "Tools/zkprinter/Json.h"
#include "Tools/zkprinter/SerialNumbers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

using Lines = std::vector<std::string>;

/// Shown to people in larger units.
struct ByteCount {
    std::uint64_t bytes;
};

/// The value of a fact; std::monostate: not known, or there is none.
using FactValue = std::variant<std::monostate, bool, std::int64_t, ByteCount, std::string, Lines>;

struct Fact {
    std::string name;
    FactValue value;
};

using Facts = std::vector<Fact>;

/// One topic of a report: facts, several things of a kind with facts of each, or plain lines.
struct Section {
    std::string name;
    std::variant<Facts, std::vector<Facts>, Lines> content;
    bool tellsOfPrinters =
        true; ///< false: no known serial number is looked for, which may look like a version
};

/// The sentence of the failure, as UTF-8 whatever the user typed.
std::string sentenceOf(const Failure &failure);

/// Writes the failure as the object "error".
void describe(Json &json, const Failure &failure);

/// Prints the sections; `serials` are hidden in every text. JSON also gets the failure, if there is one.
void printReport(const std::vector<Section> &sections, const SerialNumbers &serials, Format format,
                 const std::optional<Failure> &failure);
