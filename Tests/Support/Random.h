// Chance that is the same in every run; what fails tells the seed.
#pragma once

#include "Tests/Support/Testing.h"

#include <random>

class Random : public std::mt19937_64 {
public:
    explicit Random(unsigned seed)
        : std::mt19937_64(seed), trace_(__FILE__, __LINE__, "seed " + std::to_string(seed)) {}

    std::size_t below(std::size_t bound) { return (*this)() % bound; }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    template <class Choices>
    const auto &of(const Choices &choices) {
        return std::data(choices)[below(std::size(choices))];
    }

    /// Fewer than `bound` of the pieces, one behind another.
    template <class Text = std::string, class Pieces>
    Text text(const Pieces &pieces, std::size_t bound) {
        Text made;
        for (std::size_t count = below(bound); count > 0; --count)
            made += of(pieces);
        return made;
    }

    std::string bytes(std::size_t count) {
        std::string made(count, '\0');
        for (char &byte : made)
            byte = static_cast<char>((*this)());
        return made;
    }

    /// The bytes with up to three places overwritten, cut out or added to, half of them with one of `pieces`.
    std::string mutated(std::string bytes, std::string_view pieces) {
        for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
            const bool overwrites = below(2);
            bytes.replace(below(bytes.size() + 1), overwrites ? 1 : below(4), overwrites || below(2),
                          below(2) ? of(pieces) : static_cast<char>(below(256)));
        }
        return bytes;
    }

private:
    const testing::ScopedTrace trace_;
};
