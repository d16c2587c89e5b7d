// What every test is written in: checks and matchers, texts and lists, spans of time, threads.
#pragma once

// IWYU pragma: begin_exports
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>
// IWYU pragma: end_exports

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

using Lines = std::vector<std::string>;

/// The base of whatever undoes something at its end.
struct NoCopies {
    NoCopies() = default;
    NoCopies(const NoCopies &) = delete;
    NoCopies &operator=(const NoCopies &) = delete;
};

/// Waits for what another thread or process does, however slow the machine is.
inline void awaitThat(const std::function<bool()> &condition) {
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (!condition() && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    EXPECT_TRUE(condition()) << "waited in vain";
}
