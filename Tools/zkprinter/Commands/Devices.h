// Attached printers in JSON.
#pragma once

#include "Tools/zkprinter/Printing/Json.h"

class ZKUSB;

/// Writes the fields of the printer.
void describe(Json &json, ZKUSB &printer);
