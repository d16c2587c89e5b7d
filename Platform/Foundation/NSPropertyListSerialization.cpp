#include "Platform/Foundation/NSPropertyListSerialization.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSString.h"

#include <memory>
#include <plist/plist.h>

namespace {

constexpr int deepestNesting = 512;

struct Free {
    void operator()(char *text) const { std::free(text); }
    void operator()(void *node) const { plist_free(node); }
};

id convert(plist_t node, int depth);

id convertText(plist_t node) {
    std::uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return text ? NSString::stringWithUTF8String({text, length}) : nullptr;
}

id convertArray(plist_t node, int depth) {
    const auto array = NSMutableArray::array();
    for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        const id element = convert(plist_array_get_item(node, i), depth + 1);
        if (!element)
            return nullptr;
        array->addObject(element);
    }
    return array->copy();
}

id convertDictionary(plist_t node, int depth) {
    const auto dictionary = NSMutableDictionary::dictionary();
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(node, &rawIterator);
    const std::unique_ptr<void, decltype(&std::free)> iterator(rawIterator, &std::free);
    for (;;) {
        char *rawKey = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator.get(), &rawKey, &value);
        const std::unique_ptr<char, Free> key(rawKey);
        if (!value)
            return dictionary->copy();
        const auto name = key ? NSString::stringWithUTF8String(key.get()) : nullptr;
        const id object = convert(value, depth + 1);
        if (!name || !object)
            return nullptr;
        dictionary->setObject(object, name);
    }
}

id convertDate(plist_t node) {
    std::int32_t seconds = 0, microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds + microseconds / 1e6);
}

id convertInteger(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return NSNumber::numberWithLongLong(static_cast<std::int64_t>(value));
}

id convert(plist_t node, int depth) {
    if (!node || depth > deepestNesting)
        return nullptr;
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return convertText(node);
    case PLIST_ARRAY:
        return convertArray(node, depth);
    case PLIST_DICT:
        return convertDictionary(node, depth);
    case PLIST_BOOLEAN: {
        std::uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return NSNumber::numberWithBool(flag != 0);
    }
    case PLIST_UINT:
        return convertInteger(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return NSNumber::numberWithDouble(value);
    }
    case PLIST_DATE:
        return convertDate(node);
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char *bytes = plist_get_data_ptr(node, &length);
        return NSData::dataWithBytes(bytes, bytes ? length : 0);
    }
    default:
        return nullptr;
    }
}

} // namespace

id NSPropertyListSerialization::propertyListWithData(const Ref<NSData> &data) {
    if (!data || data->length() == 0 || data->length() > UINT32_MAX)
        return nullptr;
    plist_t root = nullptr;
    plist_from_memory(reinterpret_cast<const char *>(data->bytes()),
                      static_cast<std::uint32_t>(data->length()), &root);
    const std::unique_ptr<void, Free> owner(root);
    return convert(root, 0);
}
