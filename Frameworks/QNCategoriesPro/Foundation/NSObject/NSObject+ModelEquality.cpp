// Hash and equality of models; declared in NSObject+ModelValue.h.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/EqualModels.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelHashes.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Platform/Foundation/Collections/ContentsHash.h"
#include "Platform/Foundation/Collections/NSNull.h"

namespace {

bool isOfFoundation(const id &object, const _QNModelMeta &meta) {
    return meta._nsType != qn::FoundationKind::None || peek<NSNull>(object);
}

/// Asked whether it equals this, a model whose class forwards to `modelIsEqual` lets that see it.
class Question : public NSObject {};

thread_local constinit const NSObject *seenWithQuestion = nullptr;

bool forwardsToModelIsEqual(const id &object) {
    static const id &question = *new id(make<Question>());
    seenWithQuestion = nullptr;
    return !object->isEqual(question) && seenWithQuestion == object.get();
}

/// Models whose class forwards both hash and equality are made of their values.
bool visitValues(const id &object, const std::function<void(const id &part)> &visit) {
    thread_local constinit Class latestOfFoundation = nullptr; // most are of one class, such as texts
    const Class cls = object->isa();
    if (cls == latestOfFoundation)
        return false;
    const auto meta = _QNModelMeta::metaWithClass(cls);
    if (isOfFoundation(object, *meta)) {
        latestOfFoundation = cls;
        return false;
    }
    if (meta->_comparedPropertyMetas.empty())
        return false;
    const qn::OutermostWalk<qn::ModelHashes> hashes; // asked for at every level
    if (object->hash() != qn::modelHash(object) || !forwardsToModelIsEqual(object))
        return false;
    for (const auto *property : meta->_comparedPropertyMetas)
        visit(qn::valueOfProperty(*object, *property));
    return true;
}

[[maybe_unused]] const bool valuesAreKnown = (setVisitParts(&visitValues), true);

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
    if (!model || !other)
        return false;
    if (model->isa() != other->isa()) {
        if (const NSObject &asked = *other; typeid(asked) == typeid(Question)) [[unlikely]]
            seenWithQuestion = model.get();
        return false;
    }
    const auto meta = _QNModelMeta::metaWithClass(model->isa());
    if (isOfFoundation(model, *meta))
        return model->isEqual(other);
    const OutermostWalk<ModelHashes> hashes; // asked for at every level
    const OutermostWalk<EqualModels> models;
    return models->areEqual(model, other, *meta);
}
