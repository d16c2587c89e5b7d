#include "Platform/Transport/PrinterUri.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace transport {

namespace {

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        const char *const digits = text.data() + std::min(i + 1, text.size());
        const char *const end = text.data() + std::min(i + 3, text.size());
        uint8_t byte = 0;
        if (text[i] == '%' && end - digits == 2 && std::from_chars(digits, end, byte, 16).ptr == end) {
            decoded.push_back(static_cast<char>(byte));
            i += 2;
        } else {
            decoded.push_back(text[i]);
        }
    }
    return decoded;
}

// A product may hold a question mark that its URI does not escape, so the item is looked for from the end.
std::string_view serialItem(std::string_view uri) {
    const size_t item = std::max(uri.rfind("?serial=") + 1, uri.rfind("&serial=") + 1);
    if (item == 0) {
        return {};
    }
    const std::string_view value = uri.substr(item + std::string_view("serial=").size());
    return value.substr(0, value.find('&'));
}

// In lower case, each run of white space one space, none at the ends.
std::string plainForm(std::string_view name) {
    std::string plain;
    bool pending = false;
    for (const char character : name) {
        if (character == ' ' || (character >= '\t' && character <= '\r')) {
            pending = !plain.empty();
            continue;
        }
        if (pending) {
            plain.push_back(' ');
            pending = false;
        }
        const bool upper = character >= 'A' && character <= 'Z';
        plain.push_back(upper ? static_cast<char>(character - 'A' + 'a') : character);
    }
    return plain;
}

std::string modelOf(const std::string &product, const std::string &manufacturer) {
    std::string model = plainForm(product);
    const std::string prefix = plainForm(manufacturer) + " ";
    return model.starts_with(prefix) ? model.substr(prefix.size()) : model;
}

} // namespace

std::optional<PrinterUri> PrinterUri::parse(std::string_view uri) {
    constexpr std::string_view scheme = "usb://";
    if (!uri.starts_with(scheme)) {
        return std::nullopt;
    }
    const std::string_view path = uri.substr(scheme.size(), uri.find('?') - scheme.size());
    const size_t slash = path.find('/');
    if (slash == std::string_view::npos) {
        return PrinterUri{.manufacturer = percentDecoded(path), .serial = percentDecoded(serialItem(uri))};
    }
    return PrinterUri{.manufacturer = percentDecoded(path.substr(0, slash)),
                      .product = percentDecoded(path.substr(slash + 1)),
                      .serial = percentDecoded(serialItem(uri))};
}

int PrinterUri::likeness(const PrinterIdentity &printer) const {
    constexpr int sameSerial = 4, sameProduct = 2, sameManufacturer = 1;
    const bool productFits =
        !product.empty() &&
        (modelOf(product, manufacturer) == modelOf(printer.product, printer.manufacturer) ||
         plainForm(product) == modelOf(printer.product, manufacturer));
    if (serial.empty() ? !productFits : serial != printer.serial) {
        return 0;
    }
    return (serial.empty() ? 0 : sameSerial) + (productFits ? sameProduct : 0) +
           (plainForm(manufacturer) == plainForm(printer.manufacturer) ? sameManufacturer : 0);
}

} // namespace transport
