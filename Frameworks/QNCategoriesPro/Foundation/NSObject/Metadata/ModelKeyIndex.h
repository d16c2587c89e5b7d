// Finds the properties of a key, as the mapper's dictionary does, but without virtual calls: it is asked for
// every entry of every dictionary that is mapped, which takes 0.95 times as long with it. The reader of texts
// needs its slots' numbers, too.
//
// Immutable; any thread.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

#include <vector>

namespace qn {

class ModelKeyIndex {
public:
    /// A mapper of none has no entries. Keys that are not texts are left out: JSON has none.
    explicit ModelKeyIndex(const Ref<NSDictionary> &mapper);

    struct Slot {
        NSUInteger hash = 0;
        const NSString *key = nullptr;              ///< null when free
        const _QNModelPropertyMeta *head = nullptr; ///< the first property of the key's chain
    };

    /// The slot of the key, or null. Valid as long as the mapper lives.
    const Slot *find(const NSString &key) const;

    /// The number of slots, which are numbered from 0.
    NSUInteger size() const { return slots_.size(); }
    NSUInteger numberOf(const Slot &slot) const { return static_cast<NSUInteger>(&slot - slots_.data()); }

private:
    std::vector<Slot> slots_; // a power of two, at most half full
};

} // namespace qn
