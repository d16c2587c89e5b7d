// Releases the elements of a collection that is destroyed. Destructors of nested collections call each other;
// here they do so 64 levels deep at most and the rest goes by a list, so that no nesting exhausts the stack.
//
// Threads: safe from any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <new>
#include <vector>

namespace collections {

/// The destructors of collections running on this thread, each called by the one before.
class Ends {
public:
    /// For destructors: releases the elements, at the latest when the outermost destructor returns.
    /// `keep(list, element)` moves all objects that an element owns to the list.
    template <class Element, class Keep>
    static void letGo(std::vector<Element> &elements, const Keep &keep) noexcept {
        if (elements.empty() || (levels >= mostLevels && postpone(elements, keep)))
            return;
        ++levels;
        elements.clear();
        --levels;
        if (postponed && levels == 0)
            letPostponedGo();
    }

private:
    static constexpr unsigned mostLevels = 64;

    template <class Element, class Keep>
    static bool postpone(std::vector<Element> &elements, const Keep &keep) noexcept {
        try {
            std::vector<id> kept;
            for (Element &element : elements)
                keep(kept, element);
            if (!postponed)
                postponed = new std::vector<std::vector<id>>;
            postponed->push_back(std::move(kept));
            return true;
        } catch (const std::bad_alloc &) {
            return false; // then the stack has to suffice
        }
    }
    static void letPostponedGo() noexcept;

    static inline thread_local constinit unsigned levels = 0;
    static inline thread_local constinit std::vector<std::vector<id>> *postponed = nullptr;
};

} // namespace collections
