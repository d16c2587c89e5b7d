#include "Frameworks/QNCategoriesPro/RandomIndex.h"

#include <random>

NSUInteger qn::randomIndex(NSUInteger bound) {
    thread_local std::mt19937_64 generator(std::random_device{}());
    return std::uniform_int_distribution<NSUInteger>(0, bound - 1)(generator);
}
