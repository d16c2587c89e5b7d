// The USB transport library over emulated printers: what every transport does, and what only a bus can do.
#include "Tests/Platform/Transport/TransportTesting.h"
#include "Tests/Platform/Transport/UsbPorts.h"

#include <gtest/gtest.h>

INSTANTIATE_TEST_SUITE_P(Usb, Transport, testing::Values(UsbPorts::make));
