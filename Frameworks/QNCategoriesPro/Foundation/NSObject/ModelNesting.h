// The dictionaries that the thread is filling models with, each in the middle of the one before.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/ModelSetting.h"

namespace qn {

/// For as long as the dictionary is being mapped.
class ModelNesting {
public:
    explicit ModelNesting(const NSDictionary &dictionary)
        : dictionary_(&dictionary), outer_(innermost), depth_(outer_ ? outer_->depth_ + 1 : 1) {
        innermost = this;
    }
    ModelNesting(const ModelNesting &) = delete;
    ModelNesting &operator=(const ModelNesting &) = delete;
    ~ModelNesting() { innermost = outer_; }

    /// Whether the dictionary may be mapped now.
    static bool admits(const NSObject &dictionary) {
        if (innermost && innermost->depth_ >= deepestModels)
            return false;
        for (const ModelNesting *each = innermost; each; each = each->outer_)
            if (each->dictionary_ == &dictionary)
                return false;
        return true;
    }

private:
    static inline thread_local ModelNesting *innermost = nullptr;

    const NSDictionary *const dictionary_;
    ModelNesting *const outer_;
    const int depth_;
};

} // namespace qn
