#include "Platform/Foundation/Collections/CollectionEquality.h"

#include "Platform/Foundation/Collections/CollectionArguments.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"

#include <algorithm>
#include <set>
#include <vector>

namespace {

/// One comparison of two ordinary collections with all that they contain. Pairs still to be compared are kept
/// in a list instead of on the stack, so the depth does not matter.
class Comparison {
public:
    template <class Collection>
    bool findsEqual(const Collection &one, const Collection &other) {
        bool equal = haveEqualParts(one, other);
        while (equal && !waiting_.empty()) {
            const Pair pair = std::move(waiting_.back());
            waiting_.pop_back();
            if (const auto *array = peek<NSArray>(pair.first))
                equal = haveEqualParts(*array, *peek<NSArray>(pair.second));
            else
                equal = haveEqualParts(*peek<NSDictionary>(pair.first), *peek<NSDictionary>(pair.second));
        }
        return equal;
    }

private:
    using Pair = std::pair<id, id>;

    // The first pairs are not noted in `met_`: most comparisons are small and meet no pair twice. A cycle is
    // only gone around until that many pairs were met.
    static constexpr std::size_t mostUnnoted = 1000;

    static bool isOrdinary(const NSArray &array) { return array.elements().has_value(); }
    static bool isOrdinary(const NSDictionary &dictionary) { return dictionary.table() != nullptr; }
    template <class Collection>
    static bool areOrdinary(const id &one, const id &other) {
        const auto *mine = peek<Collection>(one), *theirs = peek<Collection>(other);
        return mine && theirs && isOrdinary(*mine) && isOrdinary(*theirs);
    }

    bool haveEqualParts(const NSArray &one, const NSArray &other) {
        if (one.count() != other.count())
            return false;
        const auto mine = one.allObjects(), theirs = other.allObjects();
        return std::equal(mine.begin(), mine.end(), theirs.begin(), theirs.end(),
                          [this](const id &first, const id &second) { return mayBeEqual(first, second); });
    }
    bool haveEqualParts(const NSDictionary &one, const NSDictionary &other) {
        return one.count() == other.count() && std::ranges::all_of(one.allEntries(), [&](const auto &entry) {
                   return mayBeEqual(entry.second, other.objectForKey(entry.first));
               });
    }

    /// Compares the objects at once, or puts ordinary collections on the list; false when they differ.
    bool mayBeEqual(const id &one, const id &other) {
        const bool mustWait =
            one != other && (areOrdinary<NSArray>(one, other) || areOrdinary<NSDictionary>(one, other));
        if (!mustWait)
            return collections::equal(one, other);
        if (pairs_ >= mostUnnoted && !met_.emplace(one, other).second)
            return true; // the pair is on the list, or was found equal
        ++pairs_;
        waiting_.emplace_back(one, other);
        return true;
    }

    std::vector<Pair> waiting_;
    std::size_t pairs_ = 0; // put on the list so far
    std::set<Pair> met_;    // those after the first `mostUnnoted`
};

} // namespace

bool collections::areEqual(const NSArray &one, const NSArray &other) {
    return areEqual(one, other, [&] { return Comparison().findsEqual(one, other); });
}

bool collections::areEqual(const NSDictionary &one, const NSDictionary &other) {
    return areEqual(one, other, [&] { return Comparison().findsEqual(one, other); });
}
