// What a printer sends in an exchange: each transfer is a status, a length and bytes.
#include "Manager/TonerHint.h"
#include "Tests/Fuzz/FuzzTarget.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::size_t mostTransfers = 64;
    FuzzBytes bytes(data, size);
    LogLines log;
    ScriptedTransport transport;
    while (!bytes.empty() && transport.reads.size() < mostTransfers) {
        ScriptedTransport::Read read;
        const std::uint8_t kind = bytes.byte();
        read.status = (kind & 3) == 1 ? TL_USB_ERROR_TIMEOUT : TL_USB_OK;
        for (std::size_t length = bytes.byte(); length > 0 && !bytes.empty(); --length)
            read.bytes.push_back(bytes.byte());
        if ((kind & 0x10) != 0) // the transport, too, may tell any length
            read.length = static_cast<std::int32_t>(static_cast<std::uint32_t>(kind) << 24) + bytes.byte();
        transport.reads.push_back(std::move(read));
    }
    int calls = 0;
    readTonerHint(sampleRecord(), [&](const TonerHintReading &reading) {
        ++calls;
        alwaysHolds(reading.outcome == TonerHintReading::Outcome::threshold || reading.threshold == 0);
    });
    alwaysHolds(calls <= 2);
    calls = 0;
    writeTonerHint(sampleRecord(), 3, [&](TonerHintWriting) { ++calls; });
    alwaysHolds(calls <= 2);
    return 0;
}
