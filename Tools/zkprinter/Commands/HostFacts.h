// The computer in a report: what it has and how busy it is. Nothing that identifies it or its users: no
// addresses, no host names, no folders of users.
#pragma once

#include "Frameworks/QNCategoriesPro/Host/QNDevice.h"
#include "Tools/zkprinter/Printing/Report.h"

/// `begin` is an earlier reading of the device's processors, from which the load is computed.
Facts hostFacts(const QNDevice &device, const QNProcessorReading &begin);
/// The free space where print jobs, temporary files and the system are stored.
std::vector<Facts> roomFacts(const QNDevice &device);
/// The network interfaces, with counts instead of addresses.
std::vector<Facts> interfaceFacts(const QNDevice &device);
