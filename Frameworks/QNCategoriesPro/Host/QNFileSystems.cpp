#include "Frameworks/QNCategoriesPro/Host/QNFileSystems.h"

#include "Frameworks/QNCategoriesPro/Host/HostFiles.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <sys/statvfs.h>

namespace {

struct Mount {
    std::string device, mountPoint, type;
};

int octalDigit(char character) {
    return character >= '0' && character <= '7' ? character - '0' : -1;
}

/// The kernel writes blanks, tabs, line ends and backslashes as "\040".
std::string unescaped(std::string_view text) {
    std::string made;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = i + 3 < text.size() && text[i] == '\\' ? octalDigit(text[i + 1]) : -1;
        const int middle = high < 0 ? -1 : octalDigit(text[i + 2]),
                  low = high < 0 ? -1 : octalDigit(text[i + 3]);
        if (high < 0 || high > 3 || middle < 0 || low < 0) {
            made += text[i];
            continue;
        }
        made += static_cast<char>(high << 6 | middle << 3 | low);
        i += 3;
    }
    return made;
}

/// Later mounts cover earlier ones at the same place; of the places of one device the shortest counts.
void add(std::vector<Mount> &mounts, Mount mount) {
    std::erase_if(mounts, [&](const Mount &one) { return one.mountPoint == mount.mountPoint; });
    const auto same = std::ranges::find_if(mounts, [&](const Mount &one) {
        return mount.device.starts_with('/') && one.device == mount.device;
    });
    if (same == mounts.end())
        mounts.push_back(std::move(mount));
    else if (mount.mountPoint.size() < same->mountPoint.size())
        *same = std::move(mount);
}

/// Whether another machine or a program answers for it.
bool isServed(const Mount &mount) {
    static constexpr std::string_view types[] = {"9p",  "afs",  "autofs", "ceph", "cifs",  "coda",
                                                 "nfs", "nfs4", "ncpfs",  "smb3", "smbfs", "virtiofs"};
    return std::ranges::find(types, mount.type) != std::end(types) || mount.type.starts_with("fuse.") ||
           mount.device.find(":/") != std::string::npos || mount.device.starts_with("//");
}

} // namespace

std::optional<QNFileSystemSize> qn::sizeOfFileSystemAt(const std::string &mountPoint) {
    struct statvfs found {};
    if (statvfs(mountPoint.c_str(), &found) != 0)
        return std::nullopt;
    const std::uint64_t unit = found.f_frsize ? found.f_frsize : found.f_bsize;
    return QNFileSystemSize{unit * found.f_blocks, unit * found.f_bfree, unit * found.f_bavail};
}

std::vector<QNFileSystem> qn::readFileSystems(const HostFiles &files, const FileSystemSizes &sizes) {
    std::vector<Mount> mounts;
    const std::string contents = files.contents("proc/self/mounts").value_or("");
    for (const auto line : linesOf(contents))
        if (const auto words = wordsOf(line); words.size() >= 3)
            add(mounts, {unescaped(words[0]), unescaped(words[1]), unescaped(words[2])});
    std::vector<QNFileSystem> found;
    for (const Mount &mount : mounts) {
        const auto size = isServed(mount) ? std::nullopt : sizes(mount.mountPoint);
        if (mount.type == "autofs" || (size && size->total == 0))
            continue;
        found.push_back({NSString::stringWithUTF8String(mount.device),
                         NSString::stringWithUTF8String(mount.mountPoint),
                         NSString::stringWithUTF8String(mount.type), size});
    }
    return found;
}
