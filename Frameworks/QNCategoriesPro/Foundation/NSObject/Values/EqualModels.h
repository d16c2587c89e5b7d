// The pairs of models that the comparison under way has found equal, or is still comparing. When such a pair
// is met again, it counts as equal at once; so models that refer back to themselves end the comparison, too.
//
// They are kept as disjoint sets of equal models, so that the number of comparisons grows with the number of
// models and not with the number of ways to reach them. When two models turn out to differ, everything
// assumed since their comparison began is undone.
//
// Threads: one at a time.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/OutermostWalk.h"

#include <unordered_map>
#include <vector>

namespace qn {

class EqualModels {
public:
    static inline thread_local EqualModels *underWay = nullptr;

    /// Whether two models of the class of the record are equal.
    bool areEqual(const id &model, const id &other, const _QNModelMeta &meta);

private:
    class Comparison;

    id setOf(const id &model) const;
    /// Unites the sets of both; false when they are one already.
    bool join(const id &model, const id &other);
    void forgetSince(std::size_t joins);

    std::unordered_map<const NSObject *, id>
        parents_;            // per set a tree: of each model but the root, another of the set
    std::vector<id> joined_; // the models with parents, in the order they got them
    int depth_ = 0;
};

} // namespace qn
