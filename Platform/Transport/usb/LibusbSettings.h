// The alternate settings in libusb's descriptors.
#pragma once

#include "Platform/Transport/usb/AlternateSetting.h"

#include <vector>

struct libusb_config_descriptor;

namespace transport {

/// All alternate settings of a configuration. Descriptors come from the device and may be inconsistent;
/// libusb then leaves counts without an array, which are treated as 0.
std::vector<AlternateSetting> settingsOf(const libusb_config_descriptor &configuration);

} // namespace transport
