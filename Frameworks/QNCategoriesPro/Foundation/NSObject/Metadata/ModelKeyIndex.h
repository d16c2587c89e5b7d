// Finds the properties of a key, as the mapper's dictionary does, but without a virtual call a comparison:
// every entry of every dictionary that is mapped asks here.
//
// Immutable; any thread.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

#include <vector>

namespace qn {

class ModelKeyIndex {
public:
    /// Of none for no entries. Keys that are no texts are left out: no JSON has them.
    explicit ModelKeyIndex(const Ref<NSDictionary> &mapper);

    struct Slot {
        NSUInteger hash = 0;
        const NSString *key = nullptr;              ///< null when free
        const _QNModelPropertyMeta *head = nullptr; ///< the first property of the key's chain
    };

    /// The slot of the key, or null. Valid as long as the mapper lives.
    const Slot *find(const NSString &key) const;

    /// Slots are numbered from 0 on.
    NSUInteger size() const { return slots_.size(); }
    NSUInteger numberOf(const Slot &slot) const { return static_cast<NSUInteger>(&slot - slots_.data()); }

private:
    std::vector<Slot> slots_; // a power of two, at most half full
};

} // namespace qn
