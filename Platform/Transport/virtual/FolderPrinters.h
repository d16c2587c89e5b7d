// The printers of the virtual transport: each file of the folder that ZKCOMTL_PRINTERS names is one.
//
// Nothing waits: a read from a silent printer times out at once. The file is read again for each call, so
// that editing it changes an open printer and deleting it unplugs the printer. Thread-safe.
#pragma once

#include "Platform/Transport/Printer.h"

#include <memory>
#include <vector>

namespace transport {

class FolderPrinters final : public Printers {
public:
    std::vector<std::shared_ptr<Printer>> attached() override;
};

} // namespace transport
