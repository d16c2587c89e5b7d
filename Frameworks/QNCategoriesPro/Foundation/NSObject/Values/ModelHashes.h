// The hashes of the models that a walk meets, each computed once.
//
// Models that refer back to one another form a group and add nothing to each other's hash. So a model's hash
// is the same wherever the walk begins, and a comparison may use the hashes of all models within what it
// compares. Groups are the strongly connected components that Tarjan's algorithm finds: a model that is met
// while it is still open belongs to the group of the model that met it.
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

    /// What the model adds to the hash of the model that refers to it: its own hash; 0 where it refers back
    /// to that one, or lies more than 512 levels deep.
    NSUInteger hash(const id &model, const _QNModelMeta &meta);

private:
    struct Met {
        NSUInteger hash = 0;
        NSUInteger order = 0; ///< the number of the model in the order they are met, from 1 on
        bool isOpen = true;   ///< its group may have more members
    };
    class Visit;

    std::unordered_map<id, Met> met_; // keeps the models: getters may make new ones
    std::vector<Met *> open_;         // by their order
    NSUInteger lowest_ = 0;           // the lowest order that the model being visited refers back to
    int depth_ = 0;
};

} // namespace qn
