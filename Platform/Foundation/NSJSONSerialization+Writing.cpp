#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSString.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

const char *whyInvalid(const id &value, std::size_t depth);

const char *whyInvalid(const NSArray &array, std::size_t depth) {
    const char *reason = nullptr;
    array.enumerateObjectsUsingBlock([&](const id &element, NSUInteger, bool &stop) {
        reason = whyInvalid(element, depth + 1);
        stop = reason;
    });
    return reason;
}

const char *whyInvalid(const NSDictionary &dictionary, std::size_t depth) {
    const char *reason = nullptr;
    dictionary.enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &value, bool &stop) {
        reason = as<NSString>(key) ? whyInvalid(value, depth + 1) : "Invalid key: not a text.";
        stop = reason;
    });
    return reason;
}

/// Why the value cannot be written, null when it can. `depth` is the number of containers around it.
const char *whyInvalid(const id &value, std::size_t depth) {
    const auto array = as<NSArray>(value);
    const auto dictionary = as<NSDictionary>(value);
    if ((array || dictionary) && depth >= NSJSONSerialization::deepestNesting)
        return "Too many nested arrays or dictionaries.";
    if (array)
        return whyInvalid(*array, depth);
    if (dictionary)
        return whyInvalid(*dictionary, depth);
    if (const auto number = as<NSNumber>(value))
        return std::isfinite(number->doubleValue()) ? nullptr : "Invalid number: not finite.";
    return as<NSString>(value) || as<NSNull>(value) ? nullptr : "Invalid type.";
}

/// Writes what `whyInvalid` has nothing against.
class Writer {
public:
    explicit Writer(NSJSONWritingOptions options)
        : pretty_(options & NSJSONWritingOptions::PrettyPrinted),
          sorted_(options & NSJSONWritingOptions::SortedKeys),
          slashes_(options & NSJSONWritingOptions::WithoutEscapingSlashes) {}

    const std::string &text() const { return text_; }

    /// False for a text with a surrogate that stands alone.
    bool value(const id &object) {
        if (const auto array = as<NSArray>(object))
            return list('[', ']', array->allObjects(), [&](const id &element) { return value(element); });
        if (const auto dictionary = as<NSDictionary>(object))
            return list('{', '}', entries(*dictionary), [&](const Entry &entry) {
                if (!string(*entry.first))
                    return false;
                text_ += pretty_ ? " : " : ":";
                return value(entry.second);
            });
        if (const auto characters = as<NSString>(object))
            return string(*characters);
        const auto number = as<NSNumber>(object);
        text_ += number ? digits(*number) : "null";
        return true;
    }

private:
    using Entry = std::pair<Ref<NSString>, id>;

    std::vector<Entry> entries(const NSDictionary &dictionary) const {
        std::vector<Entry> all;
        dictionary.enumerateKeysAndObjectsUsingBlock(
            [&](const id &key, const id &object, bool &) { all.emplace_back(as<NSString>(key), object); });
        if (sorted_)
            std::sort(all.begin(), all.end(),
                      [](const Entry &a, const Entry &b) { return a.first->units() < b.first->units(); });
        return all;
    }

    template <class Items, class Write>
    bool list(char opening, char closing, const Items &items, Write &&write) {
        text_ += opening;
        ++depth_;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i)
                text_ += ',';
            startLine();
            if (!write(items[i]))
                return false;
        }
        if (pretty_ && items.empty())
            text_ += '\n';
        --depth_;
        startLine();
        text_ += closing;
        return true;
    }

    void startLine() {
        if (pretty_)
            text_.append(1, '\n').append(2 * depth_, ' ');
    }

    static std::string digits(const NSNumber &number) {
        if (number.isBoolean())
            return number.boolValue() ? "true" : "false";
        if (number.isFloating() && !number.isDecimal()) // a float in the digits of a double, which is how it is read
            return NSNumber::numberWithDouble(number.doubleValue())->stringValue()->utf8();
        return number.stringValue()->utf8();
    }

    bool string(const NSString &characters) {
        const auto bytes = characters.strictUTF8();
        if (!bytes)
            return false;
        text_ += '"';
        for (const char byte : *bytes)
            escaped(byte);
        text_ += '"';
        return true;
    }

    void escaped(char byte) {
        static constexpr std::string_view special = "\"\\\b\f\n\r\t", letters = "\"\\bfnrt";
        static constexpr char hexadecimal[] = "0123456789abcdef";
        if (const auto found = special.find(byte); found != std::string_view::npos)
            text_.append(1, '\\').append(1, letters[found]);
        else if (byte == '/' && !slashes_)
            text_ += "\\/";
        else if (byte >= 0 && byte < 0x20)
            text_.append("\\u00").append(1, hexadecimal[byte >> 4]).append(1, hexadecimal[byte & 15]);
        else
            text_ += byte;
    }

    const bool pretty_;
    const bool sorted_;
    const bool slashes_;
    std::size_t depth_ = 0;
    std::string text_;
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
    return as<NSArray>(object) || as<NSDictionary>(object);
}

} // namespace

bool NSJSONSerialization::isValidJSONObject(const id &object) {
    return isContainer(object) && !whyInvalid(object, 0);
}

Ref<NSData> NSJSONSerialization::dataWithJSONObject(const id &object, NSJSONWritingOptions options,
                                                    Ref<NSError> *error) {
    if (!isContainer(object) && !(options & NSJSONWritingOptions::FragmentsAllowed))
        return fail(error, "Invalid top-level type: neither array nor dictionary.");
    if (const char *reason = whyInvalid(object, 0))
        return fail(error, reason);
    Writer writer(options);
    if (!writer.value(object))
        return fail(error, "Invalid text: a surrogate stands alone.");
    return NSData::dataWithBytes(writer.text().data(), writer.text().size());
}
