#include "Platform/Interface/BackgroundView.h"

#include <QPainter>

#include <algorithm>
#include <vector>

namespace {

constexpr float faint = 0.04F;    // opacity of the accent in each of three layers
constexpr int highContrast = 250; // difference of grey levels, of 255

/// A wave across the view, filled down to its lower edge; heights are fractions of the view's height.
struct Wave {
    double left, crest, right;

    /// Per column from the left, the row at which the wave begins.
    std::vector<int> rows(const QSize &size) const {
        std::vector<int> rows(static_cast<std::size_t>(size.width()));
        const int steps = 4 * size.width(); // the curve passes every column
        for (int step = 0; step < steps; ++step) {
            const double t = (step + 0.5) / steps, rest = 1 - t;
            const double x = 3 * rest * t * (0.25 * rest + 0.55 * t) + t * t * t;
            const double y = rest * rest * rest * left +
                             3 * rest * t * (rest * (crest - 0.12) + t * (crest + 0.12)) + t * t * t * right;
            rows[static_cast<std::size_t>(x * size.width())] = qRound(y * size.height());
        }
        return rows;
    }
};

/// The ground with that share of the accent. Opaque, as a faint colour would be rounded to another hue.
QColor mixed(const QColor &ground, const QColor &accent, float share) {
    const auto part = [share](float from, float to) { return from + (to - from) * share; };
    return QColor::fromRgbF(part(ground.redF(), accent.redF()), part(ground.greenF(), accent.greenF()),
                            part(ground.blueF(), accent.blueF()));
}

/// Fills the part of row `y` that lies within the wave.
void fillRow(QPainter &painter, int y, const std::vector<int> &wave, const QColor &color) {
    const auto isWithin = [y](int top) { return top <= y; };
    for (auto begin = wave.begin(); (begin = std::find_if(begin, wave.end(), isWithin)) != wave.end();) {
        const auto end = std::find_if_not(begin, wave.end(), isWithin);
        painter.fillRect(static_cast<int>(begin - wave.begin()), y, static_cast<int>(end - begin), 1, color);
        begin = end;
    }
}

} // namespace

BackgroundView::BackgroundView(QWidget *parent) : QLabel(parent) {}

void BackgroundView::paintEvent(QPaintEvent *) {
    const QColor ground = palette().color(QPalette::Window), accent = palette().color(QPalette::Highlight);
    const int text = qGray(palette().color(QPalette::WindowText).rgb());
    if (std::abs(text - qGray(ground.rgb())) >= highContrast || size().isEmpty())
        return;
    // The lower wave lies within the higher one.
    std::vector<std::vector<int>> waves;
    for (const Wave &wave : {Wave{0.80, 0.80, 0.72}, Wave{0.90, 0.86, 0.84}}) {
        waves.push_back(wave.rows(size()));
        if (isRightToLeft())
            std::ranges::reverse(waves.back());
    }
    // Row by row: larger areas Qt gives to threads, and waits without end if the system has none left.
    QPainter painter(this);
    for (int y = 0; y < height(); ++y) {
        float rest = 1 - faint * (static_cast<float>(y) + 0.5F) / static_cast<float>(height());
        painter.fillRect(0, y, width(), 1, mixed(ground, accent, 1 - rest));
        for (const std::vector<int> &wave : waves) {
            rest *= 1 - faint;
            fillRow(painter, y, wave, mixed(ground, accent, 1 - rest));
        }
    }
}
