// Writes files that others read at any time.
#pragma once

#include <filesystem>
#include <string_view>

/// Puts the text into the file, which everybody may read (mode 0644): writes and syncs a new file beside it
/// and renames that, so that a reader sees the old text or the new one and never a part. Throws a Failure
/// (`unwritable`) and leaves the old file when that is impossible. Any thread.
void replaceFile(const std::filesystem::path &file, std::string_view text);
