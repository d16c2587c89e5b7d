#include "Frameworks/QNCategoriesPro/Foundation/NSObject/ModelVisit.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/PropertyValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/_QNModelMeta.h"
#include "Platform/Foundation/NSNull.h"

#include <algorithm>
#include <unordered_map>

namespace {

using HashVisit = qn::ModelVisit<struct Hash>;
using EqualityVisit = qn::ModelVisit<struct Equality>;

/// The hashes of models within models that the comparison under way on this thread has met: every level of it
/// asks for all of those below.
class KnownHashes {
public:
    KnownHashes() = default;
    KnownHashes(const KnownHashes &) = delete;
    KnownHashes &operator=(const KnownHashes &) = delete;
    /// Forgets with the outermost comparison.
    ~KnownHashes() {
        if (!EqualityVisit::isUnderWay())
            hashes.clear();
    }

    static inline thread_local std::unordered_map<id, NSUInteger> hashes;
    /// Counts the models that were left out. What holds one has another hash elsewhere, so it is not kept.
    static inline thread_local std::uint64_t leftOut = 0;
};

bool isOfFoundation(const NSObject &object) {
    return object.isKindOfClass(NSNull::class_()) ||
           qn::foundationKindOf(object.isa()) != qn::FoundationKind::None;
}

/// The properties of the class that key-value coding reads.
std::vector<const _QNModelPropertyMeta *> comparedProperties(const _QNModelMeta &meta) {
    std::vector<const _QNModelPropertyMeta *> properties;
    for (const id &property : meta._allPropertyMetas)
        if (const auto *each = static_cast<const _QNModelPropertyMeta *>(property.get());
            each->_isKVCCompatible)
            properties.push_back(each);
    return properties;
}

bool areEqual(const id &value, const id &other) {
    return value == other || (value && other && value->isEqual(other));
}

} // namespace

NSUInteger qn::modelHash(const id &model) {
    if (!model)
        return 0;
    if (isOfFoundation(*model))
        return model->hash();
    if (!HashVisit::admits(*model)) {
        ++KnownHashes::leftOut;
        return 0;
    }
    auto &known = KnownHashes::hashes;
    if (const auto found = known.find(model); found != known.end())
        return found->second;
    const bool isKept = EqualityVisit::isUnderWay() && HashVisit::isUnderWay();
    const auto leftOut = KnownHashes::leftOut;
    const HashVisit visit(*model);
    const auto meta = _QNModelMeta::metaWithClass(model->isa()); // keeps the properties
    const auto properties = comparedProperties(*meta);
    NSUInteger hash = properties.empty() ? reinterpret_cast<NSUInteger>(model.get()) : 0;
    for (const auto *property : properties)
        if (const id value = valueOfProperty(*model, *property))
            hash ^= value->hash();
    if (isKept && leftOut == KnownHashes::leftOut)
        known.emplace(model, hash);
    return hash;
}

bool qn::modelIsEqual(const id &model, const id &other) {
    if (model == other)
        return true;
    if (!model || !other || model->isa() != other->isa())
        return false;
    if (isOfFoundation(*model))
        return model->isEqual(other);
    if (!EqualityVisit::admits(*model, other.get()))
        return EqualityVisit::isWithin(*model, other.get());
    const KnownHashes hashes;
    const EqualityVisit visit(*model, other.get());
    if (model->hash() != other->hash())
        return false;
    const auto meta = _QNModelMeta::metaWithClass(model->isa());
    const auto properties = comparedProperties(*meta);
    return std::ranges::all_of(properties, [&](const auto *property) {
        return areEqual(valueOfProperty(*model, *property), valueOfProperty(*other, *property));
    });
}
