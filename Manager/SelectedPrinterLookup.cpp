#include "Manager/SelectedPrinterLookup.h"

#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

bool matches(const ZKUSB &record, const NSString &deviceUri) {
    const auto type = record.printerType(), serial = record.serialNumber();
    return type && serial &&
           deviceUri.containsString(type->stringByReplacingOccurrencesOfString(u" "_ns, u"%20"_ns)) &&
           deviceUri.containsString(serial);
}

} // namespace

Ref<ZKUSB> recordForDeviceUri(const Ref<NSString> &deviceUri, const Ref<ZKSafeMutableArray> &list) {
    for (NSUInteger i = 0; deviceUri && i < list->count(); ++i) {
        auto record = as<ZKUSB>(list->objectAtIndex(i));
        if (record && matches(*record, *deviceUri)) {
            NSLog("deviceuri:%@", deviceUri);
            return record;
        }
    }
    return nullptr;
}
