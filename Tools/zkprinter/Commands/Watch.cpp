// The command `devices --watch`.
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Text/NSString.h" // IWYU pragma: keep: it is the complete type
#include "Platform/Transport/usb/AttachedPrinter.h"
#include "Platform/Transport/usb/DeviceEvents.h"
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Commands/Devices.h"
#include "Tools/zkprinter/Printers/Queue.h"
#include "Tools/zkprinter/Printing/Output.h"
#include "Tools/zkprinter/Printing/Terminal.h"

#include <algorithm>
#include <poll.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int interval_ms = 2000; // between looks when there are no events

/// One plugging-in of a printer. A printer that is not in sysfs, such as a virtual one, is identified by its
/// URI only.
struct Seen {
    Ref<ZKUSB> printer{};
    std::string uri{};
    std::string plugging{};
    int bus = 0;
    int address = 0;

    bool operator==(const Seen &other) const { return uri == other.uri && plugging == other.plugging; }
};

std::vector<Seen> lookAround() {
    std::vector<transport::AttachedPrinter> devices = transport::attachedPrinters();
    std::vector<Seen> all;
    const AttachedPrinters attached;
    for (const auto &printer : attached.all()) {
        Seen seen{.printer = printer, .uri = printer->URI()->utf8()};
        const auto device = std::ranges::find(devices, printer->identity(), [](const auto &candidate) {
            return transport::recorded(candidate.identity);
        });
        if (device != devices.end()) {
            seen.plugging = device->listed().plugging;
            seen.bus = device->bus;
            seen.address = device->address;
            devices.erase(device); // the next printer of the same name is another device
        }
        all.push_back(std::move(seen));
    }
    return all;
}

/// `some` less one equal element for each of `others`.
std::vector<Seen> without(std::vector<Seen> some, const std::vector<Seen> &others) {
    for (const Seen &seen : others)
        if (const auto found = std::ranges::find(some, seen); found != some.end())
            some.erase(found);
    return some;
}

/// Reports which printers came and went between looks.
class Watch {
public:
    explicit Watch(Format format) : format_(format) {}

    void look() {
        std::vector<Seen> now = lookAround();
        const auto isRemoved = [&](const Seen &seen) { return std::ranges::count(removed_, seen) > 0; };
        std::erase_if(removed_, [&](const Seen &seen) { return std::ranges::count(now, seen) == 0; });
        std::erase_if(now, isRemoved);
        for (const Seen &seen : without(known_, now))
            report("detached", seen);
        for (const Seen &seen : without(now, known_))
            report("attached", seen);
        known_ = std::move(now);
    }

    /// The kernel removed the device. For a moment sysfs may still show it, or already show another in its
    /// place.
    void remove(int bus, int address) {
        std::erase_if(known_, [&](const Seen &seen) {
            const bool gone = seen.bus == bus && seen.address == address && !seen.plugging.empty();
            if (gone) {
                report("detached", seen);
                removed_.push_back(seen);
            }
            return gone;
        });
    }

private:
    void report(const char *event, const Seen &seen) {
        if (format_ == Format::json)
            printJson([&](Json &json) {
                json.field("event", event).object("device", [&](Json &device) {
                    describe(device, *seen.printer);
                });
            });
        else
            printTable({{event, seen.uri}});
        deliver();
    }

    const Format format_;
    std::vector<Seen> known_;
    std::vector<Seen> removed_; // and still shown by sysfs
};

} // namespace

ExitStatus watchDevices(Format format) {
    transport::DeviceEvents events; // opened before the first look, so that none is missed
    pollfd files[] = {{STDOUT_FILENO, 0, 0}, {events.descriptor(), POLLIN, 0}};
    auto &[output, changes] = files;
    Watch watch(format);
    // Ends when the reader of the output has gone.
    while (output.revents == 0) {
        for (const transport::DeviceEvent &event : events.take())
            if (event.removed)
                watch.remove(event.bus, event.address);
        watch.look();
        poll(files, std::size(files), interval_ms);
    }
    return ExitStatus::success;
}
