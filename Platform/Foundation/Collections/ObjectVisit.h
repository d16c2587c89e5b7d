// The objects that a recursive walk is visiting at the moment, per thread. Asked before each step, it ends
// walks through objects that contain themselves or nest too deeply.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

/// The deepest nesting of visits of one walk.
inline constexpr int deepestVisits = 512;

/// One visit to an object, or to a pair of objects that are compared; ends with the scope. `Walk` is a tag:
/// each kind of walk has its own.
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

    /// Whether any visit is under way on this thread.
    static bool isUnderWay() { return innermost != nullptr; }
    /// Whether the object (or the pair) is being visited.
    static bool isWithin(const NSObject &object, const NSObject *other = nullptr) {
        return isWithinAny(
            [&](const ObjectVisit &each) { return each.object_ == &object && each.other_ == other; });
    }
    /// Whether the object is being visited, alone or as one of a pair.
    static bool involves(const NSObject &object) {
        return isWithinAny(
            [&](const ObjectVisit &each) { return each.object_ == &object || each.other_ == &object; });
    }
    /// Whether the walk may visit the object: it is not being visited, and the walk is not too deep.
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

#pragma GCC visibility pop
