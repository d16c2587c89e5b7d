// The models that a comparison has found equal, or is about to: what is asked of two of them again, there or
// within themselves, is answered already.
//
// They are kept as sets of equal ones, so that comparing takes as many steps as there are models, however
// many ways lead to each. When two turn out to differ, all that was concluded since they were begun with is
// forgotten.
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
    /// Puts the sets of both together; false when they are one already.
    bool join(const id &model, const id &other);
    void forgetSince(std::size_t joins);

    std::unordered_map<const NSObject *, id> parents_; // of each model but one of a set, another one of it
    std::vector<id> joined_;                           // those with parents, in the order they got them
    int depth_ = 0;
};

} // namespace qn
