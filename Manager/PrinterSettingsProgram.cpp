#include "Manager/PrinterSettingsProgram.h"

namespace {

struct Program {
    std::string_view desktop; // empty: of no desktop in particular
    std::vector<std::string> command;
};

bool isOneOf(std::string_view desktop, std::string_view desktops) {
    return (":" + std::string(desktops) + ":").find(":" + std::string(desktop) + ":") != std::string::npos;
}

} // namespace

std::vector<std::string> printerSettingsCommand(std::string_view desktops,
                                                const std::function<bool(const std::string &)> &isInstalled) {
    const Program programs[] = {
        {"GNOME", {"gnome-control-center", "printers"}},
        {"KDE", {"systemsettings", "kcm_printer_manager"}},
        {"KDE", {"systemsettings5", "kcm_printer_manager"}},
        {"X-Cinnamon", {"cinnamon-settings", "printers"}},
        {"", {"system-config-printer"}},
    };
    for (const bool own : {true, false})
        for (const auto &[desktop, command] : programs) {
            const bool fits = own ? !desktop.empty() && isOneOf(desktop, desktops) : desktop.empty();
            if (fits && isInstalled(command.front()))
                return command;
        }
    return {};
}
