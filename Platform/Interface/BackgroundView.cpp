#include "Platform/Interface/BackgroundView.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr float faint = 0.04F;    // opacity of the accent in each of three layers
constexpr int highContrast = 250; // difference of grey levels, of 255

/// A wave across the view, filled down to its lower edge; heights are fractions of the view's height.
QPainterPath wave(const QSizeF &size, double left, double crest, double right) {
    QPainterPath path(QPointF(0, left * size.height()));
    path.cubicTo(QPointF(0.25 * size.width(), (crest - 0.12) * size.height()),
                 QPointF(0.55 * size.width(), (crest + 0.12) * size.height()),
                 QPointF(size.width(), right * size.height()));
    path.lineTo(size.width(), size.height());
    path.lineTo(0, size.height());
    return path;
}

} // namespace

BackgroundView::BackgroundView(QWidget *parent) : QLabel(parent) {}

void BackgroundView::paintEvent(QPaintEvent *) {
    const int text = qGray(palette().color(QPalette::WindowText).rgb());
    const int ground = qGray(palette().color(QPalette::Window).rgb());
    if (std::abs(text - ground) >= highContrast)
        return;
    QColor accent = palette().color(QPalette::Highlight), none = accent;
    accent.setAlphaF(faint);
    none.setAlphaF(0);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient wash(rect().topLeft(), rect().bottomLeft());
    wash.setColorAt(0, none);
    wash.setColorAt(1, accent);
    painter.fillRect(rect(), wash);
    if (isRightToLeft()) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    painter.fillPath(wave(size(), 0.80, 0.80, 0.72), accent);
    painter.fillPath(wave(size(), 0.90, 0.86, 0.84), accent);
}
