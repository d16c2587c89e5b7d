// The desktop's own program for setting up printers.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The command that opens it: program and arguments; empty when this machine has no such program. `desktops`
/// is the value of XDG_CURRENT_DESKTOP, names separated by colons; a program of one of these desktops comes
/// before any other. `isInstalled` returns whether a program of that name can be started.
std::vector<std::string> printerSettingsCommand(std::string_view desktops,
                                                const std::function<bool(const std::string &)> &isInstalled);
