#include "Tools/zkprinter/Failures/TransportFailure.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Platform/Transport/zkcomtl.h"

#include <algorithm>
#include <tuple>

namespace {

using transport::DeviceAccess;
using transport::HoldingProcess;

std::string quoted(const std::string &name) {
    return "\"" + escapedControlCharacters(name) + "\"";
}

std::string noPermission(const std::string &printer, const std::optional<DeviceAccess> &access) {
    const std::string start = "You may not open " + printer;
    if (!access)
        return start + "; ask the administrator of this computer for access to the printer and try again.";
    if (!access->udevRule)
        return start +
               ", as the access rule 70-zkutility.rules is not installed; install the package of this "
               "program, plug the printer in again and try again.";
    return start +
           " from this session; log in at the computer itself, or ask its administrator to add you to "
           "the group lp, and try again.";
}

std::string heldBy(const HoldingProcess &holder, const std::string &printer) {
    switch (holder.kind) {
    case HoldingProcess::Kind::cupsBackend:
        return "A print job holds " + printer + "; wait until it has finished and try again.";
    case HoldingProcess::Kind::ippUsb:
        return "The daemon ipp-usb holds " + printer +
               "; stop it, for example with \"systemctl stop ipp-usb\", try again, and start it afterwards "
               "with "
               "\"systemctl start ipp-usb\".";
    case HoldingProcess::Kind::other:
        break;
    }
    return "The program " + quoted(holder.process) + " (process " + std::to_string(holder.pid) + ") holds " +
           printer + "; end it and try again.";
}

/// A key for the likeliest holder, smallest first: other programs may have the device open without claiming
/// it, but a job does claim it.
auto suspicion(const HoldingProcess &holder) {
    return std::tuple(holder.kind != HoldingProcess::Kind::cupsBackend, !holder.seen, holder.kind);
}

std::string busy(const std::string &printer, const std::optional<DeviceAccess> &access) {
    if (access && !access->holders.empty())
        return heldBy(*std::ranges::min_element(access->holders, {}, suspicion), printer);
    if (access && access->kernelDriver == "usblp" && !access->printNodes.empty())
        return "A program of another user prints on " + printer + " through " +
               access->printNodes.front().string() + "; wait until it has finished and try again.";
    return "A print job or another program holds " + printer + "; wait until it has finished and try again.";
}

} // namespace

std::optional<DeviceAccess> accessTo(const std::string &deviceUri) {
    const auto printers = transport::attachedPrintersNamed(deviceUri, transport::attachedPrinters());
    return printers.size() == 1 ? std::optional(deviceAccess(printers.front())) : std::nullopt;
}

Failure ambiguous(const std::string &name) {
    return {ExitStatus::ambiguous, "Two printers that are attached are both called " + quoted(name) +
                                       "; unplug the one that is not meant and try again."};
}

Failure reasonOf(std::int32_t transportStatus, const std::string &name,
                 const std::optional<DeviceAccess> &access) {
    const std::string printer = quoted(name);
    switch (transportStatus) {
    case TL_USB_ERROR_AMBIGUOUS:
        return ambiguous(name);
    case TL_USB_ERROR_ACCESS:
        return {ExitStatus::noPermission, noPermission(printer, access)};
    case TL_USB_ERROR_BUSY:
        return {ExitStatus::busy, busy(printer, access)};
    case TL_USB_ERROR_NO_DEVICE:
    case TL_USB_ERROR_INVALID: // the handle went with the printer
        return {ExitStatus::unplugged,
                printer + " was unplugged or switched off; check its power and its USB cable and try again."};
    case TL_USB_OK:
    case TL_USB_ERROR_TIMEOUT:
        return {ExitStatus::noAnswer, printer + " does not answer; wait until it has finished printing, or "
                                                "switch it off and on, and try again."};
    case TL_USB_ERROR_STALL:
        return {ExitStatus::transferFailed,
                printer + " refused the transfer; switch it off and on and try again."};
    case TL_USB_ERROR_ENDLESS:
        return {ExitStatus::transferFailed,
                printer + " does not stop sending; switch it off and on and try again."};
    case TL_USB_ERROR_OVERFLOW:
        return {ExitStatus::transferFailed,
                printer + " sent more than it should; switch it off and on and try again."};
    default:
        return {ExitStatus::transferFailed,
                "The transfer to " + printer + " failed (" + std::to_string(transportStatus) +
                    "); connect it with another USB cable, or without a hub, and try again."};
    }
}
