#include "Classes/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace {

constexpr auto geometryKey = "window/geometry";
constexpr auto maximizedKey = "window/maximized";

QSettings settings() {
    return {QSettings::IniFormat, QSettings::UserScope, QStringLiteral("zkutility"),
            QStringLiteral("zkutility")};
}

} // namespace

QRect WindowPlace::fitting(const QRect &remembered, QSize wished, const QList<QRect> &areas) {
    if (areas.isEmpty())
        return {QPoint(), wished};
    const auto holds = [&](const QRect &area) { return area.contains(remembered); };
    if (!remembered.isEmpty() && std::any_of(areas.begin(), areas.end(), holds))
        return remembered;
    const QSize size = (remembered.isEmpty() ? wished : remembered.size()).boundedTo(areas.front().size());
    QRect place(QPoint(), size);
    place.moveCenter(areas.front().center());
    return place;
}

void WindowPlace::restore(QWidget &window) {
    const QSettings kept = settings();
    QList<QRect> areas;
    // The frame takes room, too; how much is known only once the window is shown.
    const int frame = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    for (const QScreen *screen : QGuiApplication::screens())
        areas += screen->availableGeometry().adjusted(0, 0, -frame / 4, -frame - frame / 4);
    const QRect remembered = kept.value(QLatin1String(geometryKey)).toRect();
    const QRect place = fitting(remembered, window.size(), areas);
    window.resize(place.size());
    if (!remembered.isEmpty()) // else the window manager finds a place
        window.move(place.topLeft());
    if (kept.value(QLatin1String(maximizedKey)).toBool())
        window.setWindowState(Qt::WindowMaximized);
}

void WindowPlace::save(const QWidget &window) {
    QSettings kept = settings();
    // The position is that of the frame, as `move` takes it.
    kept.setValue(QLatin1String(geometryKey),
                  window.isMaximized() ? window.normalGeometry() : QRect(window.pos(), window.size()));
    kept.setValue(QLatin1String(maximizedKey), window.isMaximized());
    kept.sync(); // the process ends without destroying anything
}
