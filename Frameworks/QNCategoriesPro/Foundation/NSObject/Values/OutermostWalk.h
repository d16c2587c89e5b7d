// What a walk through models knows, from its outermost step to the end of that.
#pragma once

#include <optional>

namespace qn {

/// Gives the thread a `Walk` unless one is under way on it already. `Walk` has a thread-local pointer named
/// `underWay`.
template <class Walk>
class OutermostWalk {
public:
    OutermostWalk() {
        if (!Walk::underWay)
            Walk::underWay = &own_.emplace();
    }
    OutermostWalk(const OutermostWalk &) = delete;
    OutermostWalk &operator=(const OutermostWalk &) = delete;
    ~OutermostWalk() {
        if (own_)
            Walk::underWay = nullptr;
    }

    Walk *operator->() const { return Walk::underWay; }

private:
    std::optional<Walk> own_;
};

} // namespace qn
