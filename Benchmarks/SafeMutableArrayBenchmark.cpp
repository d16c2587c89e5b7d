// ZKSafeMutableArray beside the same array under a std::shared_mutex.
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"

#include <benchmark/benchmark.h>
#include <mutex>
#include <shared_mutex>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t elements = 64;

class LockedVector {
public:
    void addObject(const id &object) {
        const std::unique_lock guard(lock_);
        objects_.push_back(object);
    }
    id objectAtIndex(std::size_t index) const {
        const std::shared_lock guard(lock_);
        return index < objects_.size() ? objects_[index] : nullptr;
    }
    std::size_t count() const {
        const std::shared_lock guard(lock_);
        return objects_.size();
    }

private:
    mutable std::shared_mutex lock_;
    std::vector<id> objects_;
};

template <class Array>
const Ref<Array> &filled() {
    static const auto array = [] {
        auto made = std::make_shared<Array>();
        for (std::size_t i = 0; i < elements; ++i)
            made->addObject(make<NSObject>());
        return made;
    }();
    return array;
}

template <class Array>
void read(benchmark::State &state) {
    const auto &array = filled<Array>();
    // Every thread has elements of its own: the array is contended, the objects are not.
    const auto share = elements / static_cast<std::size_t>(state.threads());
    const auto first = share * static_cast<std::size_t>(state.thread_index());
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(array->objectAtIndex(first + i));
        i = (i + 1) % share;
    }
}
BENCHMARK_TEMPLATE(read, ZKSafeMutableArray)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK_TEMPLATE(read, LockedVector)->ThreadRange(1, 2)->UseRealTime();

template <class Array>
void addAndCount(benchmark::State &state) {
    const auto array = std::make_shared<Array>();
    const id object = make<NSObject>();
    for (auto _ : state) {
        array->addObject(object);
        benchmark::DoNotOptimize(array->count());
    }
}
BENCHMARK_TEMPLATE(addAndCount, ZKSafeMutableArray)->UseRealTime();
BENCHMARK_TEMPLATE(addAndCount, LockedVector)->UseRealTime();

} // namespace

int main(int argc, char **argv) {
    // From the first thread on references are counted atomically, as in every real program.
    std::thread([] {}).join();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
