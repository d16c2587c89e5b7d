// Collects what discovery finds into the printer list, dropping some duplicates.
#pragma once

#include "Manager/ZKManager.h"

/// Appends the printer to the list, unless the first record with its serial number is the last of the list.
/// So if each pass starts with an empty list, serial numbers A, A give [A], while A, B, A give [A, B, A]. A
/// record without a serial number has no duplicates. Does nothing for none.
void collectPrinter(const Ref<ZKUSB> &printer, const Ref<ZKSafeMutableArray> &list);

/// A callback for `zk_discoverPrinter` that collects into the list, and keeps that alive.
Ref<DiscoveryCallback> printerListCollector(const Ref<ZKSafeMutableArray> &list);
