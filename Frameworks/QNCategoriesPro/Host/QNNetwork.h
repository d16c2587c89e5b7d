// Network interfaces, their addresses and their traffic. Plain values. Any thread.
//
//     const auto before = device.network();
//     …
//     const auto after = device.network();
//     const auto traffic = qn::trafficBetween(before, after, QNInterfaceKind::wireless);
#pragma once

#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

class NSString;

enum class QNInterfaceKind {
    wired,
    wireless,
    loopback,
    tunnel,
    other, ///< everything else, such as bridges
};

/// Since the interface was made, or between two readings.
struct QNTraffic {
    std::uint64_t receivedBytes = 0, receivedPackets = 0;
    std::uint64_t sentBytes = 0, sentPackets = 0;

    bool operator==(const QNTraffic &) const = default;
};

struct QNNetworkInterface {
    Ref<NSString> name; ///< "eth0"
    QNInterfaceKind kind = QNInterfaceKind::other;
    std::optional<bool> isLinked;  ///< whether the link is up
    Ref<NSString> hardwareAddress; ///< "00:00:5e:00:53:01"; none for those without one
    std::vector<Ref<NSString>> IPv4Addresses, IPv6Addresses; ///< the latter without zones
    std::optional<QNTraffic> traffic;
};

struct QNNetworkReading {
    dispatch::Instant moment; ///< by the current clock
    std::vector<QNNetworkInterface> interfaces;
};

namespace qn {

class HostFiles;

struct InterfaceAddress {
    std::string interface;
    bool isIPv6 = false;
    std::string address;
};
/// Asks the kernel for the addresses of all interfaces.
using InterfaceAddresses = std::function<std::vector<InterfaceAddress>()>;
std::vector<InterfaceAddress> addressesOfInterfaces();

QNNetworkReading readNetwork(const HostFiles &files, const InterfaceAddresses &addresses);

/// The sum over all interfaces of a kind. Absent when none of them has counters.
std::optional<QNTraffic> trafficOf(const QNNetworkReading &reading, QNInterfaceKind kind);

/// By the name of the interface, for those that have counters in both readings which did not start again in
/// between.
std::map<std::string, QNTraffic> trafficBetween(const QNNetworkReading &before,
                                                const QNNetworkReading &after);
/// The sum of these over all interfaces of a kind. Absent when there are none.
std::optional<QNTraffic> trafficBetween(const QNNetworkReading &before, const QNNetworkReading &after,
                                        QNInterfaceKind kind);

} // namespace qn

#pragma GCC visibility pop
