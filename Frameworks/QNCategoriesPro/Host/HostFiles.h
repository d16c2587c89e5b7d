// What the kernel tells in small files, below a folder that stands for "/". What cannot be read, is empty or
// of another form is absent. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class NSString;

namespace qn {

class HostFiles {
public:
    explicit HostFiles(std::filesystem::path root) : root_(std::move(root)) {}

    /// All of a file, at most 4 MiB. Paths are relative: "proc/stat".
    std::optional<std::string> contents(const std::string &path) const;
    /// Its first line without white space at both ends, of valid UTF-8.
    Ref<NSString> text(const std::string &path) const;
    /// Its first line as a decimal number that is not negative.
    std::optional<std::uint64_t> number(const std::string &path) const;
    bool exists(const std::string &path) const;
    /// What is in a folder, in the order of names.
    std::vector<std::string> names(const std::string &path) const;

private:
    std::filesystem::path root_;
};

/// A decimal number that is not negative and nothing else.
std::optional<std::uint64_t> numberOf(std::string_view text);
/// The lines, without their ends and the last one's.
std::vector<std::string_view> linesOf(std::string_view text);
/// The words between blanks and tabs.
std::vector<std::string_view> wordsOf(std::string_view line);
std::string_view trimmed(std::string_view text);

} // namespace qn
