// The hashes of the models that a walk meets, each found once.
//
// Models that lead back to one another form a group, and add nothing to each other's hash. So a model's hash
// is the same wherever the walk begins, and a comparison may ask for those of all models within what it
// compares. Groups are told apart as Tarjan's algorithm does: a model that is met while it is still open
// belongs to the group of whatever met it.
//
// Threads: one at a time.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/OutermostWalk.h"

#include <unordered_map>
#include <vector>

namespace qn {

class ModelHashes {
public:
    static inline thread_local ModelHashes *underWay = nullptr;

    /// What the model adds to whoever asks: its hash; 0 where it leads back to that or lies too deep.
    NSUInteger hash(const id &model, const _QNModelMeta &meta);

private:
    struct Met {
        NSUInteger hash = 0;
        NSUInteger order = 0; ///< in which models are met, from 1 on
        bool isOpen = true;   ///< its group may have more members
    };
    class Visit;

    std::unordered_map<id, Met> met_; // keeps the models: getters may make new ones
    std::vector<Met *> open_;         // in their order
    NSUInteger lowest_ = 0;           // the first of those that the model being visited has led back to
    int depth_ = 0;
};

} // namespace qn
