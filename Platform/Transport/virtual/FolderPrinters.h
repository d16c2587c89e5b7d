// Virtual printers as those of a transport: each file of the folder that ZKCOMTL_PRINTERS names is one.
//
// Time is virtual: nothing ever waits, a read of nothing times out at once. A file is read again for each
// call, so that an edit of it works on an open printer and its deletion unplugs it. Thread-safe.
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
