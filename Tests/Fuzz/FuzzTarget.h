// One fuzz target: takes any bytes. Each has a file of its own, NameFuzz.cpp, and a folder of seeds,
// corpus/name.
//
// In the tests, FuzzRounds.cpp feeds it a bounded number of mutated seeds, the same ones each time. With the
// preset "fuzz" libFuzzer drives it for as long as one likes:
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     build/fuzz/bin/fuzz_device_id -max_total_time=600 NEW_FOLDER Tests/Fuzz/corpus/device_id
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// What holds whatever the bytes are.
inline void alwaysHolds(bool condition) {
    if (!condition)
        std::abort();
}

/// Takes numbers and texts off the front of the bytes; zeros behind their end.
class FuzzBytes {
public:
    FuzzBytes(const std::uint8_t *data, std::size_t size) : data_(data), size_(size) {}

    bool empty() const { return size_ == 0; }
    std::uint8_t byte() {
        if (size_ == 0)
            return 0;
        --size_;
        return *data_++;
    }
    std::size_t below(std::size_t limit) { return byte() % limit; }

private:
    const std::uint8_t *data_;
    std::size_t size_;
};
