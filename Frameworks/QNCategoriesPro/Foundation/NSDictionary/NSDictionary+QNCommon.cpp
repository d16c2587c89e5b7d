#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Atomically.h"
#include "Platform/Foundation/Collections/CollectionArguments.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

/// The value, unless it is missing or the null marker.
id presentValue(const Ref<NSDictionary> &dictionary, const id &key) {
    const id value = dictionary && key ? dictionary->objectForKey(key) : nullptr;
    return as<NSNull>(value) ? nullptr : value;
}

Ref<NSNumber> numberFromText(const NSString &text) {
    const std::u16string word = text.lowercaseString()->units();
    if (word == u"true" || word == u"yes")
        return NSNumber::numberWithBool(true);
    if (word == u"false" || word == u"no")
        return NSNumber::numberWithBool(false);
    if (word == u"nil" || word == u"null")
        return nullptr;
    return text.units().find(u'.') != std::u16string::npos
               ? NSNumber::numberWithDouble(text.doubleValue())
               : NSNumber::numberWithLongLong(text.integerValue());
}

} // namespace

Ref<NSNumber> NSNumberFromID(const id &value) {
    if (auto number = as<NSNumber>(value))
        return number;
    const auto text = as<NSString>(value);
    return text ? numberFromText(*text) : nullptr;
}

std::optional<Ref<NSNumber>> qn::scalarForKey(const Ref<NSDictionary> &dictionary, const id &key) {
    const id value = presentValue(dictionary, key);
    if (!as<NSNumber>(value) && !as<NSString>(value))
        return std::nullopt;
    return NSNumberFromID(value);
}

Ref<NSNumber> qn::numberValueForKey(const Ref<NSDictionary> &dictionary, const id &key,
                                    const Ref<NSNumber> &otherwise) {
    return dictionary ? scalarForKey(dictionary, key).value_or(otherwise) : nullptr;
}

Ref<NSString> qn::stringValueForKey(const Ref<NSDictionary> &dictionary, const id &key,
                                    const Ref<NSString> &otherwise) {
    const id value = presentValue(dictionary, key);
    if (auto text = as<NSString>(value))
        return text;
    if (const auto number = as<NSNumber>(value))
        return number->description();
    return dictionary ? otherwise : nullptr;
}

Ref<NSArray> qn::allKeysSorted(const Ref<NSDictionary> &dictionary) {
    if (!dictionary)
        return nullptr;
    return dictionary->allKeys()->sortedArrayUsingComparator([](const id &a, const id &b) {
        return descriptionOf(*a)->caseInsensitiveCompare(descriptionOf(*b));
    });
}

Ref<NSArray> qn::allValuesSortedByKeys(const Ref<NSDictionary> &dictionary) {
    if (!dictionary)
        return nullptr;
    std::vector<id> values;
    for (const id &key : allKeysSorted(dictionary)->allObjects())
        values.push_back(dictionary->objectForKey(key));
    return NSArray::arrayWithObjects(std::move(values));
}

bool qn::containsObjectForKey(const Ref<NSDictionary> &dictionary, const id &key) {
    return dictionary && key && dictionary->objectForKey(key);
}

Ref<NSMutableDictionary> qn::entriesForKeys(const Ref<NSDictionary> &dictionary, const Ref<NSArray> &keys) {
    return atomically(dictionary, [&](NSDictionary &contents) {
        auto entries = NSMutableDictionary::dictionary();
        for (const id &key : collections::objectsOf(keys))
            if (const id value = contents.objectForKey(key))
                entries->setObject(value, key);
        return entries;
    });
}

Ref<NSData> qn::plistData(const Ref<NSDictionary> &dictionary) {
    return collection::plistData(dictionary);
}

Ref<NSString> qn::plistString(const Ref<NSDictionary> &dictionary) {
    return collection::plistString(dictionary);
}

Ref<NSString> qn::jsonString(const Ref<NSDictionary> &dictionary) {
    return collection::jsonText(dictionary, NSJSONWritingOptions::None);
}

Ref<NSString> qn::jsonPrettyString(const Ref<NSDictionary> &dictionary) {
    return collection::jsonText(dictionary, collection::readable);
}

Ref<NSString> qn::jsonStringEncoded(const Ref<NSDictionary> &dictionary) {
    return collection::jsonText(dictionary, NSJSONWritingOptions::None);
}

Ref<NSString> qn::jsonPrettyStringEncoded(const Ref<NSDictionary> &dictionary) {
    return collection::jsonText(dictionary, NSJSONWritingOptions::PrettyPrinted);
}
