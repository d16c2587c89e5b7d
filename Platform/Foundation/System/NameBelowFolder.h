// The check for names of files in a folder, so that no name leads out of it.
#pragma once

#include <filesystem>
#include <string>

/// Whether the name is a relative path in normal form (no "." or "..", no double slashes, no NUL).
inline bool isNameBelowFolder(const std::string &name) {
    const std::filesystem::path path(name);
    return !name.empty() && name != "." && path.is_relative() && path.lexically_normal().native() == name &&
           *path.begin() != ".." && name.find('\0') == name.npos;
}
