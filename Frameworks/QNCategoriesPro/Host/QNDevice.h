// The computer that the program runs on, as the kernel describes it; read anew with each call.
//
//     const QNDevice device;
//     if (const auto available = device.memory().available)
//
// What the system does not say is absent: none, nullopt or an empty list, never 0. No call waits for another
// machine or program. Sizes are in bytes. Any thread.
#pragma once

#include "Frameworks/QNCategoriesPro/Host/HostFiles.h"
#include "Frameworks/QNCategoriesPro/Host/QNFileSystems.h"
#include "Frameworks/QNCategoriesPro/Host/QNNetwork.h"
#include "Frameworks/QNCategoriesPro/Host/QNProcessors.h"

#pragma GCC visibility push(default)

class NSDate;

struct QNMachine {
    Ref<NSString> manufacturer;
    Ref<NSString> model;
};

struct QNSystem {
    Ref<NSString> name;    ///< of the distribution: "Debian GNU/Linux"
    Ref<NSString> version; ///< "12"
    Ref<NSString> kernel;  ///< "6.1.0-18-amd64"
    Ref<NSDate> startTime;
};

struct QNMemory {
    std::optional<std::uint64_t> total;
    std::optional<std::uint64_t> used;      ///< total - available
    std::optional<std::uint64_t> available; ///< to new programs, without swapping
    std::optional<std::uint64_t> swapTotal, swapUsed, swapFree;
};

enum class QNBatteryState { charging, discharging, full, idle };

struct QNBattery {
    std::optional<double> charge; ///< from 0 to 1
    std::optional<QNBatteryState> state;
};

class QNDevice {
public:
    /// Where facts come from; tests bring their own.
    struct Sources {
        std::filesystem::path root = "/";
        qn::FileSystemSizes fileSystemSizes = qn::sizeOfFileSystemAt;
        qn::InterfaceAddresses interfaceAddresses = qn::addressesOfInterfaces;
    };
    QNDevice() : QNDevice(Sources()) {}
    explicit QNDevice(Sources sources) : files_(sources.root), sources_(std::move(sources)) {}

    /// Fillers such as "To Be Filled By O.E.M." are absent, too.
    QNMachine machine() const;
    QNSystem system() const;
    std::optional<unsigned> processorCount() const { return qn::countProcessors(files_); }
    QNProcessorReading processors() const { return qn::readProcessors(files_); }
    QNMemory memory() const;
    std::vector<QNFileSystem> fileSystems() const {
        return qn::readFileSystems(files_, sources_.fileSystemSizes);
    }
    QNNetworkReading network() const { return qn::readNetwork(files_, sources_.interfaceAddresses); }
    /// The computer's own, not those of a mouse or a headset.
    std::vector<QNBattery> batteries() const;

private:
    qn::HostFiles files_;
    Sources sources_;
};

#pragma GCC visibility pop
