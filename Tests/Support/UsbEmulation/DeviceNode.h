// The file of an emulated device under /dev/bus/usb: says to poll() whether a finished transfer waits.
//
// It is a pipe of one page: full, nothing waits; empty, it can be written, which is how usbfs says "reap".
#pragma once

#include "Tests/Support/Testing.h"

#include <filesystem>

class DeviceNode : NoCopies {
public:
    explicit DeviceNode(std::filesystem::path path);
    ~DeviceNode();

    const std::filesystem::path &path() const { return path_; }
    void setReady(bool ready);
    /// Those who have it open keep it.
    void unlink();

private:
    std::filesystem::path path_;
    int file_ = -1;
    bool ready_ = true;
};
