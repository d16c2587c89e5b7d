#include "Platform/Foundation/Serialization/Archive/KeyedCoding.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedUnarchiver.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Reflection/Reflection.h"

#include <algorithm>

namespace {

using Archiver = NSKeyedArchiver;
using Unarchiver = NSKeyedUnarchiver;

/// For the mutable kind of a class.
template <auto Decode>
id mutableOf(Unarchiver &unarchiver) {
    const id made = Decode(unarchiver);
    return made ? made->mutableCopy() : nullptr;
}

void encodeString(const id &object, Archiver &archiver) {
    archiver.encodePropertyList(object->copy(), u"NS.string"_ns);
}
id decodeString(Unarchiver &unarchiver) {
    return as<NSString>(unarchiver.decodePropertyListForKey(u"NS.string"_ns));
}

void encodeData(const id &object, Archiver &archiver) {
    archiver.encodePropertyList(object->copy(), u"NS.data"_ns);
}
id decodeData(Unarchiver &unarchiver) {
    return unarchiver.decodeBytesForKey(u"NS.data"_ns);
}

void encodeDate(const id &object, Archiver &archiver) {
    archiver.encodeDouble(as<NSDate>(object)->timeIntervalSinceReferenceDate(), u"NS.time"_ns);
}
id decodeDate(Unarchiver &unarchiver) {
    if (!unarchiver.containsValueForKey(u"NS.time"_ns))
        return nullptr;
    return NSDate::dateWithTimeIntervalSinceReferenceDate(unarchiver.decodeDoubleForKey(u"NS.time"_ns));
}

// URLs have no base here.
void encodeURL(const id &object, Archiver &archiver) {
    archiver.encodeObject(nullptr, u"NS.base"_ns);
    archiver.encodeObject(as<NSURL>(object)->absoluteString(), u"NS.relative"_ns);
}
id decodeURL(Unarchiver &unarchiver) {
    if (unarchiver.decodeObjectForKey(u"NS.base"_ns))
        return nullptr;
    return NSURL::URLWithString(as<NSString>(unarchiver.decodeObjectForKey(u"NS.relative"_ns)));
}

void encodeNothing(const id &, Archiver &) {}
id decodeNull(Unarchiver &) {
    return NSNull::null();
}

/// Numbers are inline, so a dictionary of their values is refused.
id decodeNoNumber(Unarchiver &) {
    return nullptr;
}

// A value is written as the bytes of a structure of numbers, in the machine's byte order. Other values, such
// as pointers, have no meaning in another process.

bool isOfNumbers(std::string_view encoding) {
    const auto type = runtime::firstType(encoding);
    return type && type->length == encoding.size() && type->size > 0 && encoding.starts_with('{') &&
           encoding.find_first_of("@#:*^?") == encoding.npos;
}

void encodeValue(const id &object, Archiver &archiver) {
    const auto value = as<NSValue>(object);
    const std::string type = value->objCType();
    if (!isOfNumbers(type))
        return archiver.failWithError(cocoaError(
            NSCoderInvalidValueError, u"A value other than a structure of numbers cannot be written."_ns));
    std::vector<std::uint8_t> bytes(runtime::firstType(type)->size);
    value->getValue(bytes.data(), bytes.size());
    archiver.encodeObject(NSString::stringWithUTF8String(type), u"NS.type"_ns);
    archiver.encodeBytes(bytes.data(), bytes.size(), u"NS.bytes"_ns);
}

id decodeValue(Unarchiver &unarchiver) {
    const auto type = as<NSString>(unarchiver.decodeObjectForKey(u"NS.type"_ns));
    const auto bytes = unarchiver.decodeBytesForKey(u"NS.bytes"_ns);
    const std::string encoding = type ? type->utf8() : "";
    if (!bytes || !isOfNumbers(encoding) || runtime::firstType(encoding)->size != bytes->length())
        return nullptr;
    return NSValue::valueWithBytes(bytes->bytes(), encoding);
}

// A decimal is written as an integer of 128 bits, with its 16-bit words and their bytes in little-endian
// order, the number of words used, and an exponent. No words and a negative sign mean not-a-number.

__extension__ using Whole = unsigned __int128;
constexpr std::int32_t littleEndian = 1, bigEndian = 2, wordsOfWhole = sizeof(Whole) / 2;

void encodeDecimal(const id &object, Archiver &archiver) {
    const NSDecimal &value = as<NSDecimalNumber>(object)->value();
    // A value with few digits may have an exponent beyond the limit: zeros are appended to make it smaller.
    std::string digits = value.digits;
    const auto exponent = std::min(value.exponent, NSDecimal::greatestExponent);
    digits.append(static_cast<std::size_t>(value.exponent - exponent), '0');
    Whole whole = 0;
    for (const char digit : digits)
        whole = whole * 10 + static_cast<unsigned>(digit - '0');
    std::uint8_t bytes[sizeof(Whole)];
    std::int32_t words = 0;
    for (std::size_t i = 0; i < sizeof bytes; ++i, whole >>= 8) {
        bytes[i] = static_cast<std::uint8_t>(whole);
        if (bytes[i])
            words = static_cast<std::int32_t>(i / 2 + 1);
    }
    archiver.encodeInt32(static_cast<std::int32_t>(exponent), u"NS.exponent"_ns);
    archiver.encodeInt32(words, u"NS.length"_ns);
    archiver.encodeBool(value.isNegative || value.isNotANumber, u"NS.negative"_ns);
    archiver.encodeBool(true, u"NS.compact"_ns);
    archiver.encodeInt32(littleEndian, u"NS.mantissa.bo"_ns);
    archiver.encodeBytes(bytes, sizeof bytes, u"NS.mantissa"_ns);
}

id decodeDecimal(Unarchiver &unarchiver) {
    const auto bytes = unarchiver.decodeBytesForKey(u"NS.mantissa"_ns);
    const std::int32_t words = unarchiver.decodeInt32ForKey(u"NS.length"_ns);
    const std::int32_t exponent = unarchiver.decodeInt32ForKey(u"NS.exponent"_ns);
    const bool negative = unarchiver.decodeBoolForKey(u"NS.negative"_ns);
    const bool swapped = unarchiver.decodeInt32ForKey(u"NS.mantissa.bo"_ns) == bigEndian;
    if (words < 0 || words > wordsOfWhole || !bytes || bytes->length() < 2 * static_cast<NSUInteger>(words))
        return nullptr;
    if (words == 0 && negative)
        return NSDecimalNumber::notANumber();
    Whole whole = 0;
    for (auto i = 2 * static_cast<std::size_t>(words); i-- > 0;)
        whole = whole << 8 | bytes->bytes()[i ^ static_cast<std::size_t>(swapped)];
    std::string digits;
    for (; whole; whole /= 10)
        digits += static_cast<char>('0' + static_cast<int>(whole % 10));
    std::reverse(digits.begin(), digits.end());
    const auto number = (negative ? "-0" : "0") + digits + "e" + std::to_string(exponent);
    return NSDecimalNumber::decimalNumberWithDecimal(NSDecimal::read(number));
}

// Collections.

void encodeArray(const id &object, Archiver &archiver) {
    archiver.encodeArrayOfObjects(as<NSArray>(object)->allObjects(), u"NS.objects"_ns);
}
id decodeArray(Unarchiver &unarchiver) {
    auto objects = unarchiver.decodeArrayOfObjectsForKey(u"NS.objects"_ns);
    return objects ? NSArray::arrayWithObjects(std::move(*objects)) : nullptr;
}

void encodeSet(const id &object, Archiver &archiver) {
    archiver.encodeArrayOfObjects(as<NSSet>(object)->allObjects()->allObjects(), u"NS.objects"_ns);
}
id decodeSet(Unarchiver &unarchiver) {
    auto objects = unarchiver.decodeDistinctObjectsForKey(u"NS.objects"_ns);
    return objects ? NSSet::setWithArray(NSArray::arrayWithObjects(std::move(*objects))) : nullptr;
}

void encodeDictionary(const id &object, Archiver &archiver) {
    std::vector<id> keys, values;
    for (auto &[key, value] : as<NSDictionary>(object)->allEntries()) {
        keys.push_back(key);
        values.push_back(value);
    }
    archiver.encodeArrayOfObjects(keys, u"NS.keys"_ns);
    archiver.encodeArrayOfObjects(values, u"NS.objects"_ns);
}
id decodeDictionary(Unarchiver &unarchiver) {
    const auto keys = unarchiver.decodeDistinctObjectsForKey(u"NS.keys"_ns);
    const auto values = keys ? unarchiver.decodeArrayOfObjectsForKey(u"NS.objects"_ns) : std::nullopt;
    if (!values || values->size() != keys->size())
        return nullptr;
    return NSDictionary::dictionaryWithObjects(NSArray::arrayWithObjects(*values),
                                               NSArray::arrayWithObjects(*keys));
}

// An attributed text with one run is written with its attributes; one with several runs with an array of all
// attributes and, as data, two numbers per run: its length and the index of its attributes. Each number is
// split into groups of seven bits, the lowest first, one per byte; all but the last have the high bit set.

void appendNumber(NSMutableData &data, std::uint64_t value) {
    for (;; value >>= 7) {
        const auto byte = static_cast<std::uint8_t>((value & 127) | (value > 127 ? 128 : 0));
        data.appendBytes(&byte, 1);
        if (value <= 127)
            return;
    }
}

std::optional<std::uint64_t> takeNumber(std::span<const std::uint8_t> &bytes) {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63 && !bytes.empty(); shift += 7) {
        const std::uint8_t byte = bytes.front();
        bytes = bytes.subspan(1);
        value |= static_cast<std::uint64_t>(byte & 127) << shift;
        if (byte < 128)
            return value;
    }
    return std::nullopt;
}

void encodeAttributedString(const id &object, Archiver &archiver) {
    const auto attributed = as<NSAttributedString>(object);
    archiver.encodeObject(attributed->string(), u"NSString"_ns);
    const auto &runs = attributed->runs();
    if (runs.size() == 1)
        archiver.encodeObject(runs.begin()->second, u"NSAttributes"_ns);
    if (runs.size() < 2)
        return;
    const auto info = NSMutableData::dataWithCapacity(2 * runs.size());
    const auto attributes = NSMutableArray::array();
    NSUInteger start = 0;
    for (const auto &[end, attributesOfRun] : runs) {
        appendNumber(*info, end - start);
        appendNumber(*info, attributes->count());
        attributes->addObject(attributesOfRun);
        start = end;
    }
    archiver.encodeObject(attributes->copy(), u"NSAttributes"_ns);
    archiver.encodeObject(info->copy(), u"NSAttributeInfo"_ns);
}

id decodeAttributedString(Unarchiver &unarchiver) {
    const auto text = as<NSString>(unarchiver.decodeObjectForKey(u"NSString"_ns));
    const id attributes = unarchiver.decodeObjectForKey(u"NSAttributes"_ns);
    const auto several = as<NSArray>(attributes);
    if (!text || !several)
        return text ? NSAttributedString::attributedStringWithString(text, as<NSDictionary>(attributes))
                    : nullptr;
    const auto info = as<NSData>(unarchiver.decodeObjectForKey(u"NSAttributeInfo"_ns));
    NSAttributedString::Runs runs;
    NSUInteger end = 0;
    for (auto rest = info ? info->span() : std::span<const std::uint8_t>(); !rest.empty();) {
        const auto length = takeNumber(rest), index = takeNumber(rest);
        if (!length || !index || *length == 0 || *length > text->length() - end || *index >= several->count())
            return nullptr;
        end += *length;
        const auto attributesOfRun = as<NSDictionary>(several->objectAtIndex(*index));
        if (!attributesOfRun)
            return nullptr;
        runs.emplace_hint(runs.end(), end, attributesOfRun);
    }
    return end == text->length() ? make<NSAttributedString>(as<NSString>(text->copy()), std::move(runs))
                                 : nullptr;
}

/// One line per class that can be archived.
const std::vector<KeyedCoding> &table() {
    static const auto &entries = *new std::vector<KeyedCoding>{
        {NSString::class_(), true, encodeString, decodeString},
        {NSMutableString::class_(), false, encodeString, mutableOf<decodeString>},
        {NSNumber::class_(), true, encodeNothing, decodeNoNumber},
        {NSValue::class_(), false, encodeValue, decodeValue},
        {NSDecimalNumber::class_(), false, encodeDecimal, decodeDecimal},
        {NSData::class_(), true, encodeData, decodeData},
        {NSMutableData::class_(), false, encodeData, mutableOf<decodeData>},
        {NSDate::class_(), false, encodeDate, decodeDate},
        {NSURL::class_(), false, encodeURL, decodeURL},
        {NSNull::class_(), false, encodeNothing, decodeNull},
        {NSArray::class_(), false, encodeArray, decodeArray},
        {NSMutableArray::class_(), false, encodeArray, mutableOf<decodeArray>},
        {NSDictionary::class_(), false, encodeDictionary, decodeDictionary},
        {NSMutableDictionary::class_(), false, encodeDictionary, mutableOf<decodeDictionary>},
        {NSSet::class_(), false, encodeSet, decodeSet},
        {NSMutableSet::class_(), false, encodeSet, mutableOf<decodeSet>},
        {NSAttributedString::class_(), false, encodeAttributedString, decodeAttributedString},
        {NSMutableAttributedString::class_(), false, encodeAttributedString,
         mutableOf<decodeAttributedString>},
    };
    return entries;
}

/// `encodeWithCoder:` of the classes in the table.
void encodeWithCoder(NSObject *self, SEL, const id &coder) {
    const auto archiver = as<NSKeyedArchiver>(coder);
    if (!archiver)
        throw NSException(NSInvalidArgumentException,
                          "-[" + self->isa()->name() + " encodeWithCoder:]: this coder writes no archive");
    KeyedCoding::ofClass(self->isa())->encode(self->self(), *archiver);
}

} // namespace

Class KeyedCoding::classNamed(const Ref<NSString> &name) {
    return name ? runtime::findForeignClass(name->utf8()) : nullptr;
}

Ref<NSString> KeyedCoding::storedKey(const Ref<NSString> &key) {
    if (!key)
        throw NSException(NSInvalidArgumentException, "-[NSCoder]: the key is none");
    return key->hasPrefix(u"$"_ns) ? u"$"_ns->stringByAppendingString(key) : key;
}

const KeyedCoding *KeyedCoding::ofClass(Class cls) {
    const auto &entries = table();
    for (; cls; cls = cls->superclass())
        for (const KeyedCoding &entry : entries)
            if (entry.cls == cls)
                return &entry;
    return nullptr;
}

const KeyedCoding *KeyedCoding::ofObject(const id &object) {
    static const SEL selector = sel_registerName("encodeWithCoder:");
    static const IMP ours = [] {
        const auto imp = reinterpret_cast<IMP>(&encodeWithCoder);
        for (const KeyedCoding &entry : table())
            class_addMethod(entry.cls, selector, &encodeWithCoder);
        return imp;
    }();
    const Method method = object->isa()->findMethod(selector);
    return method && method->imp == ours ? ofClass(object->isa()) : nullptr;
}
