// Length of a bezier path, and places along it, for one question about a path; `MeasuredPath` is for several,
// and says what these mean.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/MeasuredPath.h"

#pragma GCC visibility push(default)

namespace qn {

inline double pathLength(const QPainterPath &path) {
    return MeasuredPath(path).length();
}

/// The point at a fraction of the length.
inline std::optional<QPointF> pointAt(const QPainterPath &path, double fraction) {
    return MeasuredPath(path).pointAt(fraction);
}

/// The direction at a fraction of the length: degrees, clockwise from that of the x axis.
inline std::optional<double> angleAt(const QPainterPath &path, double fraction) {
    return MeasuredPath(path).angleAt(fraction);
}

/// The part of the path between two fractions of its length.
inline QPainterPath trimmed(const QPainterPath &path, double from, double to) {
    return MeasuredPath(path).part(from, to);
}

} // namespace qn

#pragma GCC visibility pop
