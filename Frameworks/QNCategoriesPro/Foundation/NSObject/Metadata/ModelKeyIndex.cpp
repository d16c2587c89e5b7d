#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelKeyIndex.h"

#include <bit>
#include <cstring>

namespace {

bool same(const std::u16string &a, const std::u16string &b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0;
}

} // namespace

qn::ModelKeyIndex::ModelKeyIndex(const Ref<NSDictionary> &mapper)
    : slots_(std::bit_ceil(2 * (mapper ? mapper->count() : 0) + 1)) {
    if (!mapper)
        return;
    for (const auto &[key, head] : mapper->allEntries()) {
        const auto *text = peek<NSString>(key);
        if (!text)
            continue;
        NSUInteger slot = text->hash();
        while (slots_[slot % slots_.size()].key)
            ++slot;
        slots_[slot % slots_.size()] = {text->hash(), text, peek<_QNModelPropertyMeta>(head)};
    }
}

const qn::ModelKeyIndex::Slot *qn::ModelKeyIndex::find(const NSString &key) const {
    const NSUInteger hash = key.hash(), mask = slots_.size() - 1;
    for (NSUInteger slot = hash & mask; slots_[slot].key; slot = (slot + 1) & mask)
        if (slots_[slot].hash == hash && same(slots_[slot].key->units(), key.units()))
            return &slots_[slot];
    return nullptr;
}
