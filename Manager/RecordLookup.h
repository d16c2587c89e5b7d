// Finds the attached printer that a print queue prints to.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSString;
class ZKSafeMutableArray;
class ZKUSB;

/// The first record of the list whose printer type (every space written "%20") and serial number both stand
/// in the device URI, or none. Plain, case-sensitive substring tests; a record without either text never
/// matches.
///
/// Whoever binds the record to a selection keeps the earlier one when this gives none:
///
///     if (const auto record = recordForDeviceUri(uri, list))
///         usbPrinter = record;
Ref<ZKUSB> recordForDeviceUri(const Ref<NSString> &deviceUri, const Ref<ZKSafeMutableArray> &list);
