#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNURL.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Raise.h"

namespace {

/// What a query allows, minus the delimiters ":#[]@" and "!$&'()*+,;=".
const Ref<NSCharacterSet> &allowedCharacters() {
    static const auto &set = *new Ref<NSCharacterSet>(NSCharacterSet::characterSetWithCharactersInString(
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/?"));
    return set;
}

Ref<NSString> escapedDescription(const id &object) {
    return QNPercentEscapedStringFromString(object ? descriptionOf(*object) : nullptr);
}

Ref<NSArray> sortedByDescription(const Ref<NSArray> &objects) {
    return objects->sortedArrayUsingComparator(
        [](const id &a, const id &b) { return descriptionOf(*a)->compare(descriptionOf(*b)); });
}

/// Gathers the pairs, escaped, in order.
class Pairs {
public:
    Ref<NSArray> all() const { return pairs_; }

    void add(const id &key, const id &value) {
        if (const auto dictionary = as<NSDictionary>(value))
            addEntries(key, *dictionary);
        else if (const auto array = as<NSArray>(value))
            for (const id &element : array->allObjects())
                add(NSString::stringWithFormat("%@[]", key), element);
        else if (const auto set = as<NSSet>(value))
            for (const id &element : sortedByDescription(set->allObjects())->allObjects())
                add(key, element);
        else if (key && !as<NSNull>(value))
            pairs_->addObject(
                NSString::stringWithFormat("%@=%@", escapedDescription(key), escapedDescription(value)));
        else
            pairs_->addObject(escapedDescription(key));
    }

private:
    void addEntries(const id &key, const NSDictionary &dictionary) {
        for (const id &inner : sortedByDescription(dictionary.allKeys())->allObjects())
            if (const id value = dictionary.objectForKey(inner))
                add(key ? NSString::stringWithFormat("%@[%@]", key, inner) : inner, value);
    }

    const Ref<NSMutableArray> pairs_ = NSMutableArray::array();
};

} // namespace

Ref<NSString> QNPercentEscapedStringFromString(const Ref<NSString> &text) {
    if (!text)
        return u""_ns;
    const auto escaped = text->stringByAddingPercentEncodingWithAllowedCharacters(allowedCharacters());
    runtime::checkObject("QNPercentEscapedStringFromString:", escaped); // none for an unpaired surrogate
    return escaped;
}

Ref<NSArray> QNQueryStringPairsFromKeyAndValue(const id &key, const id &value) {
    Pairs pairs;
    pairs.add(key, value);
    return pairs.all();
}

Ref<NSString> QNQueryStringFromParameters(const Ref<NSDictionary> &parameters) {
    return QNQueryStringPairsFromKeyAndValue(nullptr, parameters)->componentsJoinedByString(u"&"_ns);
}

Ref<NSString> qn::queryStringFromParameters(const Ref<NSDictionary> &parameters) {
    return parameters ? QNQueryStringFromParameters(parameters) : nullptr;
}
