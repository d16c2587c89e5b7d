#include "Platform/Foundation/Collections/CollectionEnds.h"

#include <memory>

void collections::Ends::letPostponedGo() noexcept {
    const std::unique_ptr<std::vector<std::vector<id>>> owner(postponed);
    ++levels; // so that collections postponed meanwhile only join the list
    while (!postponed->empty()) {
        const auto going = std::move(postponed->back());
        postponed->pop_back();
    }
    --levels;
    postponed = nullptr;
}
