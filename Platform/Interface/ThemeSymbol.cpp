#include "Platform/Interface/ThemeSymbol.h"

#include <QIcon>
#include <QPainter>

#include <algorithm>

namespace {

using Names = QStringList;

const Names &printers() {
    static const Names names = {QStringLiteral("printer"), QStringLiteral("printer-network"),
                                QStringLiteral("printer-error")};
    return names;
}

const Names &outcomes() {
    static const Names names = {QStringLiteral("emblem-ok"), QStringLiteral("dialog-warning"),
                                QStringLiteral("dialog-error")};
    return names;
}

struct StandardName {
    const Names &family;
    qsizetype index;
};

StandardName standardName(Symbol symbol) {
    switch (symbol) {
    case Symbol::printer:
    case Symbol::missingPrinter:
        return {printers(), 0};
    case Symbol::networkPrinter:
        return {printers(), 1};
    case Symbol::failingPrinter:
        return {printers(), 2};
    case Symbol::success:
        return {outcomes(), 0};
    case Symbol::warning:
        return {outcomes(), 1};
    case Symbol::failure:
        break;
    }
    return {outcomes(), 2};
}

QString symbolic(const QString &name) {
    return name + QStringLiteral("-symbolic");
}

enum class Style { ours, symbolic, colored };

Style styleOf(const Names &family) {
    if (std::all_of(family.begin(), family.end(),
                    [](const QString &name) { return QIcon::hasThemeIcon(symbolic(name)); }))
        return Style::symbolic;
    return std::all_of(family.begin(), family.end(), QIcon::hasThemeIcon) ? Style::colored : Style::ours;
}

/// The style for the current theme. Kept, as looking for icons that a theme lacks takes long.
Style currentStyle(const Names &family) {
    struct Styles {
        QString theme;
        Style printers, outcomes;
    };
    static Styles known = {QString(), Style::ours, Style::ours};
    if (const QString theme = QIcon::themeName(); theme != known.theme)
        known = {theme, styleOf(printers()), styleOf(outcomes())};
    return &family == &printers() ? known.printers : known.outcomes;
}

QPixmap inColor(QPixmap picture, const QColor &color) {
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

/// The picture with a diagonal gap, as a stroke would not be seen on a filled shape.
QPixmap parted(QPixmap picture) {
    const QSizeF size = picture.deviceIndependentSize();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setPen(QPen(Qt::black, size.width() / 5));
    painter.drawLine(QPointF(), QPointF(size.width(), size.height()));
    return picture;
}

} // namespace

bool drawThemeSymbol(QPainter &painter, Symbol symbol, const QRectF &square, const QColor &color) {
    const auto [family, index] = standardName(symbol);
    const Style style = currentStyle(family);
    if (style == Style::ours)
        return false;
    const QIcon icon = QIcon::fromTheme(style == Style::symbolic ? symbolic(family[index]) : family[index]);
    QPixmap picture = icon.pixmap(square.size().toSize(), painter.device()->devicePixelRatioF());
    if (picture.isNull()) // in a format that cannot be read here
        return false;
    if (style == Style::symbolic)
        picture = inColor(std::move(picture), color);
    if (symbol == Symbol::missingPrinter)
        picture = parted(std::move(picture));
    QRectF place(QPointF(), picture.deviceIndependentSize());
    place.moveCenter(square.center());
    painter.drawPixmap(place.topLeft(), picture);
    return true;
}
