// The computer in a report: what it has and how busy it is. Nothing that tells whose it is: no addresses, no
// names, no folders of users.
#pragma once

#include "Frameworks/QNCategoriesPro/Host/QNDevice.h"
#include "Tools/zkprinter/Report.h"

/// `begin` is a reading of the device's processors, from which on the load is told.
Facts hostFacts(const QNDevice &device, const QNProcessorReading &begin);
/// The room where jobs, temporary files and the system are kept.
std::vector<Facts> roomFacts(const QNDevice &device);
std::vector<Facts> interfaceFacts(const QNDevice &device);
