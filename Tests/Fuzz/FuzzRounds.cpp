// Drives a fuzz target through its seeds and a bounded number of mutations of them. What ends it badly is
// shown in hexadecimal.
//
// Usage: fuzz_NAME SEED_FOLDER ROUNDS
#include "Tests/Fuzz/FuzzTarget.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr unsigned seed = 1284;
Bytes current;

void show(int) {
    std::fprintf(stderr, "seed %u, input:", seed);
    for (const std::uint8_t byte : current)
        std::fprintf(stderr, " %02X", byte);
    std::fprintf(stderr, "\n");
}

std::vector<Bytes> seedsIn(const char *folder) {
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<Bytes> seeds = {{}};
    for (const auto &file : files) {
        std::ifstream stream(file, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return seeds;
}

class Mutation {
public:
    explicit Mutation(std::vector<Bytes> seeds) : seeds_(std::move(seeds)) {}

    Bytes next() {
        Bytes bytes = seeds_[below(seeds_.size())];
        for (std::size_t edits = below(6); edits > 0; --edits)
            edit(bytes);
        return bytes;
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    Bytes::iterator place(Bytes &bytes) {
        return bytes.begin() + static_cast<std::ptrdiff_t>(below(bytes.size() + 1));
    }
    std::uint8_t value() {
        constexpr std::uint8_t telling[] = {0, 1, 0x7F, 0x80, 0xAC, 0xFF, '%', ';', ':', '/', '"', '\\'};
        return below(2) == 0 ? telling[below(std::size(telling))] : static_cast<std::uint8_t>(below(256));
    }
    void edit(Bytes &bytes) {
        const auto at = place(bytes);
        const std::size_t rest = static_cast<std::size_t>(bytes.end() - at);
        switch (below(5)) {
        case 0:
            bytes.insert(at, 1 + below(4), value());
            break;
        case 1:
            bytes.erase(at, at + static_cast<std::ptrdiff_t>(std::min(rest, 1 + below(4))));
            break;
        case 2: { // what comes from elsewhere
            const Bytes &other = seeds_[below(seeds_.size())];
            bytes.insert(at, other.begin(),
                         other.begin() + static_cast<std::ptrdiff_t>(below(other.size() + 1)));
            break;
        }
        default:
            if (rest > 0)
                *at = value();
        }
    }

    const std::vector<Bytes> seeds_;
    std::mt19937 random_{seed};
};

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::fprintf(stderr, "Usage: %s SEED_FOLDER ROUNDS\n", argv[0]);
        return 2;
    }
    std::signal(SIGABRT, show);
    const std::vector<Bytes> seeds = seedsIn(argv[1]);
    for (const Bytes &bytes : seeds) {
        current = bytes;
        LLVMFuzzerTestOneInput(current.data(), current.size());
    }
    Mutation mutation(seeds);
    for (long rounds = std::strtol(argv[2], nullptr, 10); rounds > 0; --rounds) {
        current = mutation.next();
        LLVMFuzzerTestOneInput(current.data(), current.size());
    }
    return 0;
}
