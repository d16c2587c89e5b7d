// The objects that a walk through models is in the middle of, on its thread. Asked before each step, it keeps
// a walk through objects that lead back to themselves, or that nest without end, from going on for ever.
#pragma once

#include "Platform/Runtime/NSObject.h"

namespace qn {

/// How deep models and collections are walked.
inline constexpr int deepestVisit = 512;

/// For as long as a walk is at the object, or at both of a pair. `Walk` is a type of one's own for each kind
/// of walk.
template <class Walk>
class ModelVisit {
public:
    explicit ModelVisit(const NSObject &object, const NSObject *other = nullptr)
        : object_(&object), other_(other), outer_(innermost), depth_(outer_ ? outer_->depth_ + 1 : 1) {
        for (const ModelVisit *each = outer_; each; each = each->outer_)
            repeated_ |= each->object_ == object_ && each->other_ == other_;
        innermost = this;
    }
    ModelVisit(const ModelVisit &) = delete;
    ModelVisit &operator=(const ModelVisit &) = delete;
    ~ModelVisit() { innermost = outer_; }

    /// Whether the walk is within a visit of the same.
    bool isRepeated() const { return repeated_; }
    bool isTooDeep() const { return depth_ > deepestVisit; }
    bool goesOn() const { return !repeated_ && !isTooDeep(); }

private:
    static inline thread_local ModelVisit *innermost = nullptr;

    const NSObject *const object_;
    const NSObject *const other_;
    ModelVisit *const outer_;
    const int depth_;
    bool repeated_ = false;
};

} // namespace qn
