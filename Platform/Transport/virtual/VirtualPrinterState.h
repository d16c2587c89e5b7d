// What a virtual printer is and how it misbehaves, as plain values. See docs/virtual-printers.md.
#pragma once

#include "Platform/Transport/PrinterUri.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace transport {

enum class Fault {
    CannotOpen,        // opening is refused: no permission
    Busy,              // opening is refused: someone else holds the printer
    WriteFails,        // no byte reaches the printer
    Silent,            // requests are swallowed: not carried out, not answered
    StaleOutput,       // transfers of an earlier job wait when the printer is opened
    JunkFirst,         // PJL status texts precede every reply
    ShortHeader,       // a reply header is cut before its status field
    WrongLength,       // a reply announces more data than it sends
    WrongEcho,         // a reply echoes another command
    StatusNotOne,      // the status field of a good reply is 2
    EmptyData,         // a reply announces its data and sends an empty transfer
    KeepsThreshold,    // a new threshold is accepted but not kept
    Overwritten,       // after every threshold that is written, another program sets one
    EndlessText,       // when nothing else waits, a PJL status text does
    EndlessReplies,    // every transfer that is read waits anew behind the others
    UnplugAfterOpen,   // the printer is gone once opened,
    UnplugAfterWrite,  // ... once it was written to,
    UnplugAfterHeader, // ... once a reply header was read; each open brings it back
    StatusFails,       // the status call fails
    StatusEmpty,       // the status text is empty,
    StatusNotJson,     // ... is not JSON,
    StatusNotObject,   // ... is JSON but not an object
};

/// The name of each fault in a printer file.
inline constexpr auto faultNames = std::to_array<std::pair<std::string_view, Fault>>({
    {"cannot_open", Fault::CannotOpen},
    {"busy", Fault::Busy},
    {"write_fails", Fault::WriteFails},
    {"silent", Fault::Silent},
    {"stale_output", Fault::StaleOutput},
    {"junk_first", Fault::JunkFirst},
    {"short_header", Fault::ShortHeader},
    {"wrong_length", Fault::WrongLength},
    {"wrong_echo", Fault::WrongEcho},
    {"status_not_one", Fault::StatusNotOne},
    {"empty_data", Fault::EmptyData},
    {"keeps_threshold", Fault::KeepsThreshold},
    {"overwritten", Fault::Overwritten},
    {"endless_text", Fault::EndlessText},
    {"endless_replies", Fault::EndlessReplies},
    {"unplug_after_open", Fault::UnplugAfterOpen},
    {"unplug_after_write", Fault::UnplugAfterWrite},
    {"unplug_after_header", Fault::UnplugAfterHeader},
    {"status_fails", Fault::StatusFails},
    {"status_empty", Fault::StatusEmpty},
    {"status_not_json", Fault::StatusNotJson},
    {"status_not_object", Fault::StatusNotObject},
});

/// None for an unknown name.
std::optional<Fault> faultNamed(std::string_view name);

/// Every member has a default, so that designated initializers may name only those that matter.
struct VirtualPrinterState {
    std::string manufacturer{};
    std::string product{};
    std::string serial{};
    std::uint16_t vid = 0;
    std::uint16_t pid = 0;
    std::int32_t printerStatus = 3;
    std::int32_t threshold = 0; // percent; a file may hold any value, a request only 0 and 2 to 10
    std::optional<std::string> statusText{}; // replaces the whole status text
    std::set<Fault> faults{};

    bool has(Fault fault) const { return faults.contains(fault); }
    PrinterIdentity identity() const { return {manufacturer, product, serial}; }
    bool operator==(const VirtualPrinterState &) const = default;
};

/// The answer to a status call; none when the call fails.
std::optional<std::string> statusReply(const VirtualPrinterState &state);

} // namespace transport
