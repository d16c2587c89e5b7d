// Turns statuses of the transport into failures that say why a printer could not be reached and what to do.
#pragma once

#include "Platform/Transport/usb/DeviceAccess.h"
#include "Tools/zkprinter/Failures/Failure.h"

#include <cstdint>
#include <optional>
#include <string>

/// Who may open the printer of the device URI and who holds it; none when the kernel shows no such printer,
/// or several.
std::optional<transport::DeviceAccess> accessTo(const std::string &deviceUri);

/// The failure for a name that means several attached printers.
Failure ambiguous(const std::string &name);

/// The failure for a status of zkcomtl.h. TL_USB_OK here means that the printer took the request but did not
/// answer it. `name` is the user's name for the printer; `access` may be unknown.
Failure reasonOf(std::int32_t transportStatus, const std::string &name,
                 const std::optional<transport::DeviceAccess> &access);
