// Drives a fuzz target through its seeds and a bounded number of mutations of them. What ends it badly is
// shown in hexadecimal.
//
// Usage: fuzz_NAME SEED_FOLDER ROUNDS
#include "Tests/Fuzz/FuzzTarget.h"
#include "Tests/Support/Random.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>

namespace {

constexpr unsigned seed = 1284;
std::string current;

void show(int) {
    std::fprintf(stderr, "seed %u, input:", seed);
    for (const char byte : current)
        std::fprintf(stderr, " %02X", static_cast<unsigned char>(byte));
    std::fprintf(stderr, "\n");
}

void run(std::string bytes) {
    current = std::move(bytes);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(current.data()), current.size());
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::fprintf(stderr, "Usage: %s SEED_FOLDER ROUNDS\n", argv[0]);
        return 2;
    }
    std::signal(SIGABRT, show);
    std::set<std::string> found = {""}; // in an order of their own, not the folder's
    for (const auto &entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream stream(entry.path(), std::ios::binary);
        found.emplace(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    const std::vector<std::string> seeds(found.begin(), found.end());
    for (const std::string &bytes : seeds)
        run(bytes);
    Random random(seed);
    for (long rounds = std::strtol(argv[2], nullptr, 10); rounds > 0; --rounds) {
        std::string bytes = random.of(seeds);
        if (random.oneIn(3)) { // what comes from elsewhere
            const std::string &other = random.of(seeds);
            bytes.insert(random.below(bytes.size() + 1), other, 0, random.below(other.size() + 1));
        }
        run(random.mutated(std::move(bytes), {"\0\1\x7F\x80\xAC\xFF%;:/\"\\", 12}));
    }
    return 0;
}
