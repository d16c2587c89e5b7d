// The status text of the C interface for a printer on USB.
//
//     {"printer_status": 3, "selected": true, "paper_empty": false, "error": false,
//      "device_id": {"CMD": "PJL,PCL", "MDL": "L200 Series", "MFG": "Zelkor"}}
//
// "printer_status" is 3 for a printer that is selected, has paper and reports no error, otherwise 2.
#pragma once

#include "Platform/Transport/usb/DeviceId.h"

#include <cstdint>
#include <string>

namespace transport {

/// `portStatus` has the bits of the class request GET_PORT_STATUS. Bytes of the ID that are not valid UTF-8
/// become U+FFFD.
std::string statusText(std::uint8_t portStatus, const DeviceId &id);

} // namespace transport
