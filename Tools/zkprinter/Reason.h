// Why a printer could not be reached, and what to do about it.
#pragma once

#include "Platform/Transport/usb/DeviceAccess.h"
#include "Tools/zkprinter/Failure.h"

#include <cstdint>
#include <optional>
#include <string>

/// What stands between this user and the printer of the device URI; none when the kernel shows no such
/// printer, or several.
std::optional<transport::DeviceAccess> accessTo(const std::string &deviceUri);

/// Two attached printers or more are what the user calls `name`, and none of them is asked.
Failure ambiguous(const std::string &name);

/// The failure that a transport status of zkcomtl.h stands for. TL_USB_OK stands for a printer that took the
/// request and gave no answer to it. `name` is what the user calls the printer; `access` may be unknown.
Failure reasonOf(std::int32_t transportStatus, const std::string &name,
                 const std::optional<transport::DeviceAccess> &access);
