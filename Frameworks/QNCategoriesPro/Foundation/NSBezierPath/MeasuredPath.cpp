#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/MeasuredPath.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

namespace {

using Curve = std::array<QPointF, 4>;

constexpr double straight = 1e-5; // the share by which a curve may be longer than its chord
constexpr int mostLevels = 12;    // of halving; a cusp is never straight

double distance(const QPointF &one, const QPointF &other) {
    return std::hypot(other.x() - one.x(), other.y() - one.y());
}

QPointF between(const QPointF &one, const QPointF &other, double share) {
    return one + (other - one) * share;
}

struct Halves {
    Curve first, second;
};

/// The curve before and after that time, by de Casteljau.
Halves split(const Curve &curve, double time) {
    const QPointF a = between(curve[0], curve[1], time), b = between(curve[1], curve[2], time);
    const QPointF c = between(curve[2], curve[3], time);
    const QPointF ab = between(a, b, time), bc = between(b, c, time);
    const QPointF middle = between(ab, bc, time);
    return {{curve[0], a, ab, middle}, {middle, bc, c, curve[3]}};
}

Curve partOf(const Curve &curve, double from, double to) {
    const Curve rest = split(curve, from).second;
    return from < 1 ? split(rest, (to - from) / (1 - from)).first : rest;
}

/// The length of a curve that is almost straight: halfway between those of its chord and of its polygon.
double lengthOf(const Curve &curve) {
    double polygon = 0;
    for (std::size_t at = 1; at < curve.size(); ++at)
        polygon += distance(curve[at - 1], curve[at]);
    return (distance(curve[0], curve[3]) + polygon) / 2;
}

bool isStraight(const Curve &curve) {
    const double chord = distance(curve[0], curve[3]);
    return lengthOf(curve) - chord <= straight * lengthOf(curve);
}

/// When a curve that is almost straight has got so far, after the first time and at the last one at the
/// latest. It may become slower or faster on its way.
double timeAt(const Curve &curve, double first, double last, double length) {
    double from = first, to = last;
    for (int round = 0; round < 40; ++round) {
        const double middle = (from + to) / 2;
        (lengthOf(partOf(curve, first, middle)) < length ? from : to) = middle;
    }
    return to;
}

/// The direction at the beginning of a curve, the first points of which may be the same.
QPointF startOf(const Curve &curve) {
    for (const QPointF &point : curve)
        if (point != curve[0])
            return point - curve[0];
    return {};
}

QPointF directionAt(const Curve &curve, double time) {
    if (time < 1)
        return startOf(split(curve, time).second);
    const Curve back = {curve[3], curve[2], curve[1], curve[0]};
    return -startOf(back);
}

bool isFinite(const QPainterPath &path) {
    for (int at = 0; at < path.elementCount(); ++at)
        if (const QPointF point = path.elementAt(at); !std::isfinite(point.x()) || !std::isfinite(point.y()))
            return false;
    return true;
}

} // namespace

namespace qn {

MeasuredPath::MeasuredPath(const QPainterPath &path) {
    if (!isFinite(path))
        return;
    bool begins = true;
    QPointF here;
    for (int at = 0; at < path.elementCount(); ++at) {
        const QPainterPath::Element element = path.elementAt(at);
        if (element.isMoveTo()) {
            begins = true;
        } else if (element.isLineTo()) {
            addSegment({here, between(here, element, 1 / 3.0), between(here, element, 2 / 3.0), element},
                       true, begins);
            begins = false;
        } else if (element.isCurveTo()) {
            const QPointF second = path.elementAt(at + 1), end = path.elementAt(at + 2);
            addSegment({here, element, second, end}, false, begins);
            begins = false;
            at += 2;
        }
        here = path.elementAt(at);
    }
    if (!std::isfinite(length()))
        pieces_.clear();
}

void MeasuredPath::addSegment(const Curve &curve, bool isLine, bool beginsSubpath) {
    segments_.push_back({curve, isLine, beginsSubpath});
    if (isLine)
        addPiece(0, 1, distance(curve[0], curve[3]));
    else
        addPieces(curve, 0, 1, mostLevels);
}

void MeasuredPath::addPieces(const Curve &curve, double fromTime, double toTime, int levels) {
    if (levels == 0 || isStraight(curve))
        return addPiece(fromTime, toTime, lengthOf(curve));
    const Halves halves = split(curve, 0.5);
    const double middle = (fromTime + toTime) / 2;
    addPieces(halves.first, fromTime, middle, levels - 1);
    addPieces(halves.second, middle, toTime, levels - 1);
}

void MeasuredPath::addPiece(double fromTime, double toTime, double length) {
    if (length != 0)
        pieces_.push_back({segments_.size() - 1, fromTime, toTime, this->length() + length});
}

std::optional<MeasuredPath::Place> MeasuredPath::placeAt(double fraction) const {
    if (pieces_.empty() || std::isnan(fraction))
        return std::nullopt;
    const double target = std::clamp(fraction, 0.0, 1.0) * length();
    auto piece = std::lower_bound(pieces_.begin(), pieces_.end(), target,
                                  [](const Piece &one, double length) { return one.end < length; });
    if (piece == pieces_.end())
        --piece;
    const double begin = piece == pieces_.begin() ? 0 : std::prev(piece)->end;
    const Segment &segment = segments_[piece->segment];
    const double time = segment.isLine
                            ? std::clamp((target - begin) / (piece->end - begin), 0.0, 1.0)
                            : timeAt(segment.curve, piece->fromTime, piece->toTime, target - begin);
    return Place{piece->segment, time};
}

std::optional<QPointF> MeasuredPath::pointAt(double fraction) const {
    const auto place = placeAt(fraction);
    if (!place)
        return std::nullopt;
    return split(segments_[place->segment].curve, place->time).second[0];
}

std::optional<double> MeasuredPath::angleAt(double fraction) const {
    const auto place = placeAt(fraction);
    if (!place)
        return std::nullopt;
    const QLineF direction({}, directionAt(segments_[place->segment].curve, place->time));
    const double angle = direction.angle(); // counter-clockwise
    return angle > 0 ? 360 - angle : 0;
}

QPainterPath MeasuredPath::part(double from, double to) const {
    const auto first = placeAt(from), last = placeAt(to);
    QPainterPath made;
    if (!first || !last || !(std::clamp(from, 0.0, 1.0) < std::clamp(to, 0.0, 1.0)))
        return made;
    for (std::size_t at = first->segment; at <= last->segment; ++at) {
        const Segment &segment = segments_[at];
        const double begin = at == first->segment ? first->time : 0;
        const double end = at == last->segment ? last->time : 1;
        if (begin == end)
            continue;
        const Curve curve = partOf(segment.curve, begin, end);
        if (made.isEmpty() || segment.beginsSubpath)
            made.moveTo(curve[0]);
        if (segment.isLine)
            made.lineTo(curve[3]);
        else
            made.cubicTo(curve[1], curve[2], curve[3]);
    }
    return made;
}

} // namespace qn
