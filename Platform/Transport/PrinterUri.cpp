#include "Platform/Transport/PrinterUri.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Ascii/HexDigit.h"
#include "Platform/Transport/Utf8.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

namespace transport {

namespace {

constexpr std::string_view scheme = "usb://";
constexpr std::string_view serialItem = "?serial=";
constexpr std::size_t longestText = 255; // bytes of a field of a device record, without its end

bool staysInUri(char character) {
    return ascii::isLetter(character) || ascii::isDigit(character) ||
           std::string_view("-._~!$&'()*+,;=:@/?").find(character) != std::string_view::npos;
}

std::string percentEncoded(std::string_view text) {
    std::string encoded;
    for (const char character : text) {
        if (staysInUri(character)) {
            encoded += character;
            continue;
        }
        const auto byte = static_cast<std::uint8_t>(character);
        encoded += {'%', ascii::upperHexDigit<char>(byte >> 4), ascii::upperHexDigit<char>(byte)};
    }
    return encoded;
}

// Text that is not an escape stays.
std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char *const digits = text.data() + std::min(i + 1, text.size());
        const char *const end = text.data() + std::min(i + 3, text.size());
        std::uint8_t byte = 0;
        if (text[i] == '%' && end - digits == 2 && std::from_chars(digits, end, byte, 16).ptr == end) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

std::string joined(std::string_view manufacturer, std::string_view product) {
    return std::string(manufacturer).append("/").append(product);
}

// As CUPS does: manufacturer "Zelkor" and product "Zelkor L200" give "L200".
std::string_view withoutManufacturer(std::string_view product, std::string_view manufacturer) {
    const bool begins = product.size() > manufacturer.size() &&
                        std::ranges::equal(manufacturer, product.substr(0, manufacturer.size()), {},
                                           ascii::lowerCase<char>, ascii::lowerCase<char>);
    if (manufacturer.empty() || !begins)
        return product;
    const std::string_view rest = product.substr(manufacturer.size());
    return rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
}

// "usb://a/b?serial=c&interface=1" and "usb://a/b?interface=1" without what CUPS adds for a printer with
// several.
std::string_view withoutInterface(std::string_view uri) {
    const std::size_t end = uri.find_last_not_of("0123456789") + 1;
    const std::string_view rest = uri.substr(0, end);
    constexpr std::string_view item = "interface=";
    const bool added = end < uri.size() && rest.ends_with(item) && rest.size() > item.size() &&
                       (rest[end - item.size() - 1] == '?' || rest[end - item.size() - 1] == '&');
    return added ? rest.substr(0, end - item.size() - 1) : uri;
}

bool isTextOf(std::string_view text, const PrinterIdentity &printer) {
    for (const std::string_view product :
         {std::string_view(printer.product), withoutManufacturer(printer.product, printer.manufacturer)}) {
        const std::string name = joined(printer.manufacturer, product);
        if (text == name + std::string(serialItem) + printer.serial ||
            (printer.serial.empty() && text == name))
            return true;
    }
    return false;
}

} // namespace

std::string printerUri(const PrinterIdentity &printer) {
    return std::string(scheme) +
           percentEncoded(joined(printer.manufacturer, printer.product).append(serialItem) + printer.serial);
}

std::optional<PrinterIdentity> parsePrinterUri(std::string_view uri) {
    if (!uri.starts_with(scheme))
        return std::nullopt;
    const std::string_view text = uri.substr(scheme.size());
    const std::size_t slash = std::min(text.find('/'), text.size());
    const std::string_view rest = text.substr(std::min(slash + 1, text.size()));
    const std::size_t item = rest.rfind(serialItem);
    return PrinterIdentity{
        percentDecoded(text.substr(0, slash)), percentDecoded(rest.substr(0, item)),
        item == std::string_view::npos ? "" : percentDecoded(rest.substr(item + serialItem.size()))};
}

PrinterIdentity recorded(const PrinterIdentity &printer) {
    const auto shown = [](const std::string &text) { return validUtf8(text, longestText); };
    return {shown(printer.manufacturer), shown(printer.product), shown(printer.serial)};
}

bool names(std::string_view uri, const PrinterIdentity &printer) {
    if (!uri.starts_with(scheme))
        return false;
    const PrinterIdentity shown = recorded(printer);
    for (const std::string_view spelling : {uri, withoutInterface(uri)}) {
        const std::string text = percentDecoded(spelling.substr(scheme.size()));
        if (isTextOf(text, printer) || isTextOf(text, shown))
            return true;
    }
    return false;
}

} // namespace transport
