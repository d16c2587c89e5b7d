#include "Platform/Foundation/Serialization/JSON/JSONValidity.h"

#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/KindOfClass.h"

#include <cmath>

json::Kind json::kindOf(const NSObject *object) {
    static const std::pair<Class, Kind> kinds[] = {{NSString::class_(), Kind::string},
                                                   {NSNumber::class_(), Kind::number},
                                                   {NSDictionary::class_(), Kind::dictionary},
                                                   {NSArray::class_(), Kind::array},
                                                   {NSNull::class_(), Kind::null}};
    return runtime::kindOfClass(object, kinds, Kind::other);
}

/// `depth` is the number of containers around the value.
json::Reason JSONValidity::whyInvalid(const id &value, std::size_t depth) {
    json::Reason reason = json::invalidType;
    switch (json::kindOf(value.get())) {
    case json::Kind::string:
    case json::Kind::null:
        return nullptr;
    case json::Kind::number:
        return std::isfinite(static_cast<const NSNumber &>(*value).doubleValue()) ? nullptr : json::notFinite;
    case json::Kind::array:
        reason = depth >= NSJSONSerialization::deepestNesting
                     ? json::tooDeep
                     : json::eachElement(static_cast<const NSArray &>(*value),
                                         [&](const id &element) { return whyInvalid(element, depth + 1); });
        break;
    case json::Kind::dictionary:
        reason = depth >= NSJSONSerialization::deepestNesting
                     ? json::tooDeep
                     : json::eachEntry(static_cast<const NSDictionary &>(*value),
                                       [&](const id &key, const id &object) {
                                           return json::kindOf(key.get()) == json::Kind::string
                                                      ? whyInvalid(object, depth + 1)
                                                      : json::notText;
                                       });
        break;
    case json::Kind::other:
        return reason;
    }
    if (reason)
        invalidContainers_.push_back(value);
    return reason;
}
