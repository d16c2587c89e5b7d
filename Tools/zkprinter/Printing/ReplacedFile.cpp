#include "Tools/zkprinter/Printing/ReplacedFile.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Failures/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t readableByAll = 0644;

/// A new file beside another, which goes unless it has taken the other's place.
class NewFile {
public:
    explicit NewFile(const std::filesystem::path &target)
        : target_(target), path_(target.string() + ".XXXXXX"),
          descriptor_(mkostemp(path_.data(), O_CLOEXEC)) {}
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    ~NewFile() {
        if (descriptor_ >= 0)
            close(descriptor_);
        if (descriptor_ >= 0 && !placed_)
            unlink(path_.c_str());
    }

    /// False, with errno, when a step fails.
    bool hold(std::string_view text) const {
        while (descriptor_ >= 0 && !text.empty()) {
            const ssize_t count = write(descriptor_, text.data(), text.size());
            if (count < 0 && errno != EINTR)
                return false;
            text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
        return descriptor_ >= 0 && fchmod(descriptor_, readableByAll) == 0 && fsync(descriptor_) == 0;
    }
    bool takePlace() { return placed_ = rename(path_.c_str(), target_.c_str()) == 0; }

private:
    const std::filesystem::path target_;
    std::string path_;
    const int descriptor_;
    bool placed_ = false;
};

/// So that the new name, too, outlasts a power failure; a folder that cannot be synced is no reason to fail.
void syncFolder(const std::filesystem::path &folder) {
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

void replaceFile(const std::filesystem::path &file, std::string_view text) {
    NewFile fresh(file);
    if (!fresh.hold(text) || !fresh.takePlace()) {
        const int error = errno;
        throw Failure(ExitStatus::unwritable, "The file \"" + escapedControlCharacters(file.string()) +
                                                  "\" cannot be written (" + std::strerror(error) +
                                                  "); make room or give it another place, and try again.");
    }
    syncFolder(file.parent_path());
}
