#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListWriter.h"

#include "Platform/Foundation/Data/Base64.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListWalk.h"
#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListDate.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::string_view head =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)";
constexpr std::string_view foot = "</plist>\n";

bool standsInXML(char16_t unit) {
    return unit >= 0x20 ? unit < 0xFFFE : unit == '\t' || unit == '\n' || unit == '\r';
}

/// Also escapes carriage returns, which XML readers otherwise turn into line feeds.
std::string escaped(std::string_view text) {
    static constexpr std::string_view special = "&<>\r";
    static constexpr std::string_view references[] = {"&amp;", "&lt;", "&gt;", "&#13;"};
    std::string out;
    for (std::size_t at; (at = text.find_first_of(special)) != text.npos; text.remove_prefix(at + 1))
        out.append(text.substr(0, at)).append(references[special.find(text[at])]);
    return out.append(text);
}

std::string_view realText(double value, DecimalBuffer &buffer) {
    if (std::isfinite(value))
        return decimalText(value, buffer);
    return std::isnan(value) ? "nan" : value > 0 ? "+infinity" : "-infinity";
}

class Writer : public PropertyListWalk {
public:
    std::vector<std::uint8_t> take() {
        std::vector<std::uint8_t> bytes;
        bytes.reserve(head.size() + out_.size() + foot.size());
        bytes.assign(head.begin(), head.end());
        bytes.insert(bytes.end(), out_.begin(), out_.end());
        bytes.insert(bytes.end(), foot.begin(), foot.end());
        return bytes;
    }

private:
    bool text(const NSString &text) override { return textElement("string", text); }
    bool key(const NSString &key) override { return textElement("key", key); }

    bool number(const NSNumber &number) override {
        DecimalBuffer buffer;
        if (number.isBoolean())
            line(number.boolValue() ? "<true/>" : "<false/>");
        else if (number.isFloating())
            element("real", realText(number.doubleValue(), buffer));
        else if (number.objCType() == 'Q')
            element("integer", decimalText(number.unsignedLongLongValue(), buffer));
        else
            element("integer", decimalText(number.longLongValue(), buffer));
        return true;
    }

    bool date(const NSDate &date) override {
        const auto text = xmlPropertyListDateText(date.timeIntervalSinceReferenceDate());
        if (!text)
            return refuse("a date in the years 0 to 9999");
        element("date", *text);
        return true;
    }

    bool data(const NSData &data) override {
        constexpr std::size_t width = 76, tab = 8, least = 16; // characters of a line
        const std::size_t most = std::max(least, width - std::min(width, indent_ * tab)) / 4 * 3;
        line("<data>");
        for (auto rest = data.span(); !rest.empty();) {
            const auto piece = rest.first(std::min(rest.size(), most));
            line(base64Text(piece));
            rest = rest.subspan(piece.size());
        }
        line("</data>");
        return true;
    }

    bool reference(const PropertyListUID &) override { return refuse("no reference in XML"); }

    bool array(std::span<const id> elements) override {
        return container("array", elements.size(), [&](std::size_t i) { return visitElement(elements, i); });
    }

    bool dictionary(std::span<const Entry> entries) override {
        return container("dict", entries.size(),
                         [&](std::size_t i) { return visitKey(entries[i]) && visitValue(entries[i]); });
    }

    /// `part(i)` writes the part with the index i.
    template <class Part>
    bool container(std::string_view name, std::size_t count, Part part) {
        if (count == 0) {
            line("<", name, "/>");
            return true;
        }
        line("<", name, ">");
        ++indent_;
        for (std::size_t i = 0; i < count; ++i)
            if (!part(i))
                return false;
        --indent_;
        line("</", name, ">");
        return true;
    }

    bool textElement(std::string_view name, const NSString &text) {
        const std::u16string &units = text.units();
        const auto bytes =
            std::all_of(units.begin(), units.end(), standsInXML) ? text.strictUTF8() : std::nullopt;
        if (!bytes)
            return refuse("a text of characters that XML has");
        line("<", name, ">", escaped(*bytes), "</", name, ">");
        return true;
    }

    void element(std::string_view name, std::string_view content) {
        line("<", name, ">", content, "</", name, ">");
    }

    template <class... Parts>
    void line(const Parts &...parts) {
        out_.append(indent_, '\t');
        (out_.append(parts), ...);
        out_ += '\n';
    }

    std::string out_;
    std::size_t indent_ = 0;
};

} // namespace

Ref<NSData> writeXMLPropertyList(const id &list, std::string &refusal) {
    Writer writer;
    if (writer.whole(list))
        return make<NSData>(writer.take());
    refusal = writer.refusal();
    return nullptr;
}
