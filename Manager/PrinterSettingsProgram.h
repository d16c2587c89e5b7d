// The desktop's own program for setting up printers.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The command that opens it, or none when this machine has no such program. `desktops` is what
/// XDG_CURRENT_DESKTOP says, names separated by colons; their own program goes before any other.
/// `isInstalled` tells whether a program of that name can be started.
std::vector<std::string> printerSettingsCommand(std::string_view desktops,
                                                const std::function<bool(const std::string &)> &isInstalled);
