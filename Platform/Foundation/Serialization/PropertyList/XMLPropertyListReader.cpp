#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListReader.h"

#include "Platform/Ascii/Trimmed.h"
#include "Platform/Foundation/Data/Base64.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListDate.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Platform/Runtime/Object/ObjectPool.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <expat.h>
#include <limits>
#include <memory>
#include <optional>

namespace {

constexpr unsigned deepest = NSPropertyListSerialization::deepestNesting;

enum class Element { plist, array, dict, key, string, integer, real, date, data, yes, no };

constexpr std::array<std::pair<std::string_view, Element>, 11> elements = {{{"plist", Element::plist},
                                                                            {"array", Element::array},
                                                                            {"dict", Element::dict},
                                                                            {"key", Element::key},
                                                                            {"string", Element::string},
                                                                            {"integer", Element::integer},
                                                                            {"real", Element::real},
                                                                            {"date", Element::date},
                                                                            {"data", Element::data},
                                                                            {"true", Element::yes},
                                                                            {"false", Element::no}}};

std::optional<Element> elementNamed(std::string_view name) {
    for (const auto &[itsName, element] : elements)
        if (itsName == name)
            return element;
    return std::nullopt;
}

std::string_view nameOf(Element element) {
    return elements[static_cast<std::size_t>(element)].first;
}

std::string tag(std::string_view name) {
    return "<" + std::string(name) + ">";
}

std::string endTag(Element element) {
    return "</" + std::string(nameOf(element)) + ">";
}

constexpr std::string_view whiteSpace = " \t\r\n";

bool isWhite(std::string_view text) {
    return text.find_first_not_of(whiteSpace) == text.npos;
}

/// Removes the sign; returns whether it was a minus.
bool takeSign(std::string_view &digits) {
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    return isNegative;
}

std::optional<std::uint64_t> digitsOf(std::string_view text, int base) {
    std::uint64_t value = 0;
    const char *const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, base);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

id wholeNumber(std::string_view text) {
    constexpr auto greatestSigned = std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    const bool isNegative = takeSign(text);
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const auto value = isHexadecimal ? digitsOf(text.substr(2), 16) : digitsOf(text, 10);
    if (!value || (isNegative && *value > greatestSigned + 1))
        return nullptr;
    if (isNegative)
        return NSNumber::numberWithLongLong(static_cast<std::int64_t>(0 - *value));
    return *value > greatestSigned ? NSNumber::numberWithUnsignedLongLong(*value)
                                   : NSNumber::numberWithLongLong(static_cast<std::int64_t>(*value));
}

id realNumber(std::string_view text) {
    const bool isNegative = takeSign(text);
    double value = 0;
    const char *const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    const bool isWhole = result.ptr == end && !text.starts_with('-') && !text.ends_with(')'); // no "nan(1)"
    if (!isWhole || result.ec == std::errc::invalid_argument)
        return nullptr;
    if (result.ec == std::errc::result_out_of_range) {
        value = doubleOfDecimalText(text);
        if (value != 0)
            return nullptr;
    }
    return NSNumber::numberWithDouble(isNegative && !std::isnan(value) ? -value : value);
}

/// The index, 0 or 1, of the low byte of a unit when the bytes are UTF-16; else nothing.
std::optional<std::size_t> lowByteOfUTF16(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv))
        return 0;
    if (bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<"sv))
        return 1;
    return std::nullopt;
}

std::u16string unitsOf(std::string_view bytes, std::size_t low) {
    std::u16string units(bytes.size() / 2, u'\0');
    const auto byte = [bytes](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(byte(2 * i + low) | byte(2 * i + 1 - low) << 8);
    return units;
}

std::size_t lineAt(std::u16string_view units, std::size_t index) {
    const auto before = units.substr(0, index);
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), u'\n'));
}

struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

class Reader {
public:
    Reader(const PropertyListObjects &objects, std::string &refusal) : objects_(objects), refusal_(refusal) {}

    id read(std::string_view bytes) {
        std::string own;
        const auto low = lowByteOfUTF16(bytes);
        if (low) {
            // expat takes any unit behind a leading surrogate for a trailing one.
            const std::u16string units = unitsOf(bytes, *low);
            if (const auto wrong = unicode::loneSurrogate(units))
                return refuse(lineAt(units, *wrong), "UTF-16", "a surrogate that stands alone");
            if (bytes.size() % 2 != 0)
                return refuse(lineAt(units, units.size()), "UTF-16", "half a unit");
            unicode::appendUTF8(own, units);
            bytes = own;
        }
        parser_.reset(XML_ParserCreate(low ? "UTF-8" : nullptr));
        if (!parser_)
            throw std::bad_alloc();
        listen();
        isUTF16_ = low.has_value();
        constexpr std::size_t most = 1 << 30; // at once: expat's lengths are ints
        for (bool isLast = false; !isLast;) {
            const auto piece = bytes.substr(0, most);
            bytes.remove_prefix(piece.size());
            isLast = bytes.empty();
            if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), isLast) !=
                XML_STATUS_OK)
                return refuse(expected(), XML_ErrorString(XML_GetErrorCode(parser_.get())));
        }
        return pending_.front();
    }

private:
    /// An open element that contains others.
    struct Open {
        Element element;
        std::size_t first; ///< the index of its first part in `pending_`
    };

    /// After it was stopped, expat may still call handlers, e.g. for the end of an empty element.
    template <class Handler>
    static void tell(void *self, Handler handler) {
        auto &reader = *static_cast<Reader *>(self);
        if (reader.refusal_.empty())
            handler(reader);
    }

    void listen() {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void *self, const char *name, const char **) {
                tell(self, [name](Reader &reader) { reader.start(name); });
            },
            [](void *self, const char *) { tell(self, [](Reader &reader) { reader.finish(); }); });
        XML_SetCharacterDataHandler(parser_.get(), [](void *self, const char *text, int length) {
            tell(self, [=](Reader &reader) { reader.characters({text, static_cast<std::size_t>(length)}); });
        });
        XML_SetXmlDeclHandler(parser_.get(), [](void *self, const char *, const char *encoding, int) {
            tell(self, [encoding](Reader &reader) { reader.declare(encoding ? encoding : ""); });
        });
        XML_SetStartDoctypeDeclHandler(parser_.get(), [](void *self, const char *, const char *, const char *,
                                                         int hasDefinitions) {
            if (hasDefinitions)
                tell(self, [](Reader &reader) { reader.refuse("a document type without definitions", "["); });
        });
        XML_SetSkippedEntityHandler(parser_.get(), [](void *self, const char *name, int) {
            tell(self, [name](Reader &reader) {
                reader.refuse("one of XML's own references", "&" + std::string(name) + ";");
            });
        });
    }

    id refuse(std::size_t line, const std::string &expected, const std::string &found) {
        if (refusal_.empty())
            refusal_ = "Line " + std::to_string(line) + ": expected " + expected + ", not " + found + ".";
        return nullptr;
    }

    /// Refuses the text at the current position, and stops the parser.
    id refuse(const std::string &expected, const std::string &found) {
        refuse(XML_GetCurrentLineNumber(parser_.get()), expected, found);
        XML_StopParser(parser_.get(), XML_FALSE);
        return nullptr;
    }

    /// The number of parts that the innermost open element has so far.
    std::size_t parts() const { return pending_.size() - open_.back().first; }

    /// What may come next.
    std::string expected() const {
        if (leaf_)
            return endTag(*leaf_);
        if (open_.empty())
            return pending_.empty() ? "<plist>" : "the end";
        const Element element = open_.back().element;
        if (element == Element::array)
            return "a value or </array>";
        if (element == Element::dict)
            return parts() % 2 == 0 ? "<key> or </dict>" : "a value of the key " + quoted(pending_.back());
        return parts() == 0 ? "a value" : endTag(element);
    }

    static std::string quoted(const id &key) {
        const auto text = as<NSString>(key);
        constexpr NSUInteger longest = 40;
        return "\"" + text->substringToIndex(std::min(text->length(), longest))->utf8() + "\"";
    }

    bool fits(Element element) const {
        if (open_.empty())
            return element != Element::key;
        switch (open_.back().element) {
        case Element::array:
            return element != Element::plist && element != Element::key;
        case Element::dict:
            return element != Element::plist && (element == Element::key) == (parts() % 2 == 0);
        default:
            return element != Element::plist && element != Element::key && parts() == 0;
        }
    }

    void start(std::string_view name) {
        const auto element = elementNamed(name);
        if (!element || leaf_ || !fits(*element)) {
            refuse(expected(), tag(name));
            return;
        }
        if (*element != Element::plist && *element != Element::array && *element != Element::dict) {
            leaf_ = element;
            text_.clear();
            return;
        }
        if (*element != Element::plist && depth_++ == deepest) {
            refuse("at most 512 levels of arrays and dictionaries", tag(name));
            return;
        }
        open_.push_back({*element, pending_.size()});
    }

    void characters(std::string_view text) {
        if (leaf_)
            text_ += text;
        else if (!isWhite(text))
            refuse(expected(), "text");
    }

    void declare(std::string_view encoding) {
        static constexpr std::string_view upper = "UTF-16", lower = "utf-16";
        const std::string_view start = encoding.substr(0, upper.size());
        if (isUTF16_ && !encoding.empty() && start != upper && start != lower)
            refuse("UTF-16 as the encoding", std::string(encoding));
    }

    void finish() {
        if (leaf_) {
            finishLeaf();
            return;
        }
        const Open open = open_.back();
        const std::size_t count = parts();
        if (open.element == Element::plist ? count == 0 : open.element == Element::dict && count % 2 != 0) {
            refuse(expected(), endTag(open.element));
            return;
        }
        open_.pop_back();
        if (open.element == Element::plist)
            return;
        --depth_;
        const auto first = pending_.begin() + static_cast<std::ptrdiff_t>(open.first);
        id made;
        if (open.element == Element::array) {
            made = objects_.array({std::move_iterator(first), std::move_iterator(pending_.end())});
        } else {
            ObjectTable entries(count / 2);
            for (auto part = first; part != pending_.end(); part += 2)
                entries.set(std::move(part[0]), std::move(part[1]));
            made = objects_.dictionary(std::move(entries));
        }
        pending_.resize(open.first);
        pending_.push_back(std::move(made));
    }

    void finishLeaf() {
        std::string wanted;
        id made = leaf(wanted);
        if (!made) {
            constexpr std::size_t longest = 40; // bytes
            refuse(wanted, "\"" + text_.substr(0, longest) + "\"");
            return;
        }
        leaf_.reset();
        pending_.push_back(std::move(made));
    }

    /// On failure none, and `wanted` says what was expected.
    id leaf(std::string &wanted) {
        const std::string_view text = ascii::trimmed(text_, whiteSpace);
        switch (*leaf_) {
        case Element::key:
            return string();
        case Element::string:
            return objects_.leaf(string());
        case Element::integer:
            wanted = "a whole number of 64 bits";
            return wholeNumber(text);
        case Element::real:
            wanted = "a real number in the range of a double";
            return realNumber(text);
        case Element::date: {
            wanted = "a date like 2014-01-20T12:24:48Z";
            const auto seconds = xmlPropertyListDate(text);
            return seconds ? pool_.make<NSDate>(*seconds) : nullptr;
        }
        case Element::data: {
            wanted = "base64";
            auto bytes = base64Bytes(text_);
            return bytes ? objects_.leaf(pool_.make<NSData>(std::move(*bytes))) : nullptr;
        }
        default:
            wanted = endTag(*leaf_);
            return text.empty() ? NSNumber::numberWithBool(*leaf_ == Element::yes) : nullptr;
        }
    }

    id string() {
        std::u16string units;
        unicode::appendUTF16(units, text_);
        return pool_.make<NSString>(std::move(units));
    }

    const PropertyListObjects &objects_;
    std::string &refusal_;
    std::unique_ptr<XML_ParserStruct, Free> parser_;
    bool isUTF16_ = false;
    std::vector<Open> open_;
    unsigned depth_ = 0;          ///< the number of arrays and dictionaries among them
    std::optional<Element> leaf_; ///< the open leaf
    std::string text_;            ///< the text in it
    std::vector<id> pending_;     ///< the parts of open elements: values, or keys and values alternately
    ObjectPool pool_;
};

} // namespace

id readXMLPropertyList(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal) {
    return Reader(objects, refusal).read(bytes);
}
