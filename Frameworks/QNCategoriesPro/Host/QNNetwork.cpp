#include "Frameworks/QNCategoriesPro/Host/QNNetwork.h"

#include "Frameworks/QNCategoriesPro/Host/HostFiles.h"
#include "Platform/Ascii/Trimmed.h"
#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Foundation/Text/NSString.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <linux/if_arp.h>
#include <memory>

namespace {

using Counters = std::map<std::string, QNTraffic, std::less<>>;

/// "eth0: 90225232 2375 0 0 0 0 0 0 111687 1318 …", behind two lines of headings.
std::optional<QNTraffic> trafficOf(const std::vector<std::string_view> &words) {
    constexpr std::size_t receivedBytes = 0, receivedPackets = 1, sentBytes = 8, sentPackets = 9;
    if (words.size() <= sentPackets)
        return std::nullopt;
    const auto in = qn::numberOf(words[receivedBytes]), inPackets = qn::numberOf(words[receivedPackets]);
    const auto out = qn::numberOf(words[sentBytes]), outPackets = qn::numberOf(words[sentPackets]);
    if (!in || !inPackets || !out || !outPackets)
        return std::nullopt;
    return QNTraffic{*in, *inPackets, *out, *outPackets};
}

Counters readCounters(const qn::HostFiles &files) {
    Counters counters;
    const std::string contents = files.contents("proc/net/dev").value_or("");
    for (const auto line : qn::linesOf(contents)) {
        const std::size_t colon = line.rfind(':');
        if (colon == line.npos)
            continue;
        if (const auto traffic = trafficOf(qn::wordsOf(line.substr(colon + 1))))
            counters.emplace(ascii::trimmed(line.substr(0, colon)), *traffic);
    }
    return counters;
}

QNInterfaceKind kindOf(const qn::HostFiles &files, const std::string &folder) {
    if (files.exists(folder + "wireless") || files.exists(folder + "phy80211"))
        return QNInterfaceKind::wireless;
    switch (files.number(folder + "type").value_or(ARPHRD_VOID)) {
    case ARPHRD_LOOPBACK:
        return QNInterfaceKind::loopback;
    case ARPHRD_ETHER:
        if (files.exists(folder + "tun_flags"))
            return QNInterfaceKind::tunnel;
        return files.exists(folder + "device") ? QNInterfaceKind::wired : QNInterfaceKind::other;
    case ARPHRD_TUNNEL:
    case ARPHRD_TUNNEL6:
    case ARPHRD_SIT:
    case ARPHRD_IPGRE:
    case ARPHRD_IP6GRE:
    case ARPHRD_PPP:
    case ARPHRD_NONE: // "tun" devices and WireGuard
        return QNInterfaceKind::tunnel;
    default:
        return QNInterfaceKind::other;
    }
}

/// Drivers that keep no state, such as the loopback's, report "unknown"; the carrier then decides.
std::optional<bool> isLinked(const qn::HostFiles &files, const std::string &folder) {
    const auto state = files.text(folder + "operstate");
    if (!state)
        return std::nullopt;
    if (!state->isEqualToString(u"unknown"_ns))
        return state->isEqualToString(u"up"_ns);
    const auto carrier = files.number(folder + "carrier");
    return carrier ? std::optional(*carrier == 1) : std::nullopt;
}

Ref<NSString> hardwareAddress(const qn::HostFiles &files, const std::string &folder) {
    const auto address = files.text(folder + "address");
    const bool isZero = address && address->units().find_first_not_of(u"0:") == std::u16string::npos;
    return isZero ? nullptr : address;
}

void add(QNTraffic &sum, const QNTraffic &more) {
    sum.receivedBytes += more.receivedBytes;
    sum.receivedPackets += more.receivedPackets;
    sum.sentBytes += more.sentBytes;
    sum.sentPackets += more.sentPackets;
}

std::optional<QNTraffic> difference(const QNTraffic &before, const QNTraffic &after) {
    if (after.receivedBytes < before.receivedBytes || after.receivedPackets < before.receivedPackets ||
        after.sentBytes < before.sentBytes || after.sentPackets < before.sentPackets)
        return std::nullopt;
    return QNTraffic{after.receivedBytes - before.receivedBytes,
                     after.receivedPackets - before.receivedPackets, after.sentBytes - before.sentBytes,
                     after.sentPackets - before.sentPackets};
}

} // namespace

std::vector<qn::InterfaceAddress> qn::addressesOfInterfaces() {
    ifaddrs *first = nullptr;
    if (getifaddrs(&first) != 0)
        return {};
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list(first, freeifaddrs);
    std::vector<InterfaceAddress> found;
    for (const ifaddrs *one = first; one; one = one->ifa_next) {
        const int family = one->ifa_addr ? one->ifa_addr->sa_family : AF_UNSPEC;
        if (family != AF_INET && family != AF_INET6)
            continue;
        const void *const address =
            family == AF_INET
                ? static_cast<const void *>(&reinterpret_cast<const sockaddr_in *>(one->ifa_addr)->sin_addr)
                : &reinterpret_cast<const sockaddr_in6 *>(one->ifa_addr)->sin6_addr;
        char text[INET6_ADDRSTRLEN];
        if (inet_ntop(family, address, text, sizeof text))
            found.push_back({one->ifa_name, family == AF_INET6, text});
    }
    return found;
}

QNNetworkReading qn::readNetwork(const HostFiles &files, const InterfaceAddresses &addresses) {
    QNNetworkReading reading{dispatch::Clock::current().now(), {}};
    const Counters counters = readCounters(files);
    const auto known = addresses();
    for (const std::string &name : files.names("sys/class/net")) {
        const std::string folder = "sys/class/net/" + name + "/";
        if (!files.exists(folder + "type"))
            continue; // not an interface, e.g. "bonding_masters"
        QNNetworkInterface one{NSString::stringWithUTF8String(name),
                               kindOf(files, folder),
                               isLinked(files, folder),
                               hardwareAddress(files, folder),
                               {},
                               {},
                               {}};
        for (const InterfaceAddress &address : known)
            if (address.interface == name)
                (address.isIPv6 ? one.IPv6Addresses : one.IPv4Addresses)
                    .push_back(NSString::stringWithUTF8String(address.address));
        if (const auto traffic = counters.find(name); traffic != counters.end())
            one.traffic = traffic->second;
        reading.interfaces.push_back(std::move(one));
    }
    return reading;
}

std::optional<QNTraffic> qn::trafficOf(const QNNetworkReading &reading, QNInterfaceKind kind) {
    std::optional<QNTraffic> sum;
    for (const auto &one : reading.interfaces)
        if (one.kind == kind && one.traffic)
            add(sum ? *sum : sum.emplace(), *one.traffic);
    return sum;
}

std::map<std::string, QNTraffic> qn::trafficBetween(const QNNetworkReading &before,
                                                    const QNNetworkReading &after) {
    std::map<std::string, QNTraffic> earlier, between;
    for (const auto &one : before.interfaces)
        if (one.name && one.traffic)
            earlier.emplace(one.name->utf8(), *one.traffic);
    for (const auto &one : after.interfaces) {
        const auto found = one.name ? earlier.find(one.name->utf8()) : earlier.end();
        if (found == earlier.end() || !one.traffic)
            continue;
        if (const auto traffic = difference(found->second, *one.traffic))
            between.emplace(found->first, *traffic);
    }
    return between;
}

std::optional<QNTraffic> qn::trafficBetween(const QNNetworkReading &before, const QNNetworkReading &after,
                                            QNInterfaceKind kind) {
    const auto all = trafficBetween(before, after);
    std::optional<QNTraffic> sum;
    for (const auto &one : after.interfaces)
        if (const auto found = one.name ? all.find(one.name->utf8()) : all.end();
            one.kind == kind && found != all.end())
            add(sum ? *sum : sum.emplace(), found->second);
    return sum;
}
