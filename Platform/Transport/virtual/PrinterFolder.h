// A folder whose *.json files are the printers that are plugged in: adding a file plugs one in, deleting it
// unplugs it. Nothing is cached, so each call sees the folder as it is. Files that do not describe a printer
// are skipped; `whyNoPrinter` returns what is wrong with one.
//
// Thread-safe: files are replaced as a whole, so a reader sees a file before or after a write. When two
// threads or programs write to one file at the same time, one of the writes may be lost.
#pragma once

#include "Platform/Transport/virtual/VirtualPrinterState.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace transport {

struct PluggedPrinter {
    std::filesystem::path file;
    VirtualPrinterState state;
};

class PrinterFolder {
public:
    /// A missing folder, or an empty path, has no printers.
    explicit PrinterFolder(std::filesystem::path folder);

    /// The folder that the environment variable ZKCOMTL_PRINTERS names.
    static PrinterFolder fromEnvironment();

    /// Sorted by file name, byte by byte.
    std::vector<PluggedPrinter> printers() const;

    /// None when the file is missing or does not describe a printer.
    static std::optional<VirtualPrinterState> load(const std::filesystem::path &file);
    /// One sentence; empty for a file that describes a printer.
    static std::string whyNoPrinter(const std::filesystem::path &file);
    /// Replaces the file, keeping its mode and its other keys. On failure returns false and leaves the file
    /// as it was.
    static bool storeThreshold(const std::filesystem::path &file, std::int32_t threshold);

private:
    std::filesystem::path folder_;
};

} // namespace transport
