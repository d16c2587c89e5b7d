#include "Platform/Foundation/Serialization/PropertyList/PropertyListWalk.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/KindOfClass.h"

namespace {

enum class Kind { text, number, dictionary, array, data, date, reference, other };

Kind kindOf(const NSObject *object) {
    static const std::pair<Class, Kind> kinds[] = {{NSString::class_(), Kind::text},
                                                   {NSNumber::class_(), Kind::number},
                                                   {NSDictionary::class_(), Kind::dictionary},
                                                   {NSArray::class_(), Kind::array},
                                                   {NSData::class_(), Kind::data},
                                                   {NSDate::class_(), Kind::date},
                                                   {PropertyListUID::class_(), Kind::reference}};
    return runtime::kindOfClass(object, kinds, Kind::other);
}

template <class T>
const T &known(const id &object) {
    return static_cast<const T &>(*object);
}

std::string nameOf(const id &object) {
    return object ? object->isa()->name() : "none";
}

} // namespace

bool PropertyListWalk::whole(const id &list) {
    return visit(list);
}

std::string PropertyListWalk::refusal() const {
    return "At " + (place_.empty() ? "the top" : place_) + ": expected " + expected_ + ".";
}

bool PropertyListWalk::refuse(std::string expected) {
    expected_ = std::move(expected);
    return false;
}

/// Prepends a step to the path of the refused object.
bool PropertyListWalk::fail(const std::string &step) {
    const bool joins = place_.empty() || place_.front() == '[';
    place_.insert(0, joins ? step : step + ".");
    return false;
}

bool PropertyListWalk::visitElement(std::span<const id> elements, std::size_t index) {
    return visit(elements[index]) || fail("[" + std::to_string(index) + "]");
}

bool PropertyListWalk::visitKey(const Entry &entry) {
    return key(*entry.first) || fail(entry.first->utf8());
}

bool PropertyListWalk::visitValue(const Entry &entry) {
    return visit(*entry.second) || fail(entry.first->utf8());
}

bool PropertyListWalk::visit(const id &object) {
    switch (kindOf(object.get())) {
    case Kind::text:
        return text(known<NSString>(object));
    case Kind::number:
        return number(known<NSNumber>(object));
    case Kind::data:
        return data(known<NSData>(object));
    case Kind::date:
        return date(known<NSDate>(object));
    case Kind::reference:
        return reference(known<PropertyListUID>(object));
    case Kind::other:
        return refuse("a text, number, date, data, array or dictionary, not " + nameOf(object));
    case Kind::array:
    case Kind::dictionary:
        break;
    }
    if (depth_ == NSPropertyListSerialization::deepestNesting)
        return refuse("at most 512 levels of arrays and dictionaries");
    ++depth_;
    const bool isWritten = kindOf(object.get()) == Kind::array ? visitArray(known<NSArray>(object))
                                                               : visitDictionary(known<NSDictionary>(object));
    --depth_;
    return isWritten;
}

bool PropertyListWalk::visitArray(const NSArray &list) {
    if (const auto elements = list.elements())
        return array(*elements);
    const std::vector<id> elements = list.allObjects();
    return array(elements);
}

bool PropertyListWalk::visitDictionary(const NSDictionary &table) {
    std::vector<std::pair<id, id>> copies; // of the entries of a dictionary without a table
    std::vector<Entry> entries;
    const auto add = [&entries](const id &key, const id &value) {
        const bool isText = kindOf(key.get()) == Kind::text;
        if (isText)
            entries.emplace_back(&known<NSString>(key), &value);
        return isText;
    };
    const auto refuseKey = [this](const id &key) { return refuse("a text as a key, not " + nameOf(key)); };
    if (const ObjectTable *own = table.table()) {
        entries.reserve(own->count());
        for (const auto &entry : own->entries())
            if (entry.key && !add(entry.key, entry.value))
                return refuseKey(entry.key);
    } else {
        copies = table.allEntries();
        for (const auto &[key, value] : copies)
            if (!add(key, value))
                return refuseKey(key);
    }
    return dictionary(entries);
}
