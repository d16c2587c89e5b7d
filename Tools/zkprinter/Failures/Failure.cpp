#include "Tools/zkprinter/Failures/Failure.h"

const char *nameOf(ExitStatus status) {
    switch (status) {
    case ExitStatus::success:
        return "success";
    case ExitStatus::notNormal:
        return "not-normal";
    case ExitStatus::usage:
        return "usage";
    case ExitStatus::noSuchQueue:
        return "no-such-queue";
    case ExitStatus::notUsb:
        return "not-usb";
    case ExitStatus::notAttached:
        return "not-attached";
    case ExitStatus::noAnswer:
        return "no-answer";
    case ExitStatus::refused:
        return "refused";
    case ExitStatus::cupsUnreachable:
        return "cups-unreachable";
    case ExitStatus::brokenInstallation:
        return "broken-installation";
    case ExitStatus::noPermission:
        return "no-permission";
    case ExitStatus::busy:
        return "busy";
    case ExitStatus::unplugged:
        return "unplugged";
    case ExitStatus::transferFailed:
        return "transfer-failed";
    case ExitStatus::ambiguous:
        return "ambiguous";
    case ExitStatus::timedOut:
        return "timed-out";
    case ExitStatus::unwritable:
        return "unwritable";
    case ExitStatus::outOfResources:
        return "out-of-resources";
    case ExitStatus::partly:
        return "partly";
    }
    return "unknown";
}
