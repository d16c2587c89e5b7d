// Small files of the kernel, below a folder that stands for "/". What cannot be read, is empty or has
// another form is absent. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

class NSString;

namespace qn {

class HostFiles {
public:
    explicit HostFiles(std::filesystem::path root) : root_(std::move(root)) {}

    /// The whole file; absent when it is larger than 4 MiB. Paths are relative: "proc/stat".
    std::optional<std::string> contents(const std::string &path) const;
    /// Its first line without white space at either end; none unless that is valid UTF-8.
    Ref<NSString> text(const std::string &path) const;
    /// Its first line as an unsigned decimal number.
    std::optional<std::uint64_t> number(const std::string &path) const;
    bool exists(const std::string &path) const;
    /// The names in a folder, sorted.
    std::vector<std::string> names(const std::string &path) const;

private:
    std::filesystem::path root_;
};

/// The text as an unsigned decimal number; absent when there is anything else in it, or it is too large.
std::optional<std::uint64_t> numberOf(std::string_view text);
/// The lines without their ends. A final line end starts no further line; an empty text is one empty line.
std::vector<std::string_view> linesOf(std::string_view text);
/// The words between white space.
std::vector<std::string_view> wordsOf(std::string_view line);

} // namespace qn

#pragma GCC visibility pop
