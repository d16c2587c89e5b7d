#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Shapes.h"

#include <QLineF>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>

namespace {

constexpr int mostCorners = 10000;
constexpr double longestRadius =
    1e12; // in place of an infinite one, which cannot be made smaller by a factor

bool areNumbers(std::initializer_list<double> numbers) {
    return std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
}

double radiusOf(double given) {
    return given > 0 ? std::min(given, longestRadius) : 0; // 0 for NaN, too
}

/// A line to the corner, and around it by a quarter of a circle, which begins at that angle.
void addCorner(QPainterPath &path, const QPointF &center, double radius, double startAngle) {
    const QRectF circle(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    if (radius > 0)
        path.arcTo(circle, startAngle, -90);
    else
        path.lineTo(center);
}

/// The corners of a polygon, on the radii in turn.
QPainterPath polygon(const QPointF &center, int corners, double angle, std::initializer_list<double> radii) {
    QPolygonF made;
    for (int corner = 0; corner < corners; ++corner) {
        const double turn = (angle / 360 + static_cast<double>(corner) / corners) * 2 * std::numbers::pi;
        const double radius = data(radii)[static_cast<std::size_t>(corner) % radii.size()];
        made << center + radius * QPointF(std::sin(turn), -std::cos(turn));
    }
    QPainterPath path;
    path.addPolygon(made);
    path.closeSubpath();
    return path;
}

} // namespace

qn::CornerRadii qn::fitted(const CornerRadii &radii, const QSizeF &size) {
    const double topLeft = radiusOf(radii.topLeft), topRight = radiusOf(radii.topRight);
    const double bottomRight = radiusOf(radii.bottomRight), bottomLeft = radiusOf(radii.bottomLeft);
    const auto share = [](double side, double wished) { return wished > side ? side / wished : 1; };
    const double factor =
        std::min({share(size.width(), topLeft + topRight), share(size.width(), bottomLeft + bottomRight),
                  share(size.height(), topLeft + bottomLeft), share(size.height(), topRight + bottomRight)});
    return {topLeft * factor, topRight * factor, bottomRight * factor, bottomLeft * factor};
}

QPainterPath qn::roundedRectangle(const QRectF &rectangle, const CornerRadii &radii) {
    const QRectF place = rectangle.normalized();
    if (!areNumbers({place.left(), place.top(), place.right(), place.bottom()}) || place.isEmpty())
        return {};
    const CornerRadii fit = fitted(radii, place.size());
    const auto inset = [](double radius, double x, double y) { return radius * QPointF(x, y); };
    QPainterPath path(place.topLeft() + inset(fit.topLeft, 0, 1));
    addCorner(path, place.topLeft() + inset(fit.topLeft, 1, 1), fit.topLeft, 180);
    addCorner(path, place.topRight() + inset(fit.topRight, -1, 1), fit.topRight, 90);
    addCorner(path, place.bottomRight() + inset(fit.bottomRight, -1, -1), fit.bottomRight, 0);
    addCorner(path, place.bottomLeft() + inset(fit.bottomLeft, 1, -1), fit.bottomLeft, 270);
    path.closeSubpath();
    return path;
}

QPainterPath qn::regularPolygon(const QPointF &center, double radius, int sides, double angle) {
    if (!areNumbers({center.x(), center.y(), radius, angle}) || !(radius > 0) || sides < 3 ||
        sides > mostCorners)
        return {};
    return polygon(center, sides, angle, {radius});
}

QPainterPath qn::star(const QPointF &center, double outerRadius, double innerRadius, int points,
                      double angle) {
    if (!areNumbers({center.x(), center.y(), outerRadius, innerRadius, angle}) || !(outerRadius > 0) ||
        !(innerRadius > 0) || points < 2 || points > mostCorners)
        return {};
    return polygon(center, 2 * points, angle, {outerRadius, innerRadius});
}

QPainterPath qn::arrow(const QPointF &tail, const QPointF &tip, const ArrowShape &shape) {
    const QLineF line(tail, tip);
    const double length = line.length();
    if (!areNumbers({length, shape.shaftWidth, shape.headWidth, shape.headLength}) || !(length > 0) ||
        !(shape.shaftWidth > 0) || !(shape.headWidth > 0) || !(shape.headLength > 0))
        return {};
    const double neck = length - std::min(shape.headLength, length);
    const double shaft = shape.shaftWidth / 2, head = shape.headWidth / 2;
    QPainterPath path; // along the x axis, and then turned there
    path.addPolygon(QPolygonF{
        {0, -shaft}, {neck, -shaft}, {neck, -head}, {length, 0}, {neck, head}, {neck, shaft}, {0, shaft}});
    path.closeSubpath();
    return QTransform::fromTranslate(tail.x(), tail.y()).rotate(-line.angle()).map(path);
}
