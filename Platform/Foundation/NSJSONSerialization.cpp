#include "Platform/Foundation/NSJSONSerialization.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/ObjectTable.h"
#include "Platform/Foundation/Unicode.h"
#include "Platform/Runtime/ObjectPool.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <vector>

// The reader skips blanks and plain characters sixteen at a time where the processor can.
#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#elif defined(__ARM_NEON)
#define RAPIDJSON_NEON
#endif
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace {

/// None for bytes that are not valid UTF-8.
Ref<NSString> makeText(std::string_view bytes, ObjectPool &pool) {
    auto units = unicode::utf16FromUTF8(bytes);
    return units ? pool.make<NSString>(std::move(*units)) : nullptr;
}

/// The texts seen last. Records of a list have the same keys and many equal values, so most keys and short
/// values are here already.
class RecentTexts {
public:
    /// None for bytes that are not valid UTF-8. The bytes must outlive the table.
    const Ref<NSString> &text(std::string_view bytes, ObjectPool &pool) {
        Slot &slot = slots_[slotOf(bytes)];
        if (slot.bytes != bytes || !slot.text)
            slot = {bytes, makeText(bytes, pool)};
        return slot.text;
    }

private:
    struct Slot {
        std::string_view bytes;
        Ref<NSString> text;
    };
    static constexpr std::size_t size = 256;

    static std::size_t slotOf(std::string_view bytes) {
        const auto at = [&](std::size_t i) { return std::size_t{static_cast<unsigned char>(bytes[i])}; };
        const std::size_t length = bytes.size();
        return length == 0 ? 0 : (length * 7 + at(0) * 31 + at(length / 2) * 61 + at(length - 1)) % size;
    }

    std::array<Slot, size> slots_;
};

/// Builds the objects while the reader walks the text. What is open waits on one stack: the elements of an
/// array, or keys and values in turn, until the end tells how many there are.
class Builder {
public:
    explicit Builder(bool mutableContainers) : mutable_(mutableContainers) {}

    id result() const { return pending_.front(); }
    const char *refusal() const { return refusal_; }

    bool Null() { return value(NSNull::null()); }
    bool Bool(bool flag) { return value(NSNumber::numberWithBool(flag)); }
    bool Int(int number) { return Int64(number); }
    bool Uint(unsigned number) { return Int64(number); }
    bool Int64(std::int64_t number) { return value(pool_.make<NSNumber>('q', number)); }
    bool Uint64(std::uint64_t number) {
        return number <= INT64_MAX ? Int64(static_cast<std::int64_t>(number))
                                   : value(pool_.make<NSNumber>('Q', number));
    }
    bool Double(double number) { return value(pool_.make<NSNumber>('d', number)); }
    bool RawNumber(const char *, rapidjson::SizeType, bool) { return false; }
    bool String(const char *bytes, rapidjson::SizeType length, bool) {
        constexpr rapidjson::SizeType longest = 24; // what is longer is seldom seen again
        return text(length > longest ? makeText({bytes, length}, pool_)
                                     : values_.text({bytes, length}, pool_));
    }
    bool Key(const char *bytes, rapidjson::SizeType length, bool) {
        return text(keys_.text({bytes, length}, pool_));
    }
    bool StartObject() { return open(); }
    bool StartArray() { return open(); }
    bool EndObject(rapidjson::SizeType count) {
        ObjectTable table(count);
        for (auto entry = pending_.end() - 2 * static_cast<std::ptrdiff_t>(count); entry != pending_.end();
             entry += 2)
            table.set(std::move(entry[0]), std::move(entry[1]));
        return close(2 * std::size_t{count}, mutable_
                                                 ? NSMutableDictionary::dictionaryWithTable(std::move(table))
                                                 : NSDictionary::dictionaryWithTable(std::move(table)));
    }
    bool EndArray(rapidjson::SizeType count) {
        std::vector<id> elements(std::move_iterator(pending_.end() - static_cast<std::ptrdiff_t>(count)),
                                 std::move_iterator(pending_.end()));
        return close(count, mutable_ ? NSMutableArray::arrayWithObjects(std::move(elements))
                                     : NSArray::arrayWithObjects(std::move(elements)));
    }

private:
    bool value(id object) {
        pending_.push_back(std::move(object));
        return true;
    }

    bool text(Ref<NSString> string) {
        if (!string)
            refusal_ = "Invalid UTF-8 in string.";
        return string && value(std::move(string));
    }

    bool open() {
        if (depth_ == NSJSONSerialization::deepestNesting)
            refusal_ = "Too many nested arrays or dictionaries.";
        else
            ++depth_;
        return !refusal_;
    }

    bool close(std::size_t used, id container) {
        --depth_;
        pending_.resize(pending_.size() - used);
        return value(std::move(container));
    }

    const bool mutable_;
    ObjectPool pool_;
    RecentTexts keys_, values_;
    std::vector<id> pending_;
    std::size_t depth_ = 0; // bounds the reader's recursion, too
    const char *refusal_ = nullptr;
};

void fail(Ref<NSError> *error, const char *reason, std::size_t offset) {
    if (!error)
        return;
    const auto description = u"The data couldn’t be read because it isn’t in the correct format."_ns;
    *error = NSError::errorWithDomain(
        NSCocoaErrorDomain(), NSPropertyListReadCorruptError,
        NSDictionary::dictionaryWithEntries(
            {{NSLocalizedDescriptionKey(), description},
             {NSDebugDescriptionErrorKey(),
              NSString::stringWithFormat("%s Around character %lu.", reason, offset)}}));
}

/// A copy of the text for the reader to work in. The zeros behind it end it, and let the reader look at whole
/// registers.
std::unique_ptr<char[]> workingCopy(std::string_view text) {
    constexpr std::size_t padding = 32;
    auto copy = std::make_unique_for_overwrite<char[]>(text.size() + padding);
    std::copy(text.begin(), text.end(), copy.get());
    std::fill_n(copy.get() + text.size(), padding, '\0');
    return copy;
}

std::string_view withoutByteOrderMark(std::string_view text) {
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

} // namespace

id NSJSONSerialization::JSONObjectWithData(const Ref<NSData> &data, NSJSONReadingOptions options,
                                           Ref<NSError> *error) {
    if (!data || data->length() == 0) {
        fail(error, "No value.", 0);
        return nullptr;
    }
    const std::string_view whole(reinterpret_cast<const char *>(data->bytes()), data->length());
    const std::string_view text = withoutByteOrderMark(whole);
    const auto copy = workingCopy(text);
    rapidjson::InsituStringStream stream(copy.get());
    rapidjson::Reader reader;
    Builder builder(options & NSJSONReadingOptions::MutableContainers);
    const rapidjson::ParseResult parsed =
        reader.Parse<rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag>(stream, builder);
    if (parsed.IsError()) {
        fail(error, builder.refusal() ? builder.refusal() : rapidjson::GetParseError_En(parsed.Code()),
             parsed.Offset() + (whole.size() - text.size()));
        return nullptr;
    }
    if (stream.Tell() != text.size()) { // the reader takes a zero byte for the end
        fail(error, "Garbage at end.", stream.Tell() + (whole.size() - text.size()));
        return nullptr;
    }
    const id result = builder.result();
    if (!(options & NSJSONReadingOptions::AllowFragments) && !as<NSArray>(result) &&
        !as<NSDictionary>(result)) {
        fail(error, "JSON text did not start with array or object and option to allow fragments not set.", 0);
        return nullptr;
    }
    return result;
}
