#include "Platform/Foundation/PropertyListBytes.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/PropertyListGuard.h"
#include "Platform/Foundation/PropertyListUID.h"
#include "Platform/Runtime/Class.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <plist/plist.h>
#include <string>

NS_IMPLEMENTATION(PropertyListUID) {}

namespace {

constexpr unsigned deepest = NSPropertyListSerialization::deepestNesting;

struct Free {
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, Free>;

/// Whatever libplist gives away to be freed.
template <class T>
using Allocated = std::unique_ptr<T, decltype(&std::free)>;

using Writer = void (*)(plist_t, char **, std::uint32_t *);

std::string written(plist_t node, Writer writer) {
    char *bytes = nullptr;
    std::uint32_t length = 0;
    writer(node, &bytes, &length);
    const Allocated<char> owner(bytes, &std::free);
    return std::string(bytes, bytes ? length : 0);
}

// libplist's own functions cut dates to 32 bits and do not tell the two kinds of large whole numbers apart;
// the binary form of the scalar does: behind the head one byte of kind and width, then the value.
constexpr std::string_view head = "bplist00";
constexpr char wholeNumber8 = 0x13, wholeNumber16 = 0x14, date8 = 0x33;

std::string scalarBytes(plist_t node) {
    return written(node, plist_to_bin).substr(head.size());
}

std::uint64_t lastEightBytes(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes.substr(bytes.size() - 8))
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

Node scalarNode(char kind, std::uint64_t value) {
    std::string list(head);
    list += kind;
    if (kind == wholeNumber16)
        list.append(8, '\0');
    for (int shift = 56; shift >= 0; shift -= 8)
        list += static_cast<char>(value >> shift);
    std::string trailer(32, '\0');
    trailer[6] = trailer[7] = trailer[15] = 1; // bytes an offset, bytes a reference, objects
    trailer[31] = static_cast<char>(list.size());
    list.append(1, static_cast<char>(head.size())).append(trailer);
    plist_t node = nullptr;
    plist_from_bin(list.data(), static_cast<std::uint32_t>(list.size()), &node);
    return Node(node);
}

// From libplist to objects. `depth` is the number of containers around the node.

id objectOf(plist_t node, const PropertyListObjects &objects, unsigned depth);

id textOf(plist_t node) {
    std::uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return text ? NSString::stringWithUTF8String({text, length}) : nullptr;
}

id arrayOf(plist_t node, const PropertyListObjects &objects, unsigned depth) {
    const auto array = NSMutableArray::array();
    plist_array_iter rawIterator = nullptr;
    plist_array_new_iter(node, &rawIterator);
    const Allocated<void> iterator(rawIterator, &std::free);
    for (;;) {
        plist_t element = nullptr;
        plist_array_next_item(node, iterator.get(), &element);
        if (!element)
            return objects.container(array);
        const id object = objectOf(element, objects, depth + 1);
        if (!object)
            return nullptr;
        array->addObject(object);
    }
}

id dictionaryOf(plist_t node, const PropertyListObjects &objects, unsigned depth) {
    const auto dictionary = NSMutableDictionary::dictionary();
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(node, &rawIterator);
    const Allocated<void> iterator(rawIterator, &std::free);
    for (;;) {
        char *rawKey = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator.get(), &rawKey, &value);
        const Allocated<char> key(rawKey, &std::free);
        if (!value)
            return objects.container(dictionary);
        const auto name = key ? NSString::stringWithUTF8String(key.get()) : nullptr;
        const id object = objectOf(value, objects, depth + 1);
        if (!name || !object)
            return nullptr;
        dictionary->setObject(object, name);
    }
}

id wholeNumberOf(plist_t node) {
    const std::string bytes = scalarBytes(node);
    if (bytes[0] == wholeNumber16)
        return NSNumber::numberWithUnsignedLongLong(lastEightBytes(bytes.substr(0, 17)));
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return NSNumber::numberWithLongLong(static_cast<std::int64_t>(value));
}

id dateOf(plist_t node) {
    const std::string bytes = scalarBytes(node);
    return NSDate::dateWithTimeIntervalSinceReferenceDate(
        std::bit_cast<double>(lastEightBytes(bytes.substr(0, 9))));
}

id objectOf(plist_t node, const PropertyListObjects &objects, unsigned depth) {
    if (!node)
        return nullptr;
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return objects.leaf(textOf(node));
    case PLIST_ARRAY:
        return depth < deepest ? arrayOf(node, objects, depth) : nullptr;
    case PLIST_DICT:
        return depth < deepest ? dictionaryOf(node, objects, depth) : nullptr;
    case PLIST_BOOLEAN: {
        std::uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return NSNumber::numberWithBool(flag != 0);
    }
    case PLIST_UINT:
        return wholeNumberOf(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return NSNumber::numberWithDouble(value);
    }
    case PLIST_DATE:
        return dateOf(node);
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char *bytes = plist_get_data_ptr(node, &length);
        return objects.leaf(NSData::dataWithBytes(bytes, bytes ? length : 0));
    }
    case PLIST_UID: {
        std::uint64_t index = 0;
        plist_get_uid_val(node, &index);
        return objects.references ? make<PropertyListUID>(index) : nullptr;
    }
    default:
        return nullptr;
    }
}

// From objects to libplist. Empty for what the format cannot hold.

Node nodeOf(const id &object, NSPropertyListFormat format, unsigned depth);

bool standsInXML(char16_t unit) {
    return unit >= 0x20 ? unit < 0xFFFE : unit == '\t' || unit == '\n' || unit == '\r';
}

/// The text as libplist takes it: without zero characters.
std::optional<std::string> bytesOf(const NSString &text, NSPropertyListFormat format) {
    const std::u16string &units = text.units();
    const bool fits = format == NSPropertyListFormat::XMLFormat_v1_0
                          ? std::all_of(units.begin(), units.end(), standsInXML)
                          : units.find(u'\0') == units.npos;
    return fits ? text.strictUTF8() : std::nullopt;
}

Node arrayNode(const NSArray &array, NSPropertyListFormat format, unsigned depth) {
    Node node(plist_new_array());
    for (const id &element : array.allObjects()) {
        Node part = nodeOf(element, format, depth + 1);
        if (!part)
            return nullptr;
        plist_array_append_item(node.get(), part.release());
    }
    return node;
}

Node dictionaryNode(const NSDictionary &dictionary, NSPropertyListFormat format, unsigned depth) {
    Node node(plist_new_dict());
    dictionary.enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &value, bool &stop) {
        const auto name = as<NSString>(key);
        const auto bytes = name ? bytesOf(*name, format) : std::nullopt;
        Node part = bytes ? nodeOf(value, format, depth + 1) : nullptr;
        if (part)
            plist_dict_set_item(node.get(), bytes->c_str(), part.release());
        else
            node.reset();
        stop = !node;
    });
    return node;
}

Node numberNode(const NSNumber &number) {
    if (number.isBoolean())
        return Node(plist_new_bool(number.boolValue()));
    if (number.isFloating())
        return Node(plist_new_real(number.doubleValue()));
    const std::uint64_t value = number.unsignedLongLongValue();
    return number.objCType() == 'Q' && value > INT64_MAX ? scalarNode(wholeNumber16, value)
                                                         : scalarNode(wholeNumber8, value);
}

Node dateNode(const NSDate &date, NSPropertyListFormat format) {
    constexpr double startOfYear1 = -63114076800, endOfYear9999 = 252423993600;
    const double seconds = date.timeIntervalSinceReferenceDate();
    const bool fits = format == NSPropertyListFormat::XMLFormat_v1_0
                          ? seconds >= startOfYear1 && seconds < endOfYear9999
                          : std::isfinite(seconds);
    return fits ? scalarNode(date8, std::bit_cast<std::uint64_t>(seconds)) : nullptr;
}

Node nodeOf(const id &object, NSPropertyListFormat format, unsigned depth) {
    if (const auto text = as<NSString>(object)) {
        const auto bytes = bytesOf(*text, format);
        return Node(bytes ? plist_new_string(bytes->c_str()) : nullptr);
    }
    if (const auto number = as<NSNumber>(object))
        return numberNode(*number);
    if (const auto date = as<NSDate>(object))
        return dateNode(*date, format);
    if (const auto data = as<NSData>(object))
        return Node(plist_new_data(reinterpret_cast<const char *>(data->bytes()), data->length()));
    if (const auto reference = as<PropertyListUID>(object))
        return Node(format == NSPropertyListFormat::BinaryFormat_v1_0 ? plist_new_uid(reference->index())
                                                                      : nullptr);
    const auto array = as<NSArray>(object);
    if (array && depth < deepest)
        return arrayNode(*array, format, depth);
    const auto dictionary = as<NSDictionary>(object);
    return dictionary && depth < deepest ? dictionaryNode(*dictionary, format, depth) : nullptr;
}

} // namespace

id xmlPropertyList(std::string_view text, const PropertyListObjects &objects) {
    plist_t node = nullptr;
    if (isHarmlessXMLPropertyList(text)) {
        const std::string pieces = xmlInShortTexts(text);
        plist_from_xml(pieces.data(), static_cast<std::uint32_t>(pieces.size()), &node);
    }
    return objectOf(Node(node).get(), objects, 0);
}

id binaryPropertyList(std::string_view bytes, const PropertyListObjects &objects) {
    plist_t node = nullptr;
    if (isHarmlessBinaryPropertyList(bytes))
        plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return objectOf(Node(node).get(), objects, 0);
}

Ref<NSData> propertyListBytes(const id &list, NSPropertyListFormat format) {
    const Node node = nodeOf(list, format, 0);
    if (!node)
        return nullptr;
    const std::string bytes =
        written(node.get(), format == NSPropertyListFormat::XMLFormat_v1_0 ? plist_to_xml : plist_to_bin);
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}
