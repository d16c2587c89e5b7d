#include "Tests/Support/UsbEmulation/DeviceNode.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

void check(bool done, const std::filesystem::path &path) {
    if (!done)
        throw std::system_error(errno, std::generic_category(), path);
}

} // namespace

DeviceNode::DeviceNode(std::filesystem::path path) : path_(std::move(path)) {
    std::filesystem::create_directories(path_.parent_path());
    check(::mkfifo(path_.c_str(), 0600) == 0, path_);
    file_ = ::open(path_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    check(file_ >= 0 && ::fcntl(file_, F_SETPIPE_SZ, 4096) == 4096, path_);
    setReady(false);
}

DeviceNode::~DeviceNode() {
    ::close(file_);
}

void DeviceNode::setReady(bool ready) {
    if (ready != std::exchange(ready_, ready)) {
        char page[4096] = {};
        check((ready ? ::read(file_, page, sizeof page) : ::write(file_, page, sizeof page)) == sizeof page,
              path_);
    }
}

void DeviceNode::unlink() {
    std::filesystem::remove(path_);
}
