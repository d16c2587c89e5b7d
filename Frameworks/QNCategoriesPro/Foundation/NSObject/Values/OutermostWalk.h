// State that all steps of a walk through models share, from the outermost call to its end.
#pragma once

#include <optional>

namespace qn {

/// Gives the thread a `Walk` unless one is under way there already. `Walk` has a static thread-local pointer
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
