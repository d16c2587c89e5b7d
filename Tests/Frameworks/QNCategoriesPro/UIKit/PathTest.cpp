// Bezier paths: shapes by their outlines, and lengths beside those of very many short lines.
#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Length.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Shapes.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Text.h"
#include "Tests/Frameworks/QNCategoriesPro/UIKit/PictureTesting.h"
#include "Tests/Support/QtTesting.h"
#include "Tests/Support/Random.h"

#include <QPainter>

#include <limits>
#include <numbers>

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double endless = std::numeric_limits<double>::infinity();
const QRectF bounds(10, 20, 100, 50);

double distance(const QPointF &one, const QPointF &other) {
    return std::hypot(one.x() - other.x(), one.y() - other.y());
}

QPainterPath anyCurve(Random &random) {
    const auto number = [&] { return static_cast<double>(random.below(1000)); };
    const auto point = [&] { return QPointF(number(), number()); };
    QPainterPath path(point());
    const QPointF first = point(), second = random.oneIn(4) ? first : point();
    path.cubicTo(random.oneIn(4) ? path.currentPosition() : first, second,
                 random.oneIn(4) ? second : point());
    return path;
}

/// Length and places as a hundred thousand points tell them.
struct Points {
    explicit Points(const QPainterPath &path) {
        const auto at = [&](int element) { return QPointF(path.elementAt(element)); };
        for (int step = 0; step <= steps; ++step) {
            const double t = static_cast<double>(step) / steps, u = 1 - t;
            points.push_back(u * u * u * at(0) + 3 * u * u * t * at(1) + 3 * u * t * t * at(2) +
                             t * t * t * at(3));
            lengths.push_back(step ? lengths.back() + distance(points[points.size() - 2], points.back()) : 0);
        }
    }
    QPointF pointAt(double fraction) const {
        const auto place = std::lower_bound(lengths.begin(), lengths.end(), fraction * lengths.back());
        return points[static_cast<std::size_t>(place - lengths.begin())];
    }

    static constexpr int steps = 100000;
    std::vector<QPointF> points;
    std::vector<double> lengths;
};

/// Shapes side by side, each in a field of 80 by 80.
QImage sheetOfPaths() {
    QPainterPath circle;
    circle.addEllipse(QPointF(40, 40), 32, 32);
    QPainterPath dots;
    const qn::MeasuredPath way(qn::star({40, 40}, 36, 15, 5));
    for (int i = 0; i < 30; ++i)
        dots.addEllipse(*way.pointAt(i / 30.0), 2, 2);
    const QRectF field(6, 16, 68, 48);
    const QPainterPath shapes[] = {qn::roundedRectangle(field, 12),
                                   qn::roundedRectangle(field, {0, 48, 4, 80}),
                                   qn::regularPolygon({40, 40}, 34, 3),
                                   qn::regularPolygon({40, 40}, 34, 6, 15),
                                   qn::star({40, 40}, 36, 15, 5),
                                   qn::star({40, 40}, 36, 28, 12),
                                   qn::arrow({8, 70}, {70, 12}, {6, 24, 20}),
                                   qn::arrow({70, 40}, {60, 40}, {6, 24, 20}),
                                   dots,
                                   qn::trimmed(circle, 0.1, 0.6)};
    QImage sheet(5 * 80, 2 * 80, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x20, 0x40, 0x80), 2));
    for (int at = 0; at < 10; ++at) {
        painter.resetTransform();
        painter.translate(QPoint(at % 5, at / 5) * 80);
        painter.setBrush(at < 9 ? QBrush(QColor(0xFF, 0xC0, 0x40)) : QBrush());
        painter.drawPath(shapes[at]);
    }
    return sheet;
}

} // namespace

TEST(Path, roundsCornersThatFit) {
    const auto path = qn::roundedRectangle(bounds, {0, 10, 20, 1e300});
    EXPECT_EQ(path.boundingRect(), bounds);
    EXPECT_NEAR(qn::pathLength(path), qn::pathLength(qn::roundedRectangle(bounds, {0, 0, 0, endless})), 0.01)
        << "beside an endless radius, others are none";
    QPainterPath ellipse;
    ellipse.addEllipse(QRectF(0, 0, 40, 40));
    EXPECT_NEAR(qn::pathLength(qn::roundedRectangle({0, 0, 40, 40}, 500)), qn::pathLength(ellipse), 0.01);
    QPainterPath rectangle;
    rectangle.addRect(bounds);
    EXPECT_EQ(qn::roundedRectangle(bounds, {-3, none, 0, -endless}), qn::roundedRectangle(bounds, 0));
    EXPECT_EQ(qn::roundedRectangle({110, 70, -100, -50}, 0).simplified(), rectangle.simplified());
    EXPECT_TRUE(qn::roundedRectangle({0, 0, 0, 5}, 3).isEmpty());
    EXPECT_TRUE(qn::roundedRectangle({0, none, 5, 5}, 3).isEmpty());
    EXPECT_TRUE(qn::roundedRectangle({0, 0, endless, 5}, 3).isEmpty());
}

TEST(Path, putsCornersWhereTheyBelong) {
    const auto square = qn::regularPolygon({0, 0}, 10, 4, 45);
    EXPECT_NEAR(qn::pathLength(square), 4 * 10 * std::numbers::sqrt2, 1e-9);
    EXPECT_NEAR(distance(square.elementAt(0), QPointF(std::sqrt(50), -std::sqrt(50))), 0, 1e-9);
    EXPECT_EQ(qn::star({5, 5}, 2, 1, 7).elementCount(), 15);
    EXPECT_NEAR(distance(qn::star({5, 5}, 2, 1, 7).elementAt(0), {5, 3}), 0, 1e-9);
    const auto arrow = qn::arrow({0, 0}, {0, 20}, {2, 8, 6});
    EXPECT_NEAR(distance(arrow.elementAt(3), {0, 20}), 0, 1e-9);
    EXPECT_NEAR(arrow.boundingRect().width(), 8, 1e-9);
    for (const auto &empty : {qn::regularPolygon({0, 0}, 10, 2), qn::regularPolygon({0, 0}, none, 5),
                              qn::regularPolygon({}, 1, 1 << 30), qn::star({0, endless}, 2, 1, 5),
                              qn::star({}, 2, -1, 5), qn::star({}, 2, 1, -5), qn::arrow({1, 1}, {1, 1}),
                              qn::arrow({none, 0}, {1, 1}), qn::arrow({}, {1, 1}, {2, 0, 3})})
        EXPECT_TRUE(empty.isEmpty());
}

TEST(Path, isMeasuredAlongItsCurves) {
    QPainterPath circle;
    circle.addEllipse(QPointF(0, 0), 100, 100); // of four curves, which are nearly one
    EXPECT_NEAR(qn::pathLength(circle), 200 * std::numbers::pi, 0.2);
    EXPECT_NEAR(*qn::angleAt(circle, 0.125), 135, 0.5);
    EXPECT_NEAR(*qn::angleAt(circle, 1), 90, 0.5);
    Random random(4);
    for (int round = 0; round < 60; ++round) {
        const auto path = anyCurve(random);
        const Points points(path);
        const qn::MeasuredPath measured(path);
        const double length = points.lengths.back();
        EXPECT_NEAR(measured.length(), length, 1e-5 * length);
        for (const double fraction : {0.0, 0.13, 0.5, 0.9, 1.0})
            EXPECT_LE(distance(measured.pointAt(fraction).value(), points.pointAt(fraction)),
                      1e-4 * length + 1e-9);
        const auto part = measured.part(0.2, 0.7);
        EXPECT_NEAR(qn::pathLength(part), length / 2, 2e-5 * length);
        EXPECT_LE(distance(part.elementAt(0), *measured.pointAt(0.2)), 1e-6 * length);
        EXPECT_LE(distance(part.currentPosition(), *measured.pointAt(0.7)), 1e-6 * length);
    }
}

TEST(Path, leavesGapsWithoutLength) {
    QPainterPath lines(QPointF(0, 0));
    lines.lineTo(10, 0);
    lines.lineTo(10, 0);
    lines.moveTo(50, 0);
    lines.lineTo(50, 30);
    EXPECT_EQ(qn::pathLength(lines), 40);
    EXPECT_EQ(qn::pointAt(lines, 0.5), QPointF(50, 10));
    EXPECT_EQ(qn::angleAt(lines, 0.5), 90);
    EXPECT_EQ(qn::angleAt(lines, 0), 0);
    EXPECT_EQ(qn::trimmed(lines, -1, 2).boundingRect(), QRectF(0, 0, 50, 30));
    EXPECT_NEAR(qn::pathLength(qn::trimmed(lines, 0.125, 0.5)), 15, 1e-9);
    EXPECT_TRUE(qn::trimmed(lines, 0.5, 0.5).isEmpty() && qn::trimmed(lines, none, 1).isEmpty());
    EXPECT_FALSE(qn::pointAt(lines, none) || qn::pointAt({}, 0.5) || qn::angleAt(QPainterPath({1, 1}), 0));
    lines.translate(endless, 0);
    EXPECT_EQ(qn::pathLength(lines), 0);
}

TEST(Path, hasTheOutlinesOfText) {
    const QtTesting qt;
    QFont font;
    font.setPixelSize(60);
    font.setHintingPreference(QFont::PreferNoHinting);
    const auto text = QStringLiteral("Rg8");
    QImage drawn(200, 100, QImage::Format_RGB32), filled(drawn.size(), drawn.format());
    drawn.fill(Qt::white);
    filled.fill(Qt::white);
    QPainter drawing(&drawn), filling(&filled);
    drawing.setFont(font);
    drawing.drawText(QPointF(10, 70), text);
    filling.setRenderHint(QPainter::Antialiasing);
    filling.fillPath(qn::textPath(text, font, {10, 70}), Qt::black);
    EXPECT_LE(differingShare(drawn, filled, 100), 0.01);
    EXPECT_GE(differingShare(filled, QImage(filled.size(), filled.format()), 100), 0.05);
    const QRectF place(0, 0, 400, 300);
    const auto block = qn::textPath(text + u'\n' + text, font, place, Qt::AlignRight | Qt::AlignBottom);
    EXPECT_TRUE(QRectF(200, 130, 200, 170).contains(block.boundingRect()));
    EXPECT_NEAR(qn::pathLength(block), 2 * qn::pathLength(qn::textPath(text, font)), 0.01);
    EXPECT_TRUE(qn::textPath(QString(), font).isEmpty() && qn::textPath(text, font, {none, 0}).isEmpty());
}

TEST(Path, looksAsItDid) {
    expectPicture(sheetOfPaths(), QStringLiteral("Paths.png"));
}
