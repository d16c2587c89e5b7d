// The virtual transport library: what every transport does, and where its printers come from.
#include "Tests/Platform/Transport/FolderPorts.h"
#include "Tests/Platform/Transport/TransportTesting.h"

INSTANTIATE_TEST_SUITE_P(Virtual, Transport, testing::Values(FolderPorts::make));

TEST(TransportVirtual, takesItsPrintersFromAFolderOrHasNone) {
    FolderPorts ports;
    ports.plug(sampleLaser());
    EXPECT_EQ(countPrinters(), 1);
    ::setenv("ZKCOMTL_PRINTERS", "", 1);
    EXPECT_EQ(countPrinters(), 0);
    ::unsetenv("ZKCOMTL_PRINTERS");
    EXPECT_EQ(countPrinters(), 0);
}
