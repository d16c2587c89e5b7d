// Whether a program prints through the kernel's printer driver, which would lose the rest of its job with the
// interface.
//
//     const PrintNodeHold nodes(printer);
//     if (!nodes.isUsed())
//         ...                                 // take the interface
//
// The driver lets one program at a time open a printer's node. So opening the node tells, and keeps others
// out until this ends. Where this user may not open it, the open files of the processes that he may look into
// have to do. Opening the node has the driver fetch what the printer wants to say: an answer that has been
// left unread in the printer may get lost.
#pragma once

#include "Platform/Transport/usb/AttachedPrinter.h"

#include <vector>

namespace transport {

class PrintNodeHold {
public:
    explicit PrintNodeHold(const AttachedPrinter &printer);
    PrintNodeHold(const PrintNodeHold &) = delete;
    PrintNodeHold &operator=(const PrintNodeHold &) = delete;
    ~PrintNodeHold();

    bool isUsed() const { return used_; }

private:
    std::vector<int> files_;
    bool used_ = false;
};

} // namespace transport
