// The IEEE 1284 device ID: what a printer says of itself, as text KEY:VALUE;KEY:VALUE;... behind two bytes
// that hold the length of the whole, big-endian, themselves included.
//
//     parseDeviceId("MFG:Zelkor;MDL:L200 Series;CMD:PJL,PCL;")   // {"CMD": "PJL,PCL", "MDL": ...}
#pragma once

#include "Platform/Transport/PrinterUri.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace transport {

/// Keys and values without white space at their ends. Of a key that occurs twice the first value counts.
using DeviceId = std::map<std::string, std::string>;

/// The text of a reply to GET_DEVICE_ID. The length field is trusted only within what was received; printers
/// that write it little-endian are understood, too.
std::string_view deviceIdText(std::span<const std::uint8_t> reply);

/// Any bytes are safe; what is no KEY:VALUE is passed over.
DeviceId parseDeviceId(std::string_view text);

/// Manufacturer, model and serial number, under any of the names in use for them.
PrinterIdentity identityOf(const DeviceId &id);

} // namespace transport
