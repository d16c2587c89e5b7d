#include "Classes/ZKView.h"

#include <QLayout>
#include <QPalette>

namespace {

/// A whole palette made from light colours; the desktop's accent stays.
QPalette lightPalette(const QPalette &desktop) {
    QPalette light(QColor(0xEF, 0xEF, 0xEF), Qt::white);
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::PlaceholderText, QColor(0x5A, 0x5A, 0x5A));
    light.setColor(QPalette::Disabled, QPalette::Text, QColor(0x76, 0x76, 0x76));
    light.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x76, 0x76, 0x76));
    light.setColor(QPalette::Highlight, desktop.color(QPalette::Highlight));
    light.setColor(QPalette::HighlightedText, desktop.color(QPalette::HighlightedText));
    return light;
}

} // namespace

void ZKView::awakeFromNib() {
    setPalette(lightPalette(palette()));
    setAutoFillBackground(true);
}

QSize ZKView::minimumSizeHint() const {
    const QSize least = QWidget::minimumSizeHint();
    const int width = std::max(least.width(), 32 * fontMetrics().averageCharWidth());
    return {width,
            layout() ? std::max(least.height(), layout()->totalHeightForWidth(width)) : least.height()};
}
