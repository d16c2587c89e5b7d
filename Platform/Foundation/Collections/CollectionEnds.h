// How collections let go of what they hold when they end: collections may nest deeper than their destructors
// could within one another.
//
// Threads: any.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <new>
#include <vector>

namespace collections {

/// The collections that are ending on the thread, each because the one before has let it go.
class Ends {
public:
    /// For destructors: lets the objects go, by the time that the outermost collection has ended. `keep` puts
    /// all that an element keeps alive into a list.
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
            return false; // the stack has to do
        }
    }
    static void letPostponedGo() noexcept;

    static inline thread_local constinit unsigned levels = 0;
    static inline thread_local constinit std::vector<std::vector<id>> *postponed = nullptr;
};

} // namespace collections
