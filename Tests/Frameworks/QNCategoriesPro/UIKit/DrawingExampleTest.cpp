// What docs/interface.md shows.
#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/MeasuredPath.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Shapes.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Contrast.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Mixing.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Text.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Blur.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Color.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Corners.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Resizing.h"
#include "Tests/Support/Testing.h"

#include <QPainter>

TEST(DrawingExample, colors) {
    const QColor ground = qn::colorWithText("#2a6").value_or(Qt::white);
    const QColor ink = qn::readableOn(ground);
    const QColor muted = qn::mixed(ink, ground, 0.2);
    EXPECT_GE(qn::contrastRatio(muted, ground), qn::readableContrast);
    EXPECT_GT(qn::relativeLuminance(qn::lighter(ground, 0.1)), qn::relativeLuminance(ground));
}

TEST(DrawingExample, paths) {
    QImage canvas = qn::filledImage({100, 60}, Qt::white);
    QPainter painter(&canvas);
    painter.fillPath(qn::roundedRectangle({10, 10, 80, 40}, {8, 8, 0, 0}), Qt::gray);
    const qn::MeasuredPath track(qn::star({50, 30}, 20, 8, 5));
    for (int step = 0; step < 20; ++step)
        painter.drawEllipse(track.pointAt(step / 20.0).value(), 1, 1);
    painter.drawPath(track.part(0, 0.25));
    EXPECT_EQ(canvas.pixelColor(12, 48), QColor(Qt::gray));
}

TEST(DrawingExample, images) {
    const QImage photo = qn::linearGradientImage({400, 300}, {{0, Qt::black}, {1, Qt::white}});
    const QImage face =
        qn::circular(qn::resized(photo, {48, 48}, qn::ContentMode::aspectFill), {2, Qt::white});
    EXPECT_EQ(face.size(), QSize(48, 48));
    const QImage shadow = qn::blurred(qn::tinted(face, Qt::black), 6, qn::BlurEdges::fading);
    EXPECT_EQ(shadow.size(), QSize(66, 66));
}
