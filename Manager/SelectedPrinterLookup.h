// Finds the attached printer that a print queue prints to.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSString;
class ZKSafeMutableArray;
class ZKUSB;

/// The first record of the list whose printer type (with "%20" for every space) and serial number both occur
/// in the device URI, or none. Plain, case-sensitive substring tests; a record that lacks one of the texts
/// never matches.
///
/// A selection without a record keeps the one that was bound before:
///
///     if (const auto record = recordForDeviceUri(uri, list))
///         usbPrinter = record;
Ref<ZKUSB> recordForDeviceUri(const Ref<NSString> &deviceUri, const Ref<ZKSafeMutableArray> &list);
