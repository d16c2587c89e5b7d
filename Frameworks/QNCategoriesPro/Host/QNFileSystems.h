// Mounted file systems and their sizes. Plain values. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

class NSString;

/// In bytes.
struct QNFileSystemSize {
    std::uint64_t total = 0;
    std::uint64_t free = 0;      ///< including what is reserved for the system
    std::uint64_t available = 0; ///< to ordinary users

    bool operator==(const QNFileSystemSize &) const = default;
};

struct QNFileSystem {
    Ref<NSString> device; ///< as the kernel calls it: "/dev/sda1", "tmpfs"
    Ref<NSString> mountPoint;
    Ref<NSString> type; ///< "ext4"
    /// Absent for file systems of other machines and of programs (FUSE): asking would wait for their answer.
    std::optional<QNFileSystemSize> size;
};

namespace qn {

class HostFiles;

/// Asks the kernel for the size at a mount point; absent when it does not say.
using FileSystemSizes = std::function<std::optional<QNFileSystemSize>(const std::string &mountPoint)>;
std::optional<QNFileSystemSize> sizeOfFileSystemAt(const std::string &mountPoint);

/// Each device and each mount point once, without file systems of size 0 such as /proc. Of a device that is
/// mounted at several places, the shortest counts.
std::vector<QNFileSystem> readFileSystems(const HostFiles &files, const FileSystemSizes &sizes);

} // namespace qn

#pragma GCC visibility pop
