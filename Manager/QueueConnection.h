// How a print queue reaches its printer, for showing.
//
// Printers are compared by manufacturer, product and serial number in full: what is shown must keep two
// printers apart even where the lookup of the record by parts of texts (SelectedPrinterLookup.h) confuses
// them.
//
// Threads: any.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Transport/PrinterUri.h"

class NSString;
class ZKSafeMutableArray;
class ZKUSB;

enum class QueueConnection {
    network, ///< everything that is not USB
    usbAttached,
    usbNotAttached,
};

/// Whether a queue's URI names a printer on USB; false for none.
bool isUsb(const Ref<NSString> &deviceUri);

/// How the printer names itself; an absent text counts as empty.
transport::PrinterIdentity identityOf(const ZKUSB &printer);

/// Whether the URI names exactly this printer (PrinterUri.h); false for none.
bool namesPrinter(const Ref<NSString> &deviceUri, const transport::PrinterIdentity &printer);

/// How a queue with the URI reaches its printer; `attached` are the records of the attached ones.
QueueConnection connectionOf(const Ref<NSString> &deviceUri, const ZKSafeMutableArray &attached);
