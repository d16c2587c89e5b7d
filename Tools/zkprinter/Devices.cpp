// The commands about attached printers.
#include "Frameworks/QNCategoriesPro/Foundation/NSTimer/NSTimer+QNCommon.h"
#include "Manager/ZKManager.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Tools/zkprinter/Commands.h"
#include "Tools/zkprinter/Json.h"
#include "Tools/zkprinter/Queue.h"
#include "Tools/zkprinter/Terminal.h"

#include <csignal>
#include <cstdio>
#include <map>
#include <thread>

namespace {

std::string utf8(const Ref<NSString> &text) {
    return text ? text->utf8() : std::string();
}

void describe(Json &json, ZKUSB &printer) {
    json.field("deviceUri", utf8(printer.URI()))
        .field("manufacturer", utf8(printer.manufacturer()))
        .field("product", utf8(printer.printerType()))
        .field("serialNumber", utf8(printer.serialNumber()))
        .field("usbIdentifier", usbIdentifier(printer));
}

/// Says which printers came and went between passes.
class Watch {
public:
    explicit Watch(Format format) : format_(format) {}

    void pass(const std::vector<Ref<ZKUSB>> &printers) {
        std::map<std::string, Ref<ZKUSB>> now;
        for (const auto &printer : printers)
            now.emplace(utf8(printer->URI()), printer);
        for (const auto &[uri, printer] : known_)
            if (!now.contains(uri))
                report("detached", *printer);
        for (const auto &[uri, printer] : now)
            if (!known_.contains(uri))
                report("attached", *printer);
        known_ = std::move(now);
    }

private:
    void report(const char *event, ZKUSB &printer) {
        if (format_ == Format::json)
            printJson([&](Json &json) {
                json.field("event", event).object("device", [&](Json &device) { describe(device, printer); });
            });
        else
            printTable({{event, utf8(printer.URI())}});
        std::fflush(stdout);
    }

    const Format format_;
    std::map<std::string, Ref<ZKUSB>> known_;
};

/// Ends the loop when the user interrupts the program. Made before any other thread, so that none of them
/// gets the signals.
class Interruption {
public:
    explicit Interruption(Ref<NSRunLoop> loop) {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
        std::thread([signals, loop = std::move(loop)] {
            int signal = 0;
            sigwait(&signals, &signal);
            loop->stop();
        }).detach();
    }
};

} // namespace

ExitStatus listDevices(Format format) {
    const auto printers = AttachedPrinters().all();
    if (format == Format::json) {
        printJson([&](Json &json) {
            json.array("devices", [&](Json &list) {
                for (const auto &printer : printers)
                    list.element([&](Json &element) { describe(element, *printer); });
            });
        });
    } else if (printers.empty()) {
        printLine("No printer is attached; check its power and its USB cable.");
    } else {
        std::vector<std::vector<std::string>> rows = {{"PRODUCT", "SERIAL NUMBER", "USB", "DEVICE"}};
        for (const auto &printer : printers)
            rows.push_back({utf8(printer->printerType()), utf8(printer->serialNumber()),
                            usbIdentifier(*printer), utf8(printer->URI())});
        printTable(rows);
    }
    return ExitStatus::success;
}

ExitStatus watchDevices(Format format) {
    const auto loop = NSRunLoop::mainRunLoop();
    const Interruption interruption(loop);
    const auto look = makeBlock<void(const Ref<NSTimer> &)>(
        [watch = std::make_shared<Watch>(format)](const Ref<NSTimer> &) {
            watch->pass(AttachedPrinters().all());
        });
    qn::scheduledTimerWithTimeInterval(ZKManager::discoveryInterval, look, true)->fire();
    loop->run(NSDefaultRunLoopMode);
    return ExitStatus::success;
}
