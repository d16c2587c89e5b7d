#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListWriter.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListFormat.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListWalk.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>

namespace {

namespace format = binaryPropertyList;

using Bytes = std::vector<std::uint8_t>;

void append(Bytes &out, std::uint64_t value, std::size_t size) {
    while (size-- > 0)
        out.push_back(static_cast<std::uint8_t>(value >> 8 * size));
}

/// The number of bytes for the number: 1, 2, 4 or 8.
std::size_t sizeOf(std::uint64_t value) {
    return value < 1u << 8 ? 1 : value < 1u << 16 ? 2 : value < std::uint64_t{1} << 32 ? 4 : 8;
}

void appendMarker(Bytes &out, format::Kind kind, std::uint64_t low) {
    out.push_back(static_cast<std::uint8_t>(std::uint64_t{kind} << 4 | low));
}

void appendWhole(Bytes &out, std::uint64_t value) {
    const std::size_t size = sizeOf(value);
    appendMarker(out, format::whole, static_cast<unsigned>(std::countr_zero(size)));
    append(out, value, size);
}

void appendCount(Bytes &out, format::Kind kind, std::uint64_t count) {
    appendMarker(out, kind, std::min<std::uint64_t>(count, 15));
    if (count >= 15)
        appendWhole(out, count);
}

/// The walk numbers all objects and writes the leaves; containers are written by `take`, since the size of
/// references is known only when all objects are.
class Writer : public PropertyListWalk {
public:
    /// The bytes of the whole list, after the walk.
    Bytes take() {
        Bytes out;
        const std::size_t referenceSize = sizeOf(objects_.size());
        out.reserve(format::head.size() + leaves_.size() + references_.size() * referenceSize +
                    objects_.size() * 5 + format::trailerSize);
        out.assign(format::head.begin(), format::head.end());
        for (Object &object : objects_) {
            const std::size_t offset = out.size();
            if (object.kind == leaf) {
                const auto first = leaves_.begin() + static_cast<std::ptrdiff_t>(object.start);
                out.insert(out.end(), first, first + static_cast<std::ptrdiff_t>(object.count));
            } else {
                const bool isArray = object.kind == format::array;
                appendCount(out, object.kind, object.count);
                for (std::size_t i = 0; i < object.count * (isArray ? 1 : 2); ++i)
                    append(out, references_[object.start + i], referenceSize);
            }
            object.start = offset;
        }
        const std::size_t table = out.size(), offsetSize = sizeOf(table);
        for (const Object &object : objects_)
            append(out, object.start, offsetSize);
        append(out, 0, 6);
        append(out, offsetSize, 1);
        append(out, referenceSize, 1);
        append(out, objects_.size(), 8);
        append(out, 0, 8);
        append(out, table, 8);
        return out;
    }

private:
    static constexpr format::Kind leaf{};

    struct Object {
        format::Kind kind; ///< array, dictionary or leaf
        std::size_t start; ///< in references_ or leaves_; in `take` it becomes the offset
        std::size_t count; ///< elements, entries or bytes
    };

    struct Slot {
        std::size_t number = 0; ///< of the leaf, plus 1; 0 when free
        std::uint64_t hash = 0;
    };

    bool text(const NSString &text) override {
        const std::u16string &units = text.units();
        const bool isASCII =
            std::all_of(units.begin(), units.end(), [](char16_t unit) { return unit < 0x80; });
        if (!isASCII && unicode::loneSurrogate(units))
            return refuse("a text in which no surrogate stands alone");
        appendCount(leaves_, isASCII ? format::asciiText : format::utf16Text, units.size());
        if (isASCII)
            leaves_.insert(leaves_.end(), units.begin(), units.end());
        else
            for (const char16_t unit : units)
                append(leaves_, unit, 2);
        return addLeaf();
    }

    bool number(const NSNumber &number) override {
        if (number.isBoolean()) {
            appendMarker(leaves_, format::flag, number.boolValue() ? 9 : 8);
        } else if (number.isFloating()) {
            appendMarker(leaves_, format::real, 3);
            append(leaves_, std::bit_cast<std::uint64_t>(number.doubleValue()), 8);
        } else if (const std::uint64_t value = number.unsignedLongLongValue();
                   number.objCType() == 'Q' && value > INT64_MAX) {
            appendMarker(leaves_, format::whole, 4);
            append(leaves_, 0, 8);
            append(leaves_, value, 8);
        } else {
            appendWhole(leaves_, value);
        }
        return addLeaf();
    }

    bool date(const NSDate &date) override {
        const double seconds = date.timeIntervalSinceReferenceDate();
        if (!std::isfinite(seconds))
            return refuse("a finite date");
        appendMarker(leaves_, format::date, 3);
        append(leaves_, std::bit_cast<std::uint64_t>(seconds), 8);
        return addLeaf();
    }

    bool data(const NSData &data) override {
        appendCount(leaves_, format::data, data.length());
        leaves_.insert(leaves_.end(), data.span().begin(), data.span().end());
        return addLeaf();
    }

    bool reference(const PropertyListUID &reference) override {
        const std::size_t size = sizeOf(reference.index());
        appendMarker(leaves_, format::uid, size - 1);
        append(leaves_, reference.index(), size);
        return addLeaf();
    }

    bool array(std::span<const id> elements) override {
        const std::size_t own = addContainer(format::array, elements.size(), elements.size());
        for (std::size_t i = 0; i < elements.size(); ++i) {
            if (!visitElement(elements, i))
                return false;
            references_[objects_[own].start + i] = last_;
        }
        last_ = own;
        return true;
    }

    bool dictionary(std::span<const Entry> entries) override {
        const std::size_t own = addContainer(format::dictionary, entries.size(), 2 * entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (!visitKey(entries[i]))
                return false;
            references_[objects_[own].start + i] = last_;
        }
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (!visitValue(entries[i]))
                return false;
            references_[objects_[own].start + entries.size() + i] = last_;
        }
        last_ = own;
        return true;
    }

    std::size_t addContainer(format::Kind kind, std::size_t count, std::size_t parts) {
        objects_.push_back({kind, references_.size(), count});
        references_.resize(references_.size() + parts);
        return objects_.size() - 1;
    }

    /// Adds the leaf whose bytes were just appended, or drops them if a shared leaf has the same.
    bool addLeaf() {
        const std::size_t start = end_, count = leaves_.size() - start;
        if (count > format::longestShared) {
            last_ = objects_.size();
        } else {
            if (2 * shared_ >= slots_.size())
                growSlots();
            const std::uint64_t hash = keyedHash(leafBytes(start, count));
            Slot &slot = slotOf(hash, [&](const Object &object) {
                return leafBytes(object.start, object.count) == leafBytes(start, count);
            });
            if (slot.number > 0) {
                leaves_.resize(start);
                last_ = slot.number - 1;
                return true;
            }
            last_ = objects_.size();
            slot = {last_ + 1, hash};
            ++shared_;
        }
        objects_.push_back({leaf, start, count});
        end_ = leaves_.size();
        return true;
    }

    std::string_view leafBytes(std::size_t start, std::size_t count) const {
        return {reinterpret_cast<const char *>(leaves_.data()) + start, count};
    }

    /// The slot of the equal shared leaf, or the free slot for it.
    template <class IsSame>
    Slot &slotOf(std::uint64_t hash, const IsSame &isSame) {
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            Slot &slot = slots_[at];
            if (slot.number == 0 || (slot.hash == hash && isSame(objects_[slot.number - 1])))
                return slot;
        }
    }

    void growSlots() {
        const auto old =
            std::exchange(slots_, std::vector<Slot>(std::max<std::size_t>(64, 2 * slots_.size())));
        for (const Slot &slot : old)
            if (slot.number > 0)
                slotOf(slot.hash, [](const Object &) { return false; }) = slot;
    }

    std::vector<Object> objects_;
    std::vector<std::size_t> references_; ///< of all containers
    Bytes leaves_;
    std::size_t end_ = 0;     ///< of the leaves already added
    std::size_t last_ = 0;    ///< the index of the object visited last
    std::vector<Slot> slots_; ///< hash table of the shared leaves
    std::size_t shared_ = 0;
};

} // namespace

Ref<NSData> writeBinaryPropertyList(const id &list, std::string &refusal) {
    Writer writer;
    if (writer.whole(list))
        return make<NSData>(writer.take());
    refusal = writer.refusal();
    return nullptr;
}
