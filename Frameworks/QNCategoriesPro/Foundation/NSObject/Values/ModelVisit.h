// The objects that a walk through models is in the middle of, on its thread. Asked before each step, it keeps
// a walk through objects that lead back to themselves, or that nest without end, from going on for ever.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

namespace qn {

/// How deep models, collections and dictionaries are walked.
inline constexpr int deepestModels = 512;

/// For as long as a walk is at the object, or at both of a pair. `Walk` is a type of one's own for each kind
/// of walk.
///
///     using Visit = qn::ModelVisit<struct Writing>;
///     if (Visit::admits(*object)) {
///         const Visit visit(*object);
///         ...
template <class Walk>
class ModelVisit {
public:
    explicit ModelVisit(const NSObject &object, const NSObject *other = nullptr)
        : object_(&object), other_(other), outer_(innermost), depth_(depth() + 1) {
        innermost = this;
    }
    ModelVisit(const ModelVisit &) = delete;
    ModelVisit &operator=(const ModelVisit &) = delete;
    ~ModelVisit() { innermost = outer_; }

    /// Whether the thread is within any visit.
    static bool isUnderWay() { return innermost != nullptr; }
    /// Whether the walk is within a visit of the same.
    static bool isWithin(const NSObject &object, const NSObject *other = nullptr) {
        for (const ModelVisit *each = innermost; each; each = each->outer_)
            if (each->object_ == &object && each->other_ == other)
                return true;
        return false;
    }
    /// Whether the walk may go there.
    static bool admits(const NSObject &object, const NSObject *other = nullptr) {
        return depth() < deepestModels && !isWithin(object, other);
    }

private:
    static inline thread_local ModelVisit *innermost = nullptr;
    static int depth() { return innermost ? innermost->depth_ : 0; }

    const NSObject *const object_;
    const NSObject *const other_;
    ModelVisit *const outer_;
    const int depth_;
};

} // namespace qn
