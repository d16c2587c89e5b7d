// How an exchange with a printer ended. Asking and judging are apart, as one printer may be asked for several
// queues, each of which has a sentence of its own.
#pragma once

#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Transport/zkcomtl.h"
#include "Tools/zkprinter/Failures/TransportFailure.h"

#include <cstdint>
#include <optional>

template <class Answer>
struct Exchanged {
    Answer answer{};
    std::int32_t transportStatus = TL_USB_OK;        ///< of zkcomtl.h
    std::optional<transport::DeviceAccess> access{}; ///< if the transport failed and it is known
};

/// Finds out who may open the printer and who holds it, at once if the transport failed: later, the holder
/// may have gone.
template <class Answer>
void findAccess(Exchanged<Answer> &exchanged, ZKUSB &printer) {
    if (exchanged.transportStatus != TL_USB_OK)
        exchanged.access = accessTo(printer.URI()->utf8());
}
