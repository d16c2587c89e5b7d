// The status of a printer as the C interface tells it.
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

/// `portStatus`: the bits of the class request GET_PORT_STATUS. Bytes of the ID that are not UTF-8 show as
/// U+FFFD.
std::string statusText(std::uint8_t portStatus, const DeviceId &id);

} // namespace transport
