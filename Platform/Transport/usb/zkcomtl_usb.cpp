// The printers of the libzkcomtl.so.1 for the USB bus of this machine.
#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Transport/usb/LibusbBus.h"
#include "Platform/Transport/usb/UsbPrinters.h"

// Never destroyed, as another thread may still call while the library is unloaded.
transport::Printers &transport::libraryPrinters() {
    static auto *const bus = new LibusbBus;
    static auto *const printers = new UsbPrinters(*bus, dispatch::SystemClock::shared());
    return *printers;
}
