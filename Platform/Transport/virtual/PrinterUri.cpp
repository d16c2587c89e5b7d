#include "Platform/Transport/virtual/PrinterUri.h"

#include <algorithm>
#include <charconv>

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

} // namespace

std::optional<PrinterUri> PrinterUri::parse(std::string_view uri) {
    constexpr std::string_view scheme = "usb://";
    if (!uri.starts_with(scheme)) {
        return std::nullopt;
    }
    const std::string_view path = uri.substr(scheme.size(), uri.find('?') - scheme.size());
    const size_t slash = path.find('/');
    return PrinterUri{.product = slash == std::string_view::npos ? std::string()
                                                                 : percentDecoded(path.substr(slash + 1)),
                      .serial = percentDecoded(serialItem(uri))};
}

int PrinterUri::likeness(const VirtualPrinterState &printer) const {
    const bool sameProduct = product == printer.product;
    if (serial.empty()) {
        return sameProduct ? 1 : 0;
    }
    return serial == printer.serial ? 1 + (sameProduct ? 1 : 0) : 0;
}

} // namespace transport
