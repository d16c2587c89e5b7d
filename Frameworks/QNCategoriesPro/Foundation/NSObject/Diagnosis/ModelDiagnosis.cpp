#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelDiagnosis.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelFault.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelFit.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelText.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"
#include "Platform/Foundation/Serialization/JSON/JSONBuilder.h"

namespace {

using Visit = ObjectVisit<struct Diagnosing>;

std::string nameOf(Class cls) {
    return cls ? cls->name() : "nil";
}

/// Looks through JSON and keeps the first fault. The functions return whether they found it.
class Walk {
public:
    const std::optional<qn::ModelFault> &fault() const { return fault_; }
    NSUInteger objects() const { return objects_; } ///< those of the root that were to become models

    /// The root, or an element of it, that is to become a model.
    bool rootModel(Class cls, const id &value) {
        const auto dictionary = as<NSDictionary>(value);
        if (!dictionary)
            return report("", value, "which is no object to make a " + nameOf(cls) + " of");
        const Class custom = qn::hooks::customClass(cls, dictionary);
        return existingModel(custom ? custom : cls, dictionary);
    }
    bool existingModel(Class cls, const Ref<NSDictionary> &dictionary) {
        ++objects_;
        return model(cls, dictionary);
    }
    bool rootArray(Class cls, const NSArray &array) {
        return elements(array, [&](const id &each) { return rootModel(cls, each); });
    }
    bool rootDictionary(Class cls, const NSDictionary &dictionary) {
        return entries(dictionary, [&](const id &each) { return rootModel(cls, each); });
    }

private:
    bool model(Class cls, const Ref<NSDictionary> &dictionary) {
        const auto meta = _QNModelMeta::metaWithClass(cls);
        if (!meta || !meta->_allPropertyMetas || meta->_hasCustomWillTransformFromDictionary)
            return false;
        if (!Visit::admits(*dictionary))
            return report("", dictionary, "which nests too deep");
        const Visit visit(*dictionary);
        for (const id &each : *meta->_allPropertyMetas)
            if (const auto &property = *peek<_QNModelPropertyMeta>(each);
                property._setter && propertyOf(cls, property, *dictionary))
                return true;
        return false;
    }

    bool propertyOf(Class cls, const _QNModelPropertyMeta &property, const NSDictionary &dictionary) {
        if (!property._mappedToKeyArray) {
            const id way = property._mappedToKeyPath ? id(property._mappedToKeyPath) : property._mappedToKey;
            return way && valueAt(cls, property, dictionary, way).value_or(false);
        }
        for (const id &way : *property._mappedToKeyArray)
            if (const auto found = valueAt(cls, property, dictionary, way))
                return *found;
        return false;
    }

    /// Nothing when there is no value that way, which is a key or a path.
    std::optional<bool> valueAt(Class cls, const _QNModelPropertyMeta &property,
                                const NSDictionary &dictionary, const id &way) {
        const auto path = as<NSArray>(way);
        const std::vector<id> keys = path ? path->allObjects() : std::vector{way};
        const std::size_t depth = path_.size();
        id value;
        const NSDictionary *inner = &dictionary;
        for (const id &key : keys) {
            value = inner ? inner->objectForKey(key) : nullptr;
            inner = peek<NSDictionary>(value);
            path_.emplace_back(as<NSString>(key)->utf8());
        }
        std::optional<bool> found;
        if (value)
            found = propertyValue(cls, property, value);
        path_.resize(depth);
        return found;
    }

    bool propertyValue(Class cls, const _QNModelPropertyMeta &property, const id &value) {
        const std::string name = nameOf(cls) + "." + property._name->utf8();
        if (peek<NSNull>(value))
            return false;
        if (const auto misfit = qn::misfitOf(property, value))
            return report(name, value, *misfit);
        if (property.valueType() != QNEncodingTypeObject)
            return false;
        if (property._nsType == qn::FoundationKind::None)
            return nestedModel(property, value);
        const auto element = [&](const id &each) { return nestedElement(name, property, each); };
        if (!property._genericCls)
            return false;
        if (const auto *array = peek<NSArray>(value))
            return elements(*array, element);
        const auto *dictionary = peek<NSDictionary>(value);
        return dictionary && entries(*dictionary, element);
    }

    bool nestedModel(const _QNModelPropertyMeta &property, const id &value) {
        const auto dictionary = as<NSDictionary>(value);
        if (!dictionary || !property._cls || value->isKindOfClass(property._cls))
            return false;
        const Class custom = property._hasCustomClassFromDictionary
                                 ? qn::hooks::customClass(property._cls, dictionary)
                                 : nullptr;
        return model(custom ? custom : property._cls, dictionary);
    }

    bool nestedElement(const std::string &name, const _QNModelPropertyMeta &property, const id &value) {
        const Class cls = property._genericCls;
        if (value->isKindOfClass(cls))
            return false;
        const auto dictionary = as<NSDictionary>(value);
        if (!dictionary)
            return report(name, value, "which is no object to make a " + nameOf(cls) + " of");
        const Class custom =
            property._hasCustomClassFromDictionary ? qn::hooks::customClass(cls, dictionary) : nullptr;
        return model(custom ? custom : cls, dictionary);
    }

    template <class Visitor>
    bool elements(const NSArray &array, const Visitor &visit) {
        std::size_t index = 0;
        for (const id &each : array.allObjects())
            if (within(index++, each, visit))
                return true;
        return false;
    }
    template <class Visitor>
    bool entries(const NSDictionary &dictionary, const Visitor &visit) {
        for (const auto &[key, value] : dictionary.allEntries())
            if (const auto text = as<NSString>(key); within(text ? text->utf8() : "", value, visit))
                return true;
        return false;
    }
    template <class Visitor>
    bool within(qn::JSONStep step, const id &value, const Visitor &visit) {
        path_.push_back(std::move(step));
        const bool found = visit(value);
        path_.pop_back();
        return found;
    }

    bool report(std::string property, const id &value, std::string reason) {
        fault_ = {qn::ModelError::unsuitableValue, std::move(reason), std::move(property), value, path_};
        return true;
    }

    qn::JSONPath path_; // to the value that is looked at
    NSUInteger objects_ = 0;
    std::optional<qn::ModelFault> fault_;
};

qn::ModelFault invalid(const JSONFailure &failure) {
    std::string reason = failure.reason;
    if (reason.ends_with('.'))
        reason.pop_back();
    return {qn::ModelError::notJSON, "The JSON is not valid, " + reason, "", nullptr, {}, failure.offset};
}

qn::ModelFault otherRoot(qn::ModelRoot wanted) {
    return {qn::ModelError::otherRoot,
            wanted == qn::ModelRoot::array ? "The JSON is no array" : "The JSON is no object"};
}

qn::ModelFault refused(Class cls, NSUInteger count) {
    return {qn::ModelError::refused, std::to_string(count) + (count == 1 ? " object was" : " objects were") +
                                         " refused by " + nameOf(cls) +
                                         ", or it has no properties to map, or no instance could be made"};
}

std::optional<qn::ModelFault> faultOf(const id &root, Class cls, qn::ModelRoot wanted, NSUInteger made) {
    const auto *array = peek<NSArray>(root);
    const auto *dictionary = peek<NSDictionary>(root);
    if (wanted == qn::ModelRoot::array ? !array : !dictionary)
        return otherRoot(wanted);
    if (!cls)
        return refused(cls, 1);
    Walk walk;
    const auto find = [&] {
        switch (wanted) {
        case qn::ModelRoot::array:
            return walk.rootArray(cls, *array);
        case qn::ModelRoot::dictionary:
            return walk.rootDictionary(cls, *dictionary);
        case qn::ModelRoot::model:
            return walk.rootModel(cls, root);
        default:
            return walk.existingModel(cls, as<NSDictionary>(root));
        }
    };
    if (find())
        return walk.fault();
    return made < walk.objects() ? std::optional(refused(cls, walk.objects() - made)) : std::nullopt;
}

} // namespace

Ref<NSError> qn::diagnosis(const id &json, Class cls, ModelRoot root, NSUInteger made) {
    const auto data = jsonData(json);
    if (!data) {
        const auto fault = peek<NSArray>(json) || peek<NSDictionary>(json)
                               ? faultOf(json, cls, root, made)
                               : std::optional(ModelFault{ModelError::notJSON, "There is no JSON"});
        return fault ? errorOf(*fault, nullptr) : nullptr;
    }
    const std::string_view text(reinterpret_cast<const char *>(data->bytes()), data->length());
    JSONBuilder builder(false);
    const auto failure = text.empty() ? std::optional(JSONFailure{"no value.", 0}) : readJSON(text, builder);
    const auto fault = failure ? invalid(*failure) : faultOf(builder.take(), cls, root, made);
    return fault ? errorOf(*fault, &text) : nullptr;
}
