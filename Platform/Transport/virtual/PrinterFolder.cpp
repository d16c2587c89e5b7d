#include "Platform/Transport/virtual/PrinterFolder.h"

#include "Platform/Transport/virtual/PrinterJson.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace transport {

namespace {

std::optional<std::string> contents(const fs::path &file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return std::nullopt; // opening a pipe would wait for its writer
    std::ifstream stream(file, std::ios::binary);
    std::string text(longestPrinterText + 1, '\0'); // longer texts are refused, so this much is enough
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return stream.is_open() && !stream.bad() ? std::optional(std::move(text)) : std::nullopt;
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool replace(const fs::path &file, std::string_view text) {
    struct stat old {};
    if (::stat(file.c_str(), &old) != 0)
        return false;
    std::string temporary = (file.parent_path() / ("." + file.filename().string() + ".XXXXXX")).string();
    const int descriptor = ::mkstemp(temporary.data());
    if (descriptor < 0)
        return false;
    const bool written = writeAll(descriptor, text) && ::fchmod(descriptor, old.st_mode & 07777) == 0;
    const bool closed = ::close(descriptor) == 0;
    if (written && closed && std::rename(temporary.c_str(), file.c_str()) == 0)
        return true;
    ::unlink(temporary.c_str());
    return false;
}

} // namespace

PrinterFolder::PrinterFolder(fs::path folder) : folder_(std::move(folder)) {}

PrinterFolder PrinterFolder::fromEnvironment() {
    const char *const folder = std::getenv("ZKCOMTL_PRINTERS");
    return PrinterFolder(folder ? folder : "");
}

std::vector<PluggedPrinter> PrinterFolder::printers() const {
    std::vector<PluggedPrinter> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() != ".json")
            continue;
        if (std::optional<VirtualPrinterState> state = load(entry->path()))
            found.push_back({.file = entry->path(), .state = std::move(*state)});
    }
    std::ranges::sort(found, {}, &PluggedPrinter::file);
    return found;
}

std::optional<VirtualPrinterState> PrinterFolder::load(const fs::path &file) {
    const std::optional<std::string> text = contents(file);
    return text ? printerFromJson(*text) : std::nullopt;
}

std::string PrinterFolder::whyNoPrinter(const fs::path &file) {
    std::string reason;
    if (const std::optional<std::string> text = contents(file))
        printerFromJson(*text, &reason);
    else
        reason = "The file cannot be read.";
    return reason;
}

bool PrinterFolder::storeThreshold(const fs::path &file, std::int32_t threshold) {
    const std::optional<std::string> text = contents(file);
    const std::optional<std::string> changed = text ? jsonWithThreshold(*text, threshold) : std::nullopt;
    return changed && replace(file, *changed);
}

} // namespace transport
