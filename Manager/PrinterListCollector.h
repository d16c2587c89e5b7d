// Collects what discovery finds into the printer list, dropping some duplicates.
#pragma once

#include "Manager/ZKManager.h"

/// Appends the printer to the list, unless the first record with its serial number is the last of the list.
/// So with each pass starting on an empty list, serial numbers A, A give [A], while A, B, A give [A, B, A]. A
/// record without serial number has no duplicates. Nothing for none.
void collectPrinter(const Ref<ZKUSB> &printer, const Ref<ZKSafeMutableArray> &list);

/// The callback for `zk_discoverPrinter` that collects into the list, which it keeps.
Ref<DiscoveryCallback> printerListCollector(const Ref<ZKSafeMutableArray> &list);
