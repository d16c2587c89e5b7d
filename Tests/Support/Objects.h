// The words of the tests for objects: number(), string(), arrayOf() … make them of plain values, text() and
// joined() show them as plain text, and raised() tells what an operation raises.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/SEL.h"
#include "Platform/Runtime/Object/TypeEncoding.h"
#include "Tests/Support/Raised.h"

#include <concepts>

inline SEL operator""_sel(const char *name, std::size_t length) {
    return sel_registerName({name, length});
}

/// Of the value's own type. Equal numbers are different objects, so that the order among equals shows; only
/// booleans are the same ones each time.
template <class T>
Ref<NSNumber> number(T value) {
    const char encoding = runtime::typeEncoding<T>().front();
    if constexpr (std::same_as<T, bool>)
        return NSNumber::numberWithBool(value);
    else if constexpr (std::floating_point<T>)
        return make<NSNumber>(encoding, double{value});
    else if constexpr (std::is_signed_v<T>)
        return make<NSNumber>(encoding, std::int64_t{value});
    else
        return make<NSNumber>(encoding, std::uint64_t{value});
}

/// None for what is no UTF-8.
inline Ref<NSString> string(std::string_view utf8) {
    return NSString::stringWithUTF8String(utf8);
}

inline Ref<NSData> dataOf(std::string_view bytes) {
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

inline Ref<NSArray> arrayOf(std::vector<id> objects) {
    return NSArray::arrayWithObjects(std::move(objects));
}

inline Ref<NSSet> setOf(std::initializer_list<id> objects) {
    return NSSet::setWithObjects(objects);
}

inline Ref<NSDictionary> dictionaryOf(NSDictionary::Entries entries) {
    return NSDictionary::dictionaryWithEntries(entries);
}

/// The description as UTF-8; "(none)" for none.
inline std::string text(const id &object) {
    return object ? object->description()->utf8() : "(none)";
}

/// A number's text behind the letter of its type, as in "q 31"; of others the text alone.
inline std::string typed(const id &object) {
    const auto number = as<NSNumber>(object);
    return (number ? std::string{number->objCType(), ' '} : "") + text(object);
}

/// The texts of the elements with blanks between.
inline std::string joined(const Ref<NSArray> &array) {
    return array ? array->componentsJoinedByString(u" "_ns)->utf8() : "(none)";
}

/// What the bytes are as text; "(none)" for none.
inline std::string contents(const Ref<NSData> &data) {
    return data ? std::string(data->span().begin(), data->span().end()) : "(none)";
}

inline std::string repeated(std::string_view piece, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += piece;
    return all;
}
