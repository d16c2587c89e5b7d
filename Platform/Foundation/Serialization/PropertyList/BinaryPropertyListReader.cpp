#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListReader.h"

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListFormat.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Platform/Runtime/Object/ObjectPool.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>

namespace {

using namespace binaryPropertyList;

constexpr unsigned deepest = NSPropertyListSerialization::deepestNesting;

class Reader {
public:
    Reader(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal)
        : bytes_(bytes), budget_(mostFree + mostPerByte * bytes.size()), objects_(objects),
          refusal_(refusal) {}

    id read() {
        if (!bytes_.starts_with(head))
            return refuse(0, "\"bplist00\"");
        if (bytes_.size() < head.size() + trailerSize)
            return refuse(bytes_.size(), "a trailer of 32 bytes");
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = byte(trailer + 6);
        referenceSize_ = byte(trailer + 7);
        const auto count = number(trailer + 8, 8), top = number(trailer + 16, 8);
        table_ = number(trailer + 24, 8);
        if (offsetSize_ < 1 || offsetSize_ > 8)
            return refuse(trailer + 6, "an offset size of 1 to 8 bytes");
        if (referenceSize_ < 1 || referenceSize_ > 8)
            return refuse(trailer + 7, "a reference size of 1 to 8 bytes");
        if (table_ < head.size() || table_ > trailer || count > (trailer - table_) / offsetSize_)
            return refuse(trailer + 24, "a table of offsets in front of the trailer");
        places_.resize(count);
        return spend(overhead, 0) ? value(top, 0, trailer + 16) : nullptr;
    }

private:
    /// The state of the object with one index.
    struct Place {
        id made; ///< none if not yet made, or if it is made anew for every reference
        std::uint64_t weight =
            0; ///< expanded size without the overhead, which counts for the reference to it
        std::uint16_t height = 0; ///< levels of containers
        Kind kind{};
        bool isOpen = false;
    };

    struct Object {
        std::size_t start, contents;
        std::uint64_t count; ///< bytes, units, elements or entries
        std::uint64_t size;  ///< of the contents, in bytes
        Kind kind;
        unsigned low; ///< the low bits of the marker

        /// The number of its references.
        std::uint64_t parts() const { return kind == array ? count : kind == dictionary ? 2 * count : 0; }
    };

    id refuse(std::size_t at, const char *expected) {
        if (refusal_.empty())
            refusal_ = "Byte " + std::to_string(at) + ": expected " + expected + ".";
        return nullptr;
    }

    unsigned byte(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }

    std::uint64_t number(std::size_t at, std::size_t size) const {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | byte(at + i);
        return value;
    }

    std::string_view contents(const Object &object) const {
        return bytes_.substr(object.contents, object.size);
    }

    /// The object, with mutable leaves if requested. `depth` containers are around it; the reference to it is
    /// at `from`.
    id value(std::uint64_t index, unsigned depth, std::size_t from) {
        id made = object(index, depth, from);
        if (!made)
            return nullptr;
        const Kind kind = places_[index].kind;
        return kind == data || kind == asciiText || kind == utf16Text ? objects_.leaf(made) : made;
    }

    id key(std::uint64_t index, unsigned depth, std::size_t from) {
        id made = object(index, depth, from);
        if (made && places_[index].kind != asciiText && places_[index].kind != utf16Text)
            return refuse(from, "a text as a key");
        return made;
    }

    /// The object, with immutable leaves.
    id object(std::uint64_t index, unsigned depth, std::size_t from) {
        if (index >= places_.size())
            return refuse(from, "the number of an object");
        Place &place = places_[index];
        if (place.isOpen)
            return refuse(from, "no object that holds itself");
        if (place.made) {
            if (depth + place.height > deepest)
                return refuse(from, tooDeep);
            return spend(place.weight, from) ? place.made : nullptr;
        }
        const std::uint64_t left = budget_;
        const auto found = find(index);
        if (!found || !spend(found->size + overhead * found->parts(), found->start))
            return nullptr;
        const bool isContainer = found->kind == array || found->kind == dictionary;
        if (isContainer && depth == deepest)
            return refuse(found->start, tooDeep);
        place.kind = found->kind;
        place.isOpen = true;
        id made = isContainer ? container(*found, depth, place.height) : leaf(*found);
        place.isOpen = false;
        place.weight = left - budget_;
        if (!isContainer || !objects_.mutableContainers())
            place.made = made;
        return made;
    }

    bool spend(std::uint64_t weight, std::size_t at) {
        if (weight > budget_)
            return refuse(at, "a list that does not unfold beyond all measure"), false;
        budget_ -= weight;
        return true;
    }

    /// Finds and measures the object; nothing when it is malformed or not in front of the table.
    std::optional<Object> find(std::uint64_t index) {
        const std::size_t entry = table_ + index * offsetSize_;
        Object found{};
        found.start = number(entry, offsetSize_);
        if (found.start < head.size() || found.start >= table_)
            return refuse(entry, "an offset between the head and the table"), std::nullopt;
        found.contents = found.start + 1;
        found.kind = static_cast<Kind>(byte(found.start) >> 4);
        found.low = byte(found.start) & 15;
        if (!measure(found))
            return std::nullopt;
        return found;
    }

    /// Sets the count and size of the object, and where its contents begin.
    bool measure(Object &object) {
        std::size_t unit = 1;
        switch (object.kind) {
        case flag:
            if (object.low != 8 && object.low != 9)
                return refuse(object.start, "a flag"), false;
            return true;
        case whole:
            if (object.low > 4)
                return refuse(object.start, "a whole number of 1 to 16 bytes"), false;
            object.count = 1u << object.low;
            break;
        case real:
            if (object.low != 2 && object.low != 3)
                return refuse(object.start, "a real number of 4 or 8 bytes"), false;
            object.count = 1u << object.low;
            break;
        case date:
            if (object.low != 3)
                return refuse(object.start, "a date of 8 bytes"), false;
            object.count = 8;
            break;
        case uid:
            object.count = object.low + 1;
            break;
        case data:
        case asciiText:
        case utf16Text:
        case array:
        case dictionary:
            unit = object.kind == utf16Text    ? 2
                   : object.kind == array      ? referenceSize_
                   : object.kind == dictionary ? 2 * referenceSize_
                                               : 1;
            if (!count(object))
                return false;
            break;
        default:
            return refuse(object.start, "an object of a property list"), false;
        }
        if (object.count > (table_ - object.contents) / unit)
            return refuse(object.start, "an object in front of the table"), false;
        object.size = object.count * unit;
        return true;
    }

    bool count(Object &object) {
        object.count = object.low;
        if (object.low < 15)
            return true;
        const std::size_t at = object.contents;
        const std::size_t size =
            at < table_ && byte(at) >> 4 == whole ? std::size_t{1} << (byte(at) & 15) : 0;
        if (size == 0 || size > 8 || size > table_ - at - 1)
            return refuse(at, "a count of 1 to 8 bytes"), false;
        object.count = number(at + 1, size);
        object.contents = at + 1 + size;
        return true;
    }

    id leaf(const Object &object) {
        switch (object.kind) {
        case flag:
            return NSNumber::numberWithBool(object.low == 9);
        case whole:
            return wholeNumber(object);
        case real:
            return pool_.make<NSNumber>('d', floating(object));
        case date: {
            const double seconds = floating(object);
            return std::isfinite(seconds) ? pool_.make<NSDate>(seconds)
                                          : refuse(object.start, "a finite date");
        }
        case data: {
            const auto bytes = contents(object);
            return pool_.make<NSData>(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
        }
        case asciiText: {
            const auto bytes = contents(object);
            if (std::any_of(bytes.begin(), bytes.end(), [](char byte) { return byte < 0; }))
                return refuse(object.start, "a text of ASCII characters");
            return pool_.make<NSString>(std::u16string(bytes.begin(), bytes.end()));
        }
        case utf16Text: {
            std::u16string units(object.count, u'\0');
            for (std::size_t i = 0; i < units.size(); ++i)
                units[i] = static_cast<char16_t>(number(object.contents + 2 * i, 2));
            if (unicode::loneSurrogate(units))
                return refuse(object.start, "a text in which no surrogate stands alone");
            return pool_.make<NSString>(std::move(units));
        }
        default:
            return reference(object);
        }
    }

    id wholeNumber(const Object &object) {
        constexpr auto greatestSigned = std::uint64_t{std::numeric_limits<std::int64_t>::max()};
        const std::uint64_t low =
            number(object.contents + (object.size > 8 ? 8 : 0), std::min<std::size_t>(object.size, 8));
        const std::uint64_t high = object.size > 8 ? number(object.contents, 8) : 0;
        if (high == 0 && low > greatestSigned && object.size > 8)
            return pool_.make<NSNumber>('Q', low);
        if (high != 0 && !(~high == 0 && low > greatestSigned))
            return refuse(object.start, "a whole number of 64 bits");
        return pool_.make<NSNumber>('q', static_cast<std::int64_t>(low));
    }

    double floating(const Object &object) const {
        const std::uint64_t bits = number(object.contents, object.size);
        return object.size == 4 ? double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))}
                                : std::bit_cast<double>(bits);
    }

    id reference(const Object &object) {
        if (!objects_.references)
            return refuse(object.start, "no reference outside of an archive");
        std::size_t at = object.contents;
        const std::size_t end = at + object.size;
        while (end - at > 8)
            if (byte(at++) != 0)
                return refuse(object.start, "a reference of 64 bits");
        return pool_.make<PropertyListUID>(number(at, end - at));
    }

    id container(const Object &object, unsigned depth, std::uint16_t &height) {
        return object.kind == array ? arrayOf(object, depth, height) : dictionaryOf(object, depth, height);
    }

    id arrayOf(const Object &object, unsigned depth, std::uint16_t &height) {
        std::vector<id> elements;
        elements.reserve(object.count);
        height = 1;
        for (std::size_t at = object.contents; elements.size() < object.count; at += referenceSize_) {
            const auto index = number(at, referenceSize_);
            elements.push_back(value(index, depth + 1, at));
            if (!elements.back())
                return nullptr;
            rise(height, index);
        }
        return objects_.array(std::move(elements));
    }

    id dictionaryOf(const Object &object, unsigned depth, std::uint16_t &height) {
        ObjectTable entries(object.count);
        height = 1;
        std::size_t keyAt = object.contents, valueAt = keyAt + object.size / 2;
        for (std::uint64_t i = 0; i < object.count; ++i, keyAt += referenceSize_, valueAt += referenceSize_) {
            id itsKey = key(number(keyAt, referenceSize_), depth + 1, keyAt);
            const auto index = number(valueAt, referenceSize_);
            id itsValue = itsKey ? value(index, depth + 1, valueAt) : nullptr;
            if (!itsValue)
                return nullptr;
            rise(height, index);
            entries.set(std::move(itsKey), std::move(itsValue));
        }
        return objects_.dictionary(std::move(entries));
    }

    /// Makes the height at least one more than that of the part, which was just made.
    void rise(std::uint16_t &height, std::uint64_t part) const {
        height = std::max(height, static_cast<std::uint16_t>(places_[part].height + 1));
    }

    static constexpr const char *tooDeep = "at most 512 levels of arrays and dictionaries";

    const std::string_view bytes_;
    std::uint64_t budget_; ///< what objects may still weigh
    const PropertyListObjects &objects_;
    std::string &refusal_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t table_ = 0; ///< where the offsets of the objects begin
    std::vector<Place> places_;
    ObjectPool pool_;
};

} // namespace

id readBinaryPropertyList(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal) {
    return Reader(bytes, objects, refusal).read();
}
