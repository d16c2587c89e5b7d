#include "Platform/Transport/usb/PrintNodeLock.h"

#include "Platform/Transport/usb/DeviceAccess.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace transport {

PrintNodeLock::PrintNodeLock(const AttachedPrinter &printer) {
    const std::vector<std::filesystem::path> nodes = printNodes(printer);
    files_.reserve(nodes.size());
    bool hidden = false;
    for (const auto &node : nodes) {
        const int file = ::open(node.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (file >= 0)
            files_.push_back(file);
        used_ = used_ || (file < 0 && errno == EBUSY);
        hidden = hidden || (file < 0 && (errno == EACCES || errno == EPERM));
    }
    used_ = used_ || (hidden && isOpenSomewhere(nodes));
}

PrintNodeLock::~PrintNodeLock() {
    for (const int file : files_)
        ::close(file);
}

} // namespace transport
