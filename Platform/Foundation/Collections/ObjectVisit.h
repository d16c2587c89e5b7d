// The objects that a walk is in the middle of, on its thread. Asked before each step, it keeps a walk through
// objects that lead back to themselves, or that nest without end, from going on for ever.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

/// How deep what recurses walks.
inline constexpr int deepestVisits = 512;

/// For as long as a walk is at the object, or at both of a pair. `Walk` is a type of one's own for each kind
/// of walk.
///
///     using Visit = ObjectVisit<struct Writing>;
///     if (Visit::admits(*object)) {
///         const Visit visit(*object);
///         ...
template <class Walk>
class ObjectVisit {
public:
    explicit ObjectVisit(const NSObject &object, const NSObject *other = nullptr)
        : object_(&object), other_(other), outer_(innermost), depth_(depth() + 1) {
        innermost = this;
    }
    ObjectVisit(const ObjectVisit &) = delete;
    ObjectVisit &operator=(const ObjectVisit &) = delete;
    ~ObjectVisit() { innermost = outer_; }

    /// Whether the thread is within any visit.
    static bool isUnderWay() { return innermost != nullptr; }
    /// Whether the walk is within a visit of the same.
    static bool isWithin(const NSObject &object, const NSObject *other = nullptr) {
        return isWithinAny(
            [&](const ObjectVisit &each) { return each.object_ == &object && each.other_ == other; });
    }
    /// Whether the walk is within a visit of the object, be it alone or one of a pair.
    static bool involves(const NSObject &object) {
        return isWithinAny(
            [&](const ObjectVisit &each) { return each.object_ == &object || each.other_ == &object; });
    }
    /// Whether the walk may go there.
    static bool admits(const NSObject &object, const NSObject *other = nullptr) {
        return depth() < deepestVisits && !isWithin(object, other);
    }

private:
    static inline thread_local constinit ObjectVisit *innermost = nullptr;
    static int depth() { return innermost ? innermost->depth_ : 0; }
    template <class Matches>
    static bool isWithinAny(const Matches &matches) {
        for (const ObjectVisit *each = innermost; each; each = each->outer_)
            if (matches(*each))
                return true;
        return false;
    }

    const NSObject *const object_;
    const NSObject *const other_;
    ObjectVisit *const outer_;
    const int depth_;
};
