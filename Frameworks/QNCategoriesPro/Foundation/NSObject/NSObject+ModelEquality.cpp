// Hash and equality of models; declared in NSObject+ModelValue.h.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/EqualModels.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelHashes.h"
#include "Platform/Foundation/Collections/NSNull.h"

namespace {

bool isOfFoundation(const id &object, const _QNModelMeta &meta) {
    return meta._nsType != qn::FoundationKind::None || peek<NSNull>(object);
}

} // namespace

NSUInteger qn::modelHash(const id &model) {
    if (!model)
        return 0;
    const auto meta = _QNModelMeta::metaWithClass(model->isa());
    if (isOfFoundation(model, *meta))
        return model->hash();
    const OutermostWalk<ModelHashes> hashes;
    return hashes->hash(model, *meta);
}

bool qn::modelIsEqual(const id &model, const id &other) {
    if (model == other)
        return true;
    if (!model || !other || model->isa() != other->isa())
        return false;
    const auto meta = _QNModelMeta::metaWithClass(model->isa());
    if (isOfFoundation(model, *meta))
        return model->isEqual(other);
    const OutermostWalk<ModelHashes> hashes; // asked for at every level
    const OutermostWalk<EqualModels> models;
    return models->areEqual(model, other, *meta);
}
