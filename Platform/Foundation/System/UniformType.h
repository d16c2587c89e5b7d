// What kind of file a file-name extension stands for, by the desktop's database of types.
#pragma once

#include <optional>
#include <string>

/// The MIME type of the extension, given without its dot and in any case: "image/png" for "png". Nothing for
/// an extension that the database does not know. Any thread.
std::optional<std::string> preferredMIMETypeForExtension(const std::string &extension);
