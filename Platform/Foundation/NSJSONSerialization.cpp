#include "Platform/Foundation/NSJSONSerialization.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/Unicode.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace {

/// Builds the objects while the reader walks the text.
class Builder {
public:
    explicit Builder(bool mutableContainers) : mutable_(mutableContainers) {}

    id result() const { return result_; }
    const char *refusal() const { return refusal_; }

    bool Null() { return value(NSNull::null()); }
    bool Bool(bool flag) { return value(NSNumber::numberWithBool(flag)); }
    bool Int(int number) { return Int64(number); }
    bool Uint(unsigned number) { return Int64(number); }
    bool Int64(std::int64_t number) { return value(NSNumber::numberWithLongLong(number)); }
    bool Uint64(std::uint64_t number) {
        return number <= INT64_MAX ? Int64(static_cast<std::int64_t>(number))
                                   : value(NSNumber::numberWithUnsignedLongLong(number));
    }
    bool Double(double number) { return value(NSNumber::numberWithDouble(number)); }
    bool RawNumber(const char *, rapidjson::SizeType, bool) { return false; }
    bool String(const char *bytes, rapidjson::SizeType length, bool) {
        const auto string = text(bytes, length);
        return string && value(string);
    }
    bool Key(const char *bytes, rapidjson::SizeType length, bool) {
        levels_.back().key = text(bytes, length);
        return levels_.back().key != nullptr;
    }
    bool StartObject() { return open({nullptr, NSMutableDictionary::dictionary(), nullptr}); }
    bool StartArray() { return open({NSMutableArray::array(), nullptr, nullptr}); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

private:
    struct Level {
        Ref<NSMutableArray> array;
        Ref<NSMutableDictionary> dictionary;
        Ref<NSString> key;
    };

    Ref<NSString> text(const char *bytes, std::size_t length) {
        auto string = NSString::stringWithUTF8String({bytes, length});
        if (!string)
            refusal_ = "Invalid UTF-8 in string.";
        return string;
    }

    bool value(const id &object) {
        if (levels_.empty())
            result_ = object;
        else if (Level &level = levels_.back(); level.array)
            level.array->addObject(object);
        else
            level.dictionary->setObject(object, level.key);
        return true;
    }

    bool open(Level level) {
        if (levels_.size() >= NSJSONSerialization::deepestNesting) {
            refusal_ = "Too many nested arrays or dictionaries.";
            return false;
        }
        levels_.push_back(std::move(level));
        return true;
    }

    bool close() {
        const Level level = std::move(levels_.back());
        levels_.pop_back();
        const id container = level.array ? id(level.array) : id(level.dictionary);
        return value(mutable_ ? container : container->copy());
    }

    const bool mutable_;
    std::vector<Level> levels_;
    id result_;
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

constexpr unsigned readerFlags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag |
                                 rapidjson::kParseIterativeFlag;

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
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::Reader reader;
    Builder builder(options & NSJSONReadingOptions::MutableContainers);
    const rapidjson::ParseResult parsed = reader.Parse<readerFlags>(stream, builder);
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
