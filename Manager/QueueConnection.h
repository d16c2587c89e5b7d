// How a print queue reaches its printer, for showing.
//
// Here a printer is compared whole, never by parts of texts: what is shown must tell two printers apart even
// where the lookup of the record (see RecordLookup.h) takes one for the other.
//
// Threads: any.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Transport/PrinterUri.h"

class NSString;
class ZKSafeMutableArray;
class ZKUSB;

enum class QueueConnection {
    network, ///< whatever is not USB
    usbAttached,
    usbNotAttached,
};

/// Whether a queue's URI names a printer on USB. No for none.
bool isUsb(const Ref<NSString> &deviceUri);

/// What the printer calls itself; an absent text is an empty one.
transport::PrinterIdentity identityOf(const ZKUSB &printer);

/// Whether the URI names this very printer.
bool namesPrinter(const Ref<NSString> &deviceUri, const transport::PrinterIdentity &printer);

QueueConnection connectionOf(const Ref<NSString> &deviceUri, const ZKSafeMutableArray &attached);
