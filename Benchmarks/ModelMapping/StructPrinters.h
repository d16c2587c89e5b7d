// The document mapped by nlohmann-json from and to plain structures known when compiling. Dates are points in
// time; addresses stay texts.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

struct StructDate {
    std::time_t seconds;

    static StructDate read(const char *text);
    std::string text() const;
};

struct StructContact {
    std::int32_t identifier;
    std::string name, mail;
    bool active;
};

struct StructPrinter {
    bool enabled, shared;
    std::int8_t trays;
    std::uint8_t priority;
    std::int16_t offset;
    std::uint16_t port;
    std::int32_t jobs;
    std::uint32_t flags;
    std::int64_t balance;
    std::uint64_t printed;
    float density;
    double level;
    std::string name, model, location, queue, comment, state;
    StructDate installed;
    std::string address;
    StructContact contact;
    std::vector<std::string> tags;
};

struct StructPrinters {
    using Text = std::string;
    using Objects = std::vector<StructPrinter>;

    static Text text(const std::string &document) { return document; }
    static Objects read(const Text &text);
    static Text write(const Objects &objects);
    static std::size_t count(const Objects &objects) { return objects.size(); }
};
