// The sort of the collections: a stable merge sort.
//
// Comparators come from callers and may contradict themselves or raise. The standard sorts may then access
// memory outside the range or lose elements; merging from one list into another does neither. Two runs that
// are in order already take one comparison.
#pragma once

#include <algorithm>
#include <iterator>
#include <vector>

/// The sorted elements; `descending(earlier, later)` returns whether the two must change places.
template <class T, class Descending>
std::vector<T> stableSorted(std::vector<T> elements, const Descending &descending) {
    const std::size_t count = elements.size();
    std::vector<T> merged(count);
    const auto move = [](auto position) { return std::make_move_iterator(position); };
    for (std::size_t width = 1; width < count; width *= 2) {
        for (std::size_t start = 0; start < count; start += 2 * width) {
            const auto at = [&](auto &list, std::size_t index) {
                return list.begin() + static_cast<std::ptrdiff_t>(std::min(index, count));
            };
            const auto first = at(elements, start), middle = at(elements, start + width),
                       last = at(elements, start + 2 * width), out = at(merged, start);
            if (middle == last || !descending(*std::prev(middle), *middle))
                std::move(first, last, out);
            else
                std::merge(move(first), move(middle), move(middle), move(last), out,
                           [&](const T &later, const T &earlier) { return descending(earlier, later); });
        }
        elements.swap(merged);
    }
    return elements;
}
