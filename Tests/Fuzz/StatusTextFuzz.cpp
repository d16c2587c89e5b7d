// The status text of a printer.
#include "Manager/PrinterStatus.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Tests/Fuzz/FuzzTarget.h"
#include "Tests/Support/LogLines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const auto text =
        NSString::stringWithUTF8String(std::string_view(reinterpret_cast<const char *>(data), size));
    if (!text || text->length() == 0)
        return 0; // which is said on standard error
    const LogLines log;
    const PrinterStatus status = parsePrinterStatus(text);
    const bool normal = status.value == 1 || status.value == 3;
    alwaysHolds(status.outcome != PrinterStatus::Outcome::noAnswer);
    alwaysHolds(status.isNormal() == (normal && status.outcome != PrinterStatus::Outcome::unreadable));
    return 0;
}
