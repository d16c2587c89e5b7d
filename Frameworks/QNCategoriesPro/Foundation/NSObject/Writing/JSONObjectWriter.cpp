#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/JSONObjectWriter.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/OutermostWalk.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/ModelWriting.h"
#include "Frameworks/QNCategoriesPro/ISODateFormatter.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Serialization/JSON/JSONValidity.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"
#include "Platform/Runtime/Object/Message.h"

#include <unordered_set>

namespace {

/// Which collections within others the walk under way on the thread knows to be invalid JSON.
class KnownCollections {
public:
    static inline thread_local KnownCollections *underWay = nullptr;

    /// Whether the collection is valid JSON as it is. Remembering the invalid ones inside it keeps each
    /// collection from being checked once per level above it.
    bool isValid(const id &collection) {
        if (notValid_.contains(collection))
            return false;
        JSONValidity validity;
        const json::Reason reason = validity.whyInvalid(collection);
        const auto &around = validity.invalidContainers();
        if (reason && reason != json::tooDeep)
            notValid_.insert(around.begin(), around.end());
        return !reason;
    }

private:
    std::unordered_set<id> notValid_;
};

id dictionaryToJSON(const id &object) {
    if (!qn::ModelWriting::admits(*object))
        return nullptr;
    if (KnownCollections::underWay->isValid(object))
        return object;
    const qn::ModelWriting visit(*object);
    const auto &dictionary = static_cast<const NSDictionary &>(*object);
    const auto result = NSMutableDictionary::dictionaryWithCapacity(dictionary.count());
    qn::walkEntries(dictionary, [&](const id &key, const id &value) {
        const id written = ModelToJSONObjectRecursive(value);
        result->setObject(written ? written : NSNull::null(),
                          peek<NSString>(key) ? key : id(descriptionOf(*key)));
    });
    return result;
}

/// An array, or what is in a set.
id arrayToJSON(const id &array, const NSObject &visited) {
    if (!qn::ModelWriting::admits(visited))
        return nullptr;
    if (KnownCollections::underWay->isValid(array))
        return array;
    const qn::ModelWriting visit(visited);
    std::vector<id> result;
    qn::walkElements(static_cast<const NSArray &>(*array), [&](const id &element) {
        if (id written = ModelToJSONObjectRecursive(element); !qn::isNull(written))
            result.push_back(std::move(written));
    });
    return NSMutableArray::arrayWithObjects(std::move(result));
}

id propertyToJSON(NSObject &model, const _QNModelPropertyMeta &meta) {
    if (meta._isCNumber)
        return qn::finiteNumberOfProperty(model, meta);
    switch (meta.valueType()) {
    case QNEncodingTypeObject: {
        id written = ModelToJSONObjectRecursive(meta.get<id>(model));
        return meta._nsType == qn::FoundationKind::None && qn::isNull(written) ? nullptr : written;
    }
    case QNEncodingTypeClass:
        return NSStringFromClass(meta.get<Class>(model));
    case QNEncodingTypeSEL:
        return NSStringFromSelector(meta.get<SEL>(model));
    default:
        return nullptr;
    }
}

/// A mutable dictionary to replace the value at a part of a path: a new one where there is no value; none
/// where the value is not a dictionary.
Ref<NSMutableDictionary> dictionaryAt(const id &existing) {
    if (!existing)
        return NSMutableDictionary::dictionary();
    return peek<NSDictionary>(existing) ? as<NSMutableDictionary>(existing->mutableCopy()) : nullptr;
}

void storeAtPath(ObjectTable &result, const NSArray &path, const id &value) {
    const id first = path.objectAtIndex(0), last = path.lastObject();
    const id *existing = result.find(first);
    auto inner = dictionaryAt(existing ? *existing : nullptr);
    if (inner)
        result.set(first, inner);
    for (NSUInteger i = 1; inner && i + 1 < path.count(); ++i) {
        const id part = path.objectAtIndex(i);
        const auto next = dictionaryAt(inner->objectForKey(part));
        if (next)
            inner->setObject(next, part);
        inner = next;
    }
    if (inner && !inner->objectForKey(last))
        inner->setObject(value, last);
}

id modelToJSON(const id &model) {
    const auto meta = _QNModelMeta::metaWithClass(model->isa());
    if (meta->_keyMappedCount == 0 || !qn::ModelWriting::admits(*model))
        return nullptr;
    const qn::ModelWriting visit(*model);
    const auto mapper = meta->_mapper ? meta->_mapper : NSDictionary::dictionary();
    ObjectTable table(mapper->count());
    qn::walkEntries(*mapper, [&](const id &, const id &head) {
        const auto &property = static_cast<const _QNModelPropertyMeta &>(*head);
        id value = propertyToJSON(*model, property);
        if (value && property._mappedToKeyPath)
            storeAtPath(table, *property._mappedToKeyPath, value);
        else if (value)
            table.add(property._mappedToKey, std::move(value));
    });
    const auto result = NSMutableDictionary::dictionaryWithTable(std::move(table));
    const bool refused =
        meta->_hasCustomTransformToDictionary &&
        !objc_msgSend<bool>(model, runtime::selectorOf<qn::hooks::modelCustomTransformToDictionary>(),
                            id(result));
    return refused ? nullptr : result;
}

} // namespace

id ModelToJSONObjectRecursive(const id &object) {
    if (!object)
        return nullptr;
    const qn::OutermostWalk<KnownCollections> known;
    switch (qn::writtenKindOf(*object)) {
    case qn::WrittenKind::Text:
    case qn::WrittenKind::Plain:
        return object;
    case qn::WrittenKind::Dictionary:
        return dictionaryToJSON(object);
    case qn::WrittenKind::Set:
        return arrayToJSON(static_cast<const NSSet &>(*object).allObjects(), *object);
    case qn::WrittenKind::Array:
        return arrayToJSON(object, *object);
    case qn::WrittenKind::URL:
        return static_cast<const NSURL &>(*object).absoluteString();
    case qn::WrittenKind::AttributedString:
        return static_cast<const NSAttributedString &>(*object).string();
    case qn::WrittenKind::Date:
        return qn::ISODateFormatter().stringFromDate(as<NSDate>(object));
    case qn::WrittenKind::Data:
        return nullptr;
    case qn::WrittenKind::Model:
        break;
    }
    return modelToJSON(object);
}
