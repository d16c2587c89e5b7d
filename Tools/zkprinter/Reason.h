// Why a printer could not be reached, and what to do about it.
#pragma once

#include "Platform/Transport/usb/DeviceAccess.h"
#include "Tools/zkprinter/Failure.h"
#include "Tools/zkprinter/Queue.h"

#include <cstdint>
#include <optional>
#include <string>

/// What stands between this user and the printer of the device URI; none when the kernel shows no such
/// printer.
std::optional<transport::DeviceAccess> accessTo(const std::string &deviceUri);

/// The failure that a transport status of zkcomtl.h stands for. TL_USB_OK stands for a printer that took the
/// request and gave no answer to it. `name` is what the user calls the printer; `access` may be unknown.
Failure reasonOf(std::int32_t transportStatus, const std::string &name,
                 const std::optional<transport::DeviceAccess> &access);

/// The same for the printer of a USB queue.
Failure reasonOf(std::int32_t transportStatus, const Queue &queue);
