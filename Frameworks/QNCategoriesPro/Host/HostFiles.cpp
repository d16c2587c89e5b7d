#include "Frameworks/QNCategoriesPro/Host/HostFiles.h"

#include "Platform/Ascii/Trimmed.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t longestFile = 4 << 20;
constexpr std::string_view white = " \t\r\n";

class OpenFile {
public:
    explicit OpenFile(const char *path) : descriptor_(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile() {
        if (descriptor_ >= 0)
            close(descriptor_);
    }

    /// How many bytes were read; 0 at the end and on failure.
    std::size_t read(char *buffer, std::size_t size) const {
        const ssize_t count = descriptor_ < 0 ? -1 : ::read(descriptor_, buffer, size);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

private:
    const int descriptor_;
};

} // namespace

std::optional<std::string> qn::HostFiles::contents(const std::string &path) const {
    const OpenFile file((root_ / path).c_str());
    std::string all;
    char buffer[4096];
    while (const std::size_t count = file.read(buffer, sizeof buffer)) {
        all.append(buffer, count);
        if (all.size() > longestFile)
            return std::nullopt;
    }
    return all.empty() ? std::nullopt : std::optional(std::move(all));
}

Ref<NSString> qn::HostFiles::text(const std::string &path) const {
    const auto all = contents(path);
    const auto line = all ? ascii::trimmed(linesOf(*all).front()) : std::string_view();
    return line.empty() ? nullptr : NSString::stringWithUTF8String(line);
}

std::optional<std::uint64_t> qn::HostFiles::number(const std::string &path) const {
    const auto all = contents(path);
    return all ? numberOf(ascii::trimmed(linesOf(*all).front())) : std::nullopt;
}

bool qn::HostFiles::exists(const std::string &path) const {
    return access((root_ / path).c_str(), F_OK) == 0;
}

std::vector<std::string> qn::HostFiles::names(const std::string &path) const {
    std::vector<std::string> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(root_ / path, error), end; !error && entry != end;
         entry.increment(error))
        found.push_back(entry->path().filename().string());
    std::ranges::sort(found);
    return found;
}

std::optional<std::uint64_t> qn::numberOf(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

std::vector<std::string_view> qn::linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    do {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    } while (!text.empty());
    return lines;
}

std::vector<std::string_view> qn::wordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    for (line = ascii::trimmed(line); !line.empty(); line = ascii::trimmed(line)) {
        const std::size_t end = std::min(line.find_first_of(white), line.size());
        words.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
    return words;
}
