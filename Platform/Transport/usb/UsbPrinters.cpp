#include "Platform/Transport/usb/UsbPrinters.h"

#include "Platform/Transport/usb/IdleClosingPrinter.h"

#include <utility>

namespace transport {

std::vector<std::shared_ptr<Printer>> UsbPrinters::attached() {
    const dispatch::Instant end = clock_.now() + recent;
    const std::vector<AttachedPrinter> attached = bus_.printers();
    std::vector<std::shared_ptr<Printer>> printers,
        former; // destroyed without the lock, as that may wait for a thread
    const locking::MutexLock lock(mutex_);
    for (const AttachedPrinter &printer : attached)
        printers.push_back(printerFor(printer));
    latestEnd_ = end;
    former = std::exchange(latest_, printers);
    std::erase_if(known_, [](const auto &printer) { return printer.expired(); });
    return printers;
}

std::vector<std::shared_ptr<Printer>> UsbPrinters::recentlyAttached() {
    {
        const locking::MutexLock lock(mutex_);
        if (clock_.now() < latestEnd_)
            return latest_;
    }
    return attached();
}

void UsbPrinters::forget() {
    std::vector<std::shared_ptr<Printer>> former; // outlives the lock
    const locking::MutexLock lock(mutex_);
    former.swap(latest_);
    latestEnd_ = {};
}

std::shared_ptr<Printer> UsbPrinters::printerFor(const AttachedPrinter &attached) {
    auto made = std::make_shared<IdleClosingPrinter>(attached, bus_, clock_);
    for (const auto &weak : known_)
        if (auto known = weak.lock(); known && known->listed().plugging == made->listed().plugging)
            return known;
    known_.push_back(made);
    return made;
}

} // namespace transport
