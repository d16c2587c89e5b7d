#include "Platform/Transport/virtual/VirtualPrinterState.h"

namespace transport {

std::optional<Fault> faultNamed(std::string_view name) {
    for (const auto &[known, fault] : faultNames)
        if (known == name)
            return fault;
    return std::nullopt;
}

std::optional<std::string> statusReply(const VirtualPrinterState &state) {
    if (state.has(Fault::StatusFails))
        return std::nullopt;
    if (state.statusText)
        return state.statusText;
    if (state.has(Fault::StatusEmpty))
        return "";
    if (state.has(Fault::StatusNotJson))
        return "READY";
    const std::string value = std::to_string(state.printerStatus);
    return state.has(Fault::StatusNotObject) ? "[" + value + "]" : "{\"printer_status\": " + value + "}";
}

} // namespace transport
