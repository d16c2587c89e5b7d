// libzkcomtl.so.1 over the USB bus of this machine.
#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Transport/usb/LibusbBus.h"
#include "Platform/Transport/usb/UsbPrinters.h"

// Not destroyed: another thread may still call when the library ends.
transport::Printers &transport::libraryPrinters() {
    static auto *const bus = new LibusbBus;
    static auto *const printers = new UsbPrinters(*bus, dispatch::SystemClock::shared());
    return *printers;
}
