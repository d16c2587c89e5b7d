#include "Manager/ZKManager.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSTimer/NSTimer+QNCommon.h"
#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Transport/zkcomtl.h"

#include <cstring>
#include <span>
#include <vector>

NS_IMPLEMENTATION(ZKManager) {
    cls.instantiate([] { return shared(); });
}

namespace {

/// A field of a device record; none when its bytes are not valid UTF-8.
Ref<NSString> textOf(const char (&field)[256]) {
    return NSString::stringWithUTF8String({field, strnlen(field, sizeof field)});
}

Ref<ZKUSB> recordOf(const tl_usb_device_info &device) {
    auto record = make<ZKUSB>();
    record->setPrinterType(textOf(device.product));
    record->setSerialNumber(textOf(device.serial));
    record->setPID(device.pid);
    record->setVID(device.vid);
    record->setPrinterName(record->printerType());
    record->setManufacturer(textOf(device.manufacturer));
    return record;
}

} // namespace

Ref<ZKManager> ZKManager::shared() {
    static const Ref<ZKManager> &manager = *new Ref<ZKManager>(new ZKManager);
    return manager;
}

Ref<ZKSafeMutableArray> ZKManager::printerList() {
    const locking::MutexLock guard(printerListField_);
    if (!printerList_)
        printerList_ = make<ZKSafeMutableArray>();
    return printerList_;
}

void ZKManager::setPrinterList(const Ref<ZKSafeMutableArray> &list) {
    const auto copy = list ? make<ZKSafeMutableArray>() : nullptr;
    if (list)
        copy->addObjectsFromArray(list);
    const locking::MutexLock guard(printerListField_);
    printerList_ = copy;
}

void ZKManager::setCallback(const Ref<DiscoveryCallback> &callback) {
    callback_ = callback ? std::static_pointer_cast<DiscoveryCallback>(callback->copy()) : nullptr;
}

void ZKManager::zk_discoverPrinter(const Ref<DiscoveryCallback> &callback) {
    setCallback(callback);
    const auto block =
        makeBlock<void(const Ref<NSTimer> &)>([weak = Weak<NSObject>(self())](const Ref<NSTimer> &) {
            if (const auto manager = as<ZKManager>(weak.lock()))
                manager->discoverPrinter();
        });
    const auto timer = qn::scheduledTimerWithTimeInterval(discoveryInterval, block, true);
    setLocalTimer(timer);
    timer->fire();
}

void ZKManager::discoverPrinter() {
    if (stopRepeatDiscover_)
        return;
    tl_usb_device_info *devices = nullptr;
    std::int32_t count = 0;
    tl_usb_get_devicelist_by_vid(ZK_USB_VENDOR_ID, &devices, &count);
    if (stopRepeatDiscover_)
        return;
    printerList()->removeAllObjects();
    if (count <= 0 || !devices)
        return;
    // All records are made before the first callback, which may start another pass: that frees this one's
    // device list. A callback may also replace itself.
    std::vector<Ref<ZKUSB>> records;
    for (const tl_usb_device_info &device : std::span(devices, static_cast<std::size_t>(count)))
        records.push_back(recordOf(device));
    for (const auto &record : records)
        if (const auto callback = callback_)
            (*callback)(record);
}

void ZKManager::zk_stopDiscoverPrinter() {
    stopRepeatDiscover_ = true;
    if (const auto timer = localTimer()) {
        timer->invalidate();
        localTimer_.reset();
    }
}
