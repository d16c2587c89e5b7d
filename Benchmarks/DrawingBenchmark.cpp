// Blurring and resizing, beside Qt's graphics effect and its own resizing of the same picture.
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Blur.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Resizing.h"

#include <QApplication>
#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

constexpr QSize size(1000, 800);

/// A picture with something everywhere, translucent in parts.
QImage picture() {
    QImage made(size, QImage::Format_ARGB32_Premultiplied);
    made.fill(Qt::transparent);
    QPainter painter(&made);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 400; ++i) {
        painter.setBrush(QColor::fromHsv(i * 37 % 360, 200, 220, 160));
        painter.drawEllipse(QPoint(i * 263 % size.width(), i * 157 % size.height()), 30, 40);
    }
    return made;
}

void blur(benchmark::State &state) {
    const QImage image = picture();
    for (auto _ : state)
        benchmark::DoNotOptimize(qn::blurred(image, static_cast<double>(state.range(0))));
}

template <QGraphicsBlurEffect::BlurHint hint>
void blurByEffect(benchmark::State &state) {
    QGraphicsScene scene;
    auto *const item = scene.addPixmap(QPixmap::fromImage(picture()));
    auto *const effect = new QGraphicsBlurEffect;
    effect->setBlurHints(hint);
    effect->setBlurRadius(static_cast<double>(state.range(0)));
    item->setGraphicsEffect(effect);
    QImage target(size, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        target.fill(Qt::transparent);
        QPainter painter(&target);
        scene.render(&painter, target.rect(), target.rect());
    }
}

void resize(benchmark::State &state) {
    const QImage image = picture();
    const QSize target(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(qn::resized(image, target));
}

void resizeQt(benchmark::State &state) {
    const QImage image = picture();
    const QSize target(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(image.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

void cover(benchmark::State &state) {
    const QImage image = picture();
    const QSize target(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(qn::resized(image, target, qn::ContentMode::aspectFill));
}

} // namespace

BENCHMARK(blur)->Arg(4)->Arg(20)->Arg(80)->Unit(benchmark::kMillisecond);
BENCHMARK(blurByEffect<QGraphicsBlurEffect::PerformanceHint>)
    ->Name("blurFastQt")
    ->Arg(4)
    ->Arg(20)
    ->Arg(80)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(blurByEffect<QGraphicsBlurEffect::QualityHint>)
    ->Name("blurWellQt")
    ->Arg(4)
    ->Arg(20)
    ->Arg(80)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(resize)->Arg(200)->Arg(1500)->Unit(benchmark::kMillisecond);
BENCHMARK(resizeQt)->Arg(200)->Arg(1500)->Unit(benchmark::kMillisecond);
BENCHMARK(cover)->Arg(200)->Arg(1500)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
