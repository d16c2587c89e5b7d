// The file systems that are mounted, and their room. Plain values. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class NSString;

/// In bytes.
struct QNFileSystemSize {
    std::uint64_t total = 0;
    std::uint64_t free = 0;      ///< also for the system's own use
    std::uint64_t available = 0; ///< to everybody

    bool operator==(const QNFileSystemSize &) const = default;
};

struct QNFileSystem {
    Ref<NSString> device; ///< as the kernel calls it: "/dev/sda1", "tmpfs"
    Ref<NSString> mountPoint;
    Ref<NSString> type; ///< "ext4"
    /// Absent for those of other machines and of programs (FUSE): who asks waits until these answer.
    std::optional<QNFileSystemSize> size;
};

namespace qn {

class HostFiles;

/// Asks the kernel for the room at a mount point; absent when it does not say.
using FileSystemSizes = std::function<std::optional<QNFileSystemSize>(const std::string &mountPoint)>;
std::optional<QNFileSystemSize> sizeOfFileSystemAt(const std::string &mountPoint);

/// Each device and each mount point once, without those that keep nothing (/proc and the like).
std::vector<QNFileSystem> readFileSystems(const HostFiles &files, const FileSystemSizes &sizes);

} // namespace qn
