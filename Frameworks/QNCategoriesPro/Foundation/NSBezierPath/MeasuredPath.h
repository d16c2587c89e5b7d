// A bezier path with the lengths of its pieces, for many questions about places along it.
//
//     const qn::MeasuredPath track(path);
//     for (double at = 0; at <= 1; at += 0.1)
//         painter.drawEllipse(*track.pointAt(at), 2, 2);
//
// Places are fractions of the whole length, from 0 to 1: half of the way is 0.5, also along curves. What lies
// out of this range counts as its nearer end. Gaps between subpaths have no length. Lengths are right to one
// part in 100,000.
//
// A path without length, or with coordinates or a length that are no numbers (NaN or infinite), has no
// places. Any thread; one object by one thread at a time, or by many that only read.
#pragma once

#include <QPainterPath>
#include <QPointF>

#include <array>
#include <optional>
#include <vector>

#pragma GCC visibility push(default)

namespace qn {

class MeasuredPath {
public:
    /// Takes time in proportion to the number of elements; points and angles take its logarithm.
    explicit MeasuredPath(const QPainterPath &path);

    double length() const { return pieces_.empty() ? 0 : pieces_.back().end; }
    std::optional<QPointF> pointAt(double fraction) const;
    /// The direction of the path there, at a corner that of either side: degrees from 0 up to 360, clockwise
    /// from that of the x axis where y grows downwards, as `QPainter::rotate` has them.
    std::optional<double> angleAt(double fraction) const;
    /// What lies between two places, open; empty unless the first is before the other.
    QPainterPath part(double from, double to) const;

private:
    using Curve = std::array<QPointF, 4>; // a cubic one; a line is one with its points at its thirds
    struct Segment {
        Curve curve;
        bool isLine;
        bool beginsSubpath;
    };
    /// A part of a segment that is as good as straight.
    struct Piece {
        std::size_t segment;
        double fromTime, toTime; // parameters of the curve
        double end;              // length of the path up to here
    };
    struct Place {
        std::size_t segment;
        double time;
    };

    void addSegment(const Curve &curve, bool isLine, bool beginsSubpath);
    void addPieces(const Curve &curve, double fromTime, double toTime, int levels);
    void addPiece(double fromTime, double toTime, double length);
    std::optional<Place> placeAt(double fraction) const;

    std::vector<Segment> segments_;
    std::vector<Piece> pieces_;
};

} // namespace qn

#pragma GCC visibility pop
