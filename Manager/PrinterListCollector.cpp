#include "Manager/PrinterListCollector.h"

#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h" // IWYU pragma: keep: it is the complete type

void collectPrinter(const Ref<ZKUSB> &printer, const Ref<ZKSafeMutableArray> &list) {
    if (!printer)
        return;
    NSLogDebug("serialNumber:%@", printer->serialNumber());
    NSLogDebug("printer:%@", printer->printerType());
    NSLogDebug("ip:%@", printer->ip());
    NSLogDebug("------   -------");
    NSUInteger index = 0;
    for (; index < list->count(); ++index) {
        const auto earlier = as<ZKUSB>(list->objectAtIndex(index));
        NSLogDebug("------  %@ -------", earlier);
        if (earlier && earlier->serialNumber() &&
            earlier->serialNumber()->isEqualToString(printer->serialNumber()))
            break;
    }
    if (index + 1 != list->count())
        list->addObject(printer);
}

Ref<DiscoveryCallback> printerListCollector(const Ref<ZKSafeMutableArray> &list) {
    return makeBlock<void(const Ref<ZKUSB> &)>(
        [list](const Ref<ZKUSB> &printer) { collectPrinter(printer, list); });
}
