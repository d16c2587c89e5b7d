#include "Platform/Transport/usb/AlternateSetting.h"

#include <algorithm>

namespace transport {

namespace {

constexpr std::uint8_t printerClass = 7, printerSubclass = 1;
constexpr std::uint8_t oneWay = 1, twoWay = 2;

// Higher is better; 0 for a setting that cannot be used.
int preference(const AlternateSetting &setting) {
    const bool usable = setting.interfaceClass == printerClass && setting.subclass == printerSubclass &&
                        setting.bulkIn != 0 && setting.bulkOut != 0;
    if (!usable || (setting.protocol != oneWay && setting.protocol != twoWay))
        return 0;
    return setting.protocol;
}

} // namespace

std::optional<AlternateSetting> printerSetting(const std::vector<AlternateSetting> &settings) {
    const auto best = std::ranges::max_element(settings, {}, preference);
    return best != settings.end() && preference(*best) > 0 ? std::optional(*best) : std::nullopt;
}

} // namespace transport
