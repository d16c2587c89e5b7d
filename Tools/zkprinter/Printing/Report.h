// A report of named facts, printed as text for people or as JSON.
#pragma once

#include "Tools/zkprinter/Failures/Failure.h"
#include "Tools/zkprinter/Printing/Format.h"
#include "Tools/zkprinter/Printing/Json.h"
#include "Tools/zkprinter/Printing/SerialNumbers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

using Lines = std::vector<std::string>;

/// A number of bytes, shown to people in larger units.
struct ByteCount {
    std::uint64_t bytes;
};

/// The value of a fact; std::monostate when it is unknown or absent.
using FactValue = std::variant<std::monostate, bool, std::int64_t, ByteCount, std::string, Lines>;

struct Fact {
    std::string name;
    FactValue value;
};

using Facts = std::vector<Fact>;

/// One topic of a report: facts, a list of things with facts about each, or plain lines.
struct Section {
    std::string name;
    std::variant<Facts, std::vector<Facts>, Lines> content;
    bool tellsOfPrinters =
        true; ///< false: known serial numbers are not hidden here, as they may look like version numbers
};

/// The sentence of the failure, as valid UTF-8 whatever the user typed.
std::string sentenceOf(const Failure &failure);

/// Writes the fields "queue" and "deviceUri".
void describe(Json &json, const Subject &subject);

/// Writes the failure as the object "error", after the queue if it is about one.
void describe(Json &json, const Failure &failure);

/// Prints the sections, with the serial numbers hidden in every text. In JSON, the failure is added if there
/// is one.
void printReport(const std::vector<Section> &sections, const SerialNumbers &serials, Format format,
                 const std::optional<Failure> &failure);
