// Gaussian blur of pixels, row by row and column by column.
#pragma once

#include <QImage>

namespace qn {

/// The greatest standard deviation, in pixels, for which sums stay within 32 bits.
inline constexpr double widestBlur = 120;

/// Premultiplied 32-bit pixels, blurred with the edges' pixels repeated beyond them. The deviation is
/// positive and at most the widest.
QImage gaussianBlurred(const QImage &pixels, double standardDeviation);

} // namespace qn
