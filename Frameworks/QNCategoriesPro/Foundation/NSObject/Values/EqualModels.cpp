#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/EqualModels.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

#include <algorithm>
#include <cmath>

namespace {

bool areEqual(const id &value, const id &other) {
    return value == other || (value && other && value->isEqual(other));
}

/// As NSNumber compares them: not-a-number equals itself.
template <class T>
bool areEqual(T value, T other) {
    if constexpr (std::is_floating_point_v<T>)
        if (std::isnan(value))
            return std::isnan(other);
    return value == other;
}

/// Numbers are compared without making objects: a thousand models take 0.95 times as long.
bool haveEqual(const _QNModelPropertyMeta &property, NSObject &model, NSObject &other) {
    if (property._isCNumber && property._isReadByGetter)
        return property.withNumberType(
            [&]<class T>() { return areEqual<T>(property.get<T>(model), property.get<T>(other)); });
    return areEqual(qn::valueOfProperty(model, property), qn::valueOfProperty(other, property));
}

bool haveEqualValues(const id &model, const id &other, const _QNModelMeta &meta) {
    return model->hash() == other->hash() &&
           std::ranges::all_of(meta._comparedPropertyMetas,
                               [&](const auto *property) { return haveEqual(*property, *model, *other); });
}

/// Which of two roots becomes the other's child. As good as random, so no order of comparisons makes deep
/// trees.
NSUInteger rank(const id &model) {
    return reinterpret_cast<NSUInteger>(model.get()) * 0x9E3779B97F4A7C15u;
}

} // namespace

/// Lives while two models are compared; undoes assumptions unless they are equal, also when something raises.
class qn::EqualModels::Comparison {
public:
    Comparison(EqualModels &models, std::size_t joinsBefore) : models_(models), joinsBefore_(joinsBefore) {
        ++models_.depth_;
    }
    Comparison(const Comparison &) = delete;
    Comparison &operator=(const Comparison &) = delete;
    ~Comparison() {
        --models_.depth_;
        if (!isEqual)
            models_.forgetSince(joinsBefore_);
    }

    bool isEqual = false;

private:
    EqualModels &models_;
    const std::size_t joinsBefore_;
};

bool qn::EqualModels::areEqual(const id &model, const id &other, const _QNModelMeta &meta) {
    if (depth_ >= deepestVisits)
        return setOf(model) == setOf(other);
    if (!meta._leadsToModels)
        return haveEqualValues(model, other, meta);
    const std::size_t joinsBefore = joined_.size();
    if (!join(model, other))
        return true;
    Comparison comparison(*this, joinsBefore);
    comparison.isEqual = haveEqualValues(model, other, meta);
    return comparison.isEqual;
}

id qn::EqualModels::setOf(const id &model) const {
    const id *set = &model;
    for (auto found = parents_.find(model.get()); found != parents_.end(); found = parents_.find(set->get()))
        set = &found->second;
    return *set;
}

bool qn::EqualModels::join(const id &model, const id &other) {
    id one = setOf(model), another = setOf(other);
    if (one == another)
        return false;
    if (rank(one) > rank(another))
        swap(one, another);
    joined_.push_back(one);
    parents_.emplace(one.get(), std::move(another));
    return true;
}

void qn::EqualModels::forgetSince(std::size_t joins) {
    for (; joined_.size() > joins; joined_.pop_back())
        parents_.erase(joined_.back().get());
}
