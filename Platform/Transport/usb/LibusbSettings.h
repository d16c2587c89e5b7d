// The alternate settings of a device as libusb describes them.
#pragma once

#include "Platform/Transport/usb/AlternateSetting.h"

#include <vector>

struct libusb_config_descriptor;

namespace transport {

/// Descriptors come from the device, which may say anything: where they contradict themselves, libusb leaves
/// counts behind that have no array.
std::vector<AlternateSetting> settingsOf(const libusb_config_descriptor &configuration);

} // namespace transport
