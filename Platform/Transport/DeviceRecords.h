// The device list of the C interface, made alike by every transport.
#pragma once

#include "Platform/Transport/PrinterUri.h"
#include "Platform/Transport/zkcomtl.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace transport {

/// Its texts are those of the printer as `recorded`.
tl_usb_device_info deviceRecord(const PrinterIdentity &printer, uint16_t vid, uint16_t pid);

/// Keeps the records for the calling thread until it lists again or ends, and stores where they are; NULL and
/// 0 for none.
void handOut(std::vector<tl_usb_device_info> records, tl_usb_device_info *&list, int32_t &count);

/// What to answer when a URI names that many printers: TL_USB_OK for one.
tl_usb_status statusOfNamed(size_t printers);

} // namespace transport
