// The type of files with a file-name extension, from the desktop's MIME database.
#pragma once

#include <optional>
#include <string>

#pragma GCC visibility push(default)

/// The MIME type of an extension, which is given without its dot and in any case: "image/png" for "png".
/// Nothing for an extension that the database does not know. Safe from any thread.
std::optional<std::string> preferredMIMETypeForExtension(const std::string &extension);

#pragma GCC visibility pop
