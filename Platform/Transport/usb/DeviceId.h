// The IEEE 1284 device ID, by which a printer describes itself: the text KEY:VALUE;KEY:VALUE;... behind two
// bytes with the length of the whole, big-endian, including themselves.
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

/// Keys and values without white space at their ends. Of equal keys the first counts.
using DeviceId = std::map<std::string, std::string>;

/// The text in a reply to GET_DEVICE_ID. A length field that is larger than the reply is tried as
/// little-endian, which some printers send, and ignored if it still does not fit.
std::string_view deviceIdText(std::span<const std::uint8_t> reply);

/// Any bytes are safe; parts that are not KEY:VALUE are skipped.
DeviceId parseDeviceId(std::string_view text);

/// Manufacturer, model and serial number, under any of the usual keys; empty where missing.
PrinterIdentity identityOf(const DeviceId &id);

} // namespace transport
