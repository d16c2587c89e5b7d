// A folder whose *.json files are the printers that are plugged in: adding a file plugs one in, deleting it
// unplugs it. Nothing is cached, so each call sees the folder as it is. A file that is no printer is passed
// over in silence; `whyNoPrinter` tells what is wrong with it.
//
// Thread-safe as far as the file system is: a reader sees a file before or after a write, never between. Two
// writers of one file at a time may lose one of the writes.
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
    /// A folder that is missing, or an empty path, has no printers.
    explicit PrinterFolder(std::filesystem::path folder);

    /// The folder that the environment variable ZKCOMTL_PRINTERS names.
    static PrinterFolder fromEnvironment();

    /// Sorted by file name, byte by byte.
    std::vector<PluggedPrinter> printers() const;

    /// None when the file is gone or is no printer.
    static std::optional<VirtualPrinterState> load(const std::filesystem::path &file);
    /// One sentence, or an empty text for a printer.
    static std::string whyNoPrinter(const std::filesystem::path &file);
    /// Replaces the file as a whole and keeps its mode and its other keys. False, and the file as it was, on
    /// failure.
    static bool storeThreshold(const std::filesystem::path &file, std::int32_t threshold);

private:
    std::filesystem::path folder_;
};

} // namespace transport
