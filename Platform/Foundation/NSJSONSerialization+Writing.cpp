#include "Platform/Foundation/DecimalText.h"
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/ObjectTable.h"
#include "Platform/Foundation/Unicode.h"
#include "Platform/Runtime/Class.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace {

/// Growing memory whose end is written to directly.
class Output {
public:
    /// Room for `count` more bytes; `wrote` says how far it was used.
    char *room(std::size_t count) {
        if (bytes_.size() - used_ < count)
            bytes_.resize(std::max(2 * bytes_.size(), used_ + count));
        return reinterpret_cast<char *>(bytes_.data()) + used_;
    }
    void wrote(const char *end) {
        used_ = static_cast<std::size_t>(end - reinterpret_cast<char *>(bytes_.data()));
    }

    void put(char byte) {
        *room(1) = byte;
        ++used_;
    }
    void put(std::string_view text) { wrote(std::copy(text.begin(), text.end(), room(text.size()))); }
    void fill(std::size_t count, char byte) { wrote(std::fill_n(room(count), count, byte)); }

    std::vector<std::uint8_t> take() {
        bytes_.resize(used_);
        return std::move(bytes_);
    }

private:
    std::vector<std::uint8_t> bytes_ = std::vector<std::uint8_t>(256);
    std::size_t used_ = 0;
};

enum class Kind { string, number, array, dictionary, null, other };

/// What JSON makes of an object. Ordinary objects are told by their very class, others by their ancestors.
Kind kindOf(const NSObject *object) {
    static const std::array<std::pair<Class, Kind>, 5> kinds = {{{NSString::class_(), Kind::string},
                                                                 {NSNumber::class_(), Kind::number},
                                                                 {NSDictionary::class_(), Kind::dictionary},
                                                                 {NSArray::class_(), Kind::array},
                                                                 {NSNull::class_(), Kind::null}}};
    const Class own = object ? object->isa() : nullptr;
    for (const auto &[cls, kind] : kinds)
        if (own == cls)
            return kind;
    for (const auto &[cls, kind] : kinds)
        if (own && own->isSubclassOf(cls))
            return kind;
    return Kind::other;
}

template <class T>
const T &known(const id &object) {
    return static_cast<const T &>(*object);
}

/// Why nothing was written; null when all is well.
using Reason = const char *;

/// Every item, until `visit` gives a reason. Objects lie scattered in memory: those of the next items are
/// fetched while one is written.
template <class Item, class ObjectOf, class Visit>
Reason eachItem(std::span<const Item> items, ObjectOf objectOf, Visit visit) {
    constexpr std::size_t ahead = 4;
    const auto fetch = [&](std::size_t i) {
        if (i < items.size())
            __builtin_prefetch(objectOf(items[i]).get());
    };
    for (std::size_t i = 0; i < ahead; ++i)
        fetch(i);
    for (std::size_t i = 0; i < items.size(); ++i) {
        fetch(i + ahead);
        if (Reason reason = visit(items[i]))
            return reason;
    }
    return nullptr;
}

/// Every entry of the dictionary, in the same way.
template <class Visit>
Reason eachEntry(const NSDictionary &dictionary, Visit visit) {
    if (const ObjectTable *table = dictionary.table())
        return eachItem(
            table->entries(), [](const auto &entry) -> const id & { return entry.value; },
            [&](const auto &entry) { return entry.key ? visit(entry.key, entry.value) : nullptr; });
    for (const auto &[key, value] : dictionary.allEntries()) // without the lock of a guarded one
        if (Reason reason = visit(key, value))
            return reason;
    return nullptr;
}

/// Every element of the array, in the same way.
template <class Visit>
Reason eachElement(const NSArray &array, Visit visit) {
    const auto walk = [&](std::span<const id> elements) {
        return eachItem(elements, std::identity(), visit);
    };
    if (const auto elements = array.elements())
        return walk(*elements);
    return walk(array.allObjects());
}

constexpr Reason tooDeep = "Too many nested arrays or dictionaries.";
constexpr Reason notText = "Invalid key: not a text.";
constexpr Reason notFinite = "Invalid number: not finite.";

/// `depth` is the number of containers around the value.
Reason whyInvalid(const id &value, std::size_t depth) {
    switch (kindOf(value.get())) {
    case Kind::string:
    case Kind::null:
        return nullptr;
    case Kind::number:
        return std::isfinite(known<NSNumber>(value).doubleValue()) ? nullptr : notFinite;
    case Kind::array:
        if (depth >= NSJSONSerialization::deepestNesting)
            return tooDeep;
        return eachElement(known<NSArray>(value),
                           [&](const id &element) { return whyInvalid(element, depth + 1); });
    case Kind::dictionary:
        if (depth >= NSJSONSerialization::deepestNesting)
            return tooDeep;
        return eachEntry(known<NSDictionary>(value), [&](const id &key, const id &object) {
            return kindOf(key.get()) == Kind::string ? whyInvalid(object, depth + 1) : notText;
        });
    case Kind::other:
        break;
    }
    return "Invalid type.";
}

/// For each ASCII character what stands behind the backslash: 0 for one that stays, 'u' for a number.
constexpr auto escapes = [] {
    std::array<char, 128> table{};
    std::fill_n(table.begin(), 0x20, 'u');
    constexpr std::string_view special = "\"\\\b\f\n\r\t/", letters = "\"\\bfnrt/";
    for (std::size_t i = 0; i < special.size(); ++i)
        table[static_cast<unsigned char>(special[i])] = letters[i];
    return table;
}();

class Writer {
public:
    explicit Writer(NSJSONWritingOptions options)
        : pretty_(options & NSJSONWritingOptions::PrettyPrinted),
          sorted_(options & NSJSONWritingOptions::SortedKeys), escapes_(escapes) {
        if (options & NSJSONWritingOptions::WithoutEscapingSlashes)
            escapes_['/'] = 0;
    }

    std::vector<std::uint8_t> take() { return out_.take(); }

    Reason value(const id &object) {
        switch (kindOf(object.get())) {
        case Kind::string:
            return string(known<NSString>(object));
        case Kind::number:
            return number(known<NSNumber>(object));
        case Kind::array:
            return list('[', ']', [&](auto item) {
                return eachElement(known<NSArray>(object), [&](const id &element) {
                    item();
                    return value(element);
                });
            });
        case Kind::dictionary:
            return list('{', '}', [&](auto item) {
                return entries(known<NSDictionary>(object), [&](const id &key, const id &element) {
                    item();
                    return entry(key, element);
                });
            });
        case Kind::null:
            out_.put("null");
            return nullptr;
        case Kind::other:
            break;
        }
        return "Invalid type.";
    }

private:
    template <class Visit>
    Reason entries(const NSDictionary &dictionary, Visit visit) const {
        if (!sorted_)
            return eachEntry(dictionary, visit);
        auto all = dictionary.allEntries();
        for (const auto &[key, object] : all)
            if (kindOf(key.get()) != Kind::string)
                return notText;
        std::sort(all.begin(), all.end(), [](const auto &a, const auto &b) {
            return known<NSString>(a.first).units() < known<NSString>(b.first).units();
        });
        for (const auto &[key, object] : all)
            if (Reason reason = visit(key, object))
                return reason;
        return nullptr;
    }

    Reason entry(const id &key, const id &object) {
        if (kindOf(key.get()) != Kind::string)
            return notText;
        if (Reason reason = string(known<NSString>(key)))
            return reason;
        out_.put(pretty_ ? " : " : ":");
        return value(object);
    }

    /// `items` writes the list, and calls what it is given before each item.
    template <class Items>
    Reason list(char opening, char closing, Items items) {
        if (depth_ >= NSJSONSerialization::deepestNesting)
            return tooDeep;
        out_.put(opening);
        ++depth_;
        bool empty = true;
        const Reason reason = items([&] {
            if (!empty)
                out_.put(',');
            empty = false;
            startLine();
        });
        if (pretty_ && empty)
            out_.put('\n');
        --depth_;
        startLine();
        out_.put(closing);
        return reason;
    }

    void startLine() {
        if (!pretty_)
            return;
        out_.put('\n');
        out_.fill(2 * depth_, ' ');
    }

    Reason number(const NSNumber &number) {
        DecimalBuffer buffer;
        if (number.isBoolean())
            out_.put(number.boolValue() ? "true" : "false");
        else if (!std::isfinite(number.doubleValue()))
            return notFinite;
        else if (number.isDecimal()) // with all its digits
            out_.put(number.stringValue()->utf8());
        else if (number.isFloating()) // a float in the digits of a double, which is how it is read
            out_.put(decimalText(number.doubleValue(), buffer));
        else if (number.objCType() >= 'A' && number.objCType() <= 'Z')
            out_.put(decimalText(number.unsignedLongLongValue(), buffer));
        else
            out_.put(decimalText(number.longLongValue(), buffer));
        return nullptr;
    }

    Reason string(const NSString &text) {
        const std::u16string &units = text.units();
        constexpr std::size_t longest = 6; // bytes a unit: a backslash, "u" and four digits
        char *out = out_.room(longest * units.size() + 2);
        *out++ = '"';
        for (std::size_t i = 0; i < units.size();) {
            const char16_t unit = units[i];
            if (unit < 0x80 && !escapes_[unit]) {
                *out++ = static_cast<char>(unit);
                ++i;
            } else if (unit < 0x80) {
                out = escaped(out, unit);
                ++i;
            } else {
                const std::size_t length = unicode::encodeCharacter(units, i, out);
                if (length == 0)
                    return "Invalid text: a surrogate stands alone.";
                out += length;
            }
        }
        *out++ = '"';
        out_.wrote(out);
        return nullptr;
    }

    char *escaped(char *out, char16_t unit) const {
        static constexpr char hexadecimal[] = "0123456789abcdef";
        *out++ = '\\';
        *out++ = escapes_[unit];
        if (escapes_[unit] == 'u')
            for (const char digit : {'0', '0', hexadecimal[unit >> 4], hexadecimal[unit & 15]})
                *out++ = digit;
        return out;
    }

    const bool pretty_;
    const bool sorted_;
    std::array<char, 128> escapes_;
    std::size_t depth_ = 0;
    Output out_;
};

Ref<NSData> fail(Ref<NSError> *error, const char *reason) {
    if (error)
        *error = NSError::errorWithDomain(
            NSCocoaErrorDomain(), NSPropertyListWriteInvalidError,
            NSDictionary::dictionaryWithEntries(
                {{NSLocalizedDescriptionKey(),
                  u"The data couldn’t be written because it isn’t in the correct format."_ns},
                 {NSDebugDescriptionErrorKey(), NSString::stringWithFormat("%s", reason)}}));
    return nullptr;
}

bool isContainer(const id &object) {
    const Kind kind = kindOf(object.get());
    return kind == Kind::array || kind == Kind::dictionary;
}

} // namespace

bool NSJSONSerialization::isValidJSONObject(const id &object) {
    return isContainer(object) && !whyInvalid(object, 0);
}

Ref<NSData> NSJSONSerialization::dataWithJSONObject(const id &object, NSJSONWritingOptions options,
                                                    Ref<NSError> *error) {
    if (!isContainer(object) && !(options & NSJSONWritingOptions::FragmentsAllowed))
        return fail(error, "Invalid top-level type: neither array nor dictionary.");
    Writer writer(options);
    if (Reason reason = writer.value(object))
        return fail(error, reason);
    return make<NSData>(writer.take());
}
