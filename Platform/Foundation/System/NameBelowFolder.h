// Names of files that are looked for below a folder, which no name may lead out of.
#pragma once

#include <filesystem>
#include <string>

/// Whether it is a path below a folder, and that in its only spelling.
inline bool isNameBelowFolder(const std::string &name) {
    const std::filesystem::path path(name);
    return !name.empty() && path.is_relative() && path.lexically_normal().native() == name &&
           *path.begin() != ".." && name.find('\0') == name.npos;
}
