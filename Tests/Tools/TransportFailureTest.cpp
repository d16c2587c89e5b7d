#include "Tools/zkprinter/Failures/TransportFailure.h"

#include "Platform/Transport/zkcomtl.h"
#include "Tests/Support/Testing.h"

namespace {

using transport::DeviceAccess;
using transport::HoldingProcess;

DeviceAccess heldBy(const char *process, HoldingProcess::Kind kind) {
    return {.holders = {{.pid = 42, .process = process, .kind = kind}}};
}

/// The job claims the printer, whoever else looks at it.
const DeviceAccess heldByJobAmongOthers = {
    .holders = {
        {.pid = 1, .process = "scan", .seen = true},
        {.pid = 2, .process = "ipp-usb", .kind = HoldingProcess::Kind::ippUsb},
        {.pid = 3, .process = "usb", .kind = HoldingProcess::Kind::cupsBackend},
    }};
const DeviceAccess printedOnBySomebody = {.printNodes = {"/dev/usb/lp1"}, .kernelDriver = "usblp"};
const DeviceAccess withRule = {.udevRule = "/usr/lib/udev/rules.d/70-zkutility.rules"};

} // namespace

TEST(Reason, namesTheThingToDo) {
    using Kind = HoldingProcess::Kind;
    const struct {
        std::int32_t transportStatus;
        std::optional<DeviceAccess> access;
        ExitStatus status;
        const char *advice;
    } rows[] = {
        {TL_USB_OK, {}, ExitStatus::noAnswer, "switch it off and on"},
        {TL_USB_ERROR_TIMEOUT, {}, ExitStatus::noAnswer, "switch it off and on"},
        {TL_USB_ERROR_ACCESS, {}, ExitStatus::noPermission, "ask the administrator"},
        {TL_USB_ERROR_ACCESS, DeviceAccess(), ExitStatus::noPermission, "install the package"},
        {TL_USB_ERROR_ACCESS, withRule, ExitStatus::noPermission, "the group lp"},
        {TL_USB_ERROR_BUSY, {}, ExitStatus::busy, "A print job or another program"},
        {TL_USB_ERROR_BUSY, DeviceAccess(), ExitStatus::busy, "A print job or another program"},
        {TL_USB_ERROR_BUSY, heldBy("usb", Kind::cupsBackend), ExitStatus::busy, "A print job holds"},
        {TL_USB_ERROR_BUSY, heldByJobAmongOthers, ExitStatus::busy, "A print job holds"},
        {TL_USB_ERROR_BUSY, heldBy("ipp-usb", Kind::ippUsb), ExitStatus::busy, "systemctl stop ipp-usb"},
        {TL_USB_ERROR_BUSY, heldBy("ipp-usb", Kind::ippUsb), ExitStatus::busy, "systemctl start ipp-usb"},
        {TL_USB_ERROR_BUSY, printedOnBySomebody, ExitStatus::busy, "through /dev/usb/lp1; wait"},
        {TL_USB_ERROR_BUSY, heldBy("a\x1B[m", Kind::other), ExitStatus::busy, R"("a\u001B[m" (process 42))"},
        {TL_USB_ERROR_NO_DEVICE, {}, ExitStatus::unplugged, "check its power"},
        {TL_USB_ERROR_INVALID, {}, ExitStatus::unplugged, "check its power"},
        {TL_USB_ERROR_AMBIGUOUS, {}, ExitStatus::ambiguous, "unplug the one that is not meant"},
        {TL_USB_ERROR_STALL, {}, ExitStatus::transferFailed, "refused the transfer"},
        {TL_USB_ERROR_OVERFLOW, {}, ExitStatus::transferFailed, "more than it should"},
        {TL_USB_ERROR_ENDLESS, {}, ExitStatus::transferFailed, "does not stop sending"},
        {TL_USB_ERROR_IO, {}, ExitStatus::transferFailed, "(-6); connect it with another USB cable"},
        {-4711, {}, ExitStatus::transferFailed, "(-4711)"},
    };
    for (const auto &row : rows) {
        const Failure failure = reasonOf(row.transportStatus, "Desk\n", row.access);
        const std::string sentence = failure.what();
        EXPECT_EQ(failure.status(), row.status) << row.transportStatus;
        EXPECT_NE(sentence.find(row.advice), std::string::npos) << sentence;
        EXPECT_NE(sentence.find(R"("Desk\n")"), std::string::npos) << sentence;
        EXPECT_EQ(sentence.find_first_of(".!?\n"), std::min(sentence.find(".rules"), sentence.size() - 1))
            << sentence;
    }
}
