// Makes sure that no program prints through the kernel's printer driver while the interface is taken from it:
// the job would lose its rest.
//
//     const PrintNodeLock nodes(printer);
//     if (!nodes.isUsed())
//         ...                                 // take the interface
//
// The driver lets one program at a time open a printer's node. So opening the node shows whether it is used,
// and keeps others out until this object is destroyed. Where this user may not open it, the open files of the
// processes that the user may inspect are searched instead. Opening the node makes the driver read from the
// printer: an answer that was left unread in the printer may get lost.
#pragma once

#include "Platform/Transport/usb/AttachedPrinter.h"

#include <vector>

namespace transport {

class PrintNodeLock {
public:
    explicit PrintNodeLock(const AttachedPrinter &printer);
    PrintNodeLock(const PrintNodeLock &) = delete;
    PrintNodeLock &operator=(const PrintNodeLock &) = delete;
    ~PrintNodeLock();

    /// Whether another program has a node open.
    bool isUsed() const { return used_; }

private:
    std::vector<int> files_;
    bool used_ = false;
};

} // namespace transport
