#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelHashes.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

#include <algorithm>

namespace {

NSUInteger hashOfValues(const NSObject &model, const _QNModelMeta &meta) {
    if (meta._comparedPropertyMetas.empty())
        return reinterpret_cast<NSUInteger>(&model);
    NSUInteger hash = 0;
    for (const auto *property : meta._comparedPropertyMetas)
        if (const id value = qn::valueOfProperty(model, *property))
            hash ^= value->hash();
    return hash;
}

} // namespace

/// Lives while the properties of a model are asked for their hashes, which may raise.
class qn::ModelHashes::Visit {
public:
    Visit(ModelHashes &hashes, Met &met) : hashes_(hashes), met_(met) {
        met.order = hashes.met_.size();
        hashes.open_.push_back(&met);
        outerLowest_ = std::exchange(hashes.lowest_, met.order);
        ++hashes.depth_;
    }
    Visit(const Visit &) = delete;
    Visit &operator=(const Visit &) = delete;
    ~Visit() {
        --hashes_.depth_;
        if (hashes_.lowest_ == met_.order) { // refers back to nothing before it: its group is complete
            do {
                hashes_.open_.back()->isOpen = false;
                hashes_.open_.pop_back();
            } while (met_.isOpen);
            hashes_.lowest_ = outerLowest_;
        } else
            hashes_.lowest_ = std::min(hashes_.lowest_, outerLowest_);
    }

private:
    ModelHashes &hashes_;
    Met &met_;
    NSUInteger outerLowest_;
};

NSUInteger qn::ModelHashes::hash(const id &model, const _QNModelMeta &meta) {
    if (depth_ >= deepestVisits)
        return 0;
    if (!meta._leadsToModels)
        return hashOfValues(*model, meta);
    const auto [found, isNew] = met_.try_emplace(model);
    Met &met = found->second;
    if (isNew) {
        const Visit visit(*this, met);
        met.hash = hashOfValues(*model, meta);
    } else if (met.isOpen)
        lowest_ = std::min(lowest_, met.order);
    return met.isOpen ? 0 : met.hash;
}
