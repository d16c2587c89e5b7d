#include "Frameworks/QNCategoriesPro/UIKit/QImage/GaussianBlur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

/// Below it, boxes are too coarse: their widths are whole numbers.
constexpr double leastOfBoxes = 2;

/// The four components of a pixel, or sums of them, each in half a word. Sums and differences of such words
/// may run from one half into the other on their way: the calculation is modulo 2^64, and its result fits.
struct Components {
    quint64 even, odd;

    Components() : even(0), odd(0) {}
    explicit Components(QRgb pixel)
        : even((pixel & 0xFFU) | quint64{pixel & 0xFF0000U} << 16),
          odd((pixel >> 8 & 0xFFU) | quint64{pixel >> 24} << 32) {}

    Components &operator+=(const Components &other) {
        even += other.even;
        odd += other.odd;
        return *this;
    }
    Components &operator-=(const Components &other) {
        even -= other.even;
        odd -= other.odd;
        return *this;
    }
    Components operator*(quint64 factor) const {
        Components made = *this;
        made.even *= factor;
        made.odd *= factor;
        return made;
    }
    /// A pixel of what a function makes of each component.
    template <class Function>
    QRgb pixel(const Function &function) const {
        return function(even & 0xFFFFFFFFU) | function(odd & 0xFFFFFFFFU) << 8 | function(even >> 32) << 16 |
               function(odd >> 32) << 24;
    }
};

/// A row with its ends repeated, as far as the blur reaches.
template <class Take>
void forEachPixel(const QRgb *row, int count, int reach, const Take &take) {
    const Components first(row[0]), last(row[count - 1]);
    for (int x = 0; x < reach; ++x)
        take(first);
    for (int x = 0; x < count; ++x)
        take(Components(row[x]));
    for (int x = 0; x < reach; ++x)
        take(last);
}

/// The function itself, as weights of the neighbours.
class Weights {
public:
    explicit Weights(double deviation) : reach_(static_cast<int>(std::ceil(3 * deviation))) {
        std::vector<double> values;
        double sum = 0;
        for (int x = -reach_; x <= reach_; ++x)
            sum += values.emplace_back(std::exp(-0.5 * (x / deviation) * (x / deviation)));
        quint64 total = 0;
        for (const double value : values)
            total += weights_.emplace_back(static_cast<quint64>(std::floor(value / sum * one)));
        weights_[static_cast<std::size_t>(reach_)] += one - total;
    }

    void blur(const QRgb *row, int count, QRgb *blurred) {
        pixels_.clear();
        forEachPixel(row, count, reach_, [this](const Components &pixel) { pixels_.push_back(pixel); });
        for (int x = 0; x < count; ++x) {
            const Components *next = pixels_.data() + x;
            Components sum;
            for (const quint64 weight : weights_)
                sum += *next++ * weight;
            blurred[x] = sum.pixel([](quint64 part) { return static_cast<QRgb>((part + one / 2) >> 16); });
        }
    }

private:
    static constexpr quint64 one = 1 << 16;
    int reach_;
    std::vector<quint64> weights_;
    std::vector<Components> pixels_;
};

/// Three box blurs one after another, which come close to it and take the same time for every width.
class Boxes {
public:
    explicit Boxes(double deviation) : widths_(widthsFor(deviation)) {}

    /// With the sums of the sums of the sums of all pixels up to each one, the result at a place is a
    /// difference between such sums at the ends of the boxes.
    void blur(const QRgb *row, int count, QRgb *blurred) {
        sumUp(row, count);
        const auto [a, b, c] = widths_;
        const Components *end = sums_.data() + a + b + c;
        for (int x = 0; x < count; ++x, ++end) {
            Components sum = end[0];
            sum -= end[-a];
            sum -= end[-b];
            sum -= end[-c];
            sum += end[-a - b];
            sum += end[-b - c];
            sum += end[-a - c];
            sum -= end[-a - b - c];
            // Divided by the area: 2^56 leaves room for 8 bits, and is enough for an exact division.
            blurred[x] = sum.pixel(
                [this](quint64 part) { return static_cast<QRgb>((part + area_ / 2) * factor_ >> 56); });
        }
    }

private:
    /// The odd numbers next to the ideal width, so many of each that the deviation comes closest.
    static std::array<int, 3> widthsFor(double deviation) {
        const double variance = deviation * deviation;
        const int below = (static_cast<int>(std::sqrt(4 * variance + 1)) - 1) / 2 * 2 + 1;
        const double narrow =
            std::round((3.0 * below * below + 12 * below + 9 - 12 * variance) / (4 * below + 4));
        return {narrow >= 1 ? below : below + 2, narrow >= 2 ? below : below + 2,
                narrow >= 3 ? below : below + 2};
    }

    void sumUp(const QRgb *row, int count) {
        const int reach = (widths_[0] + widths_[1] + widths_[2] - 3) / 2;
        sums_.assign(3, Components());
        Components first, second, third;
        forEachPixel(row, count, reach, [&](const Components &pixel) {
            first += pixel;
            second += first;
            third += second;
            sums_.push_back(third);
        });
    }

    std::array<int, 3> widths_;
    quint64 area_ = quint64(widths_[0]) * quint64(widths_[1]) * quint64(widths_[2]);
    quint64 factor_ = (quint64{1} << 56) / area_ + 1;
    std::vector<Components> sums_;
};

/// The rows blurred, as columns. Some rows are done before any is written, so that what is written lies
/// together.
template <class Blur>
QImage blurredAndTransposed(const QImage &pixels, Blur &blur) {
    constexpr int together = 16;
    const int width = pixels.width(), height = pixels.height();
    QImage made(height, width, pixels.format());
    if (made.isNull())
        return made;
    std::vector<QRgb> rows(static_cast<std::size_t>(width) * together);
    auto *const target = reinterpret_cast<QRgb *>(made.bits());
    const auto stride = made.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
    for (int top = 0; top < height; top += together) {
        const int count = std::min(together, height - top);
        for (int y = 0; y < count; ++y)
            blur.blur(reinterpret_cast<const QRgb *>(pixels.constScanLine(top + y)), width,
                      rows.data() + static_cast<qsizetype>(y) * width);
        for (int x = 0; x < width; ++x)
            for (int y = 0; y < count; ++y)
                target[x * stride + top + y] = rows.data()[static_cast<qsizetype>(y) * width + x];
    }
    return made;
}

template <class Blur>
QImage blurredBy(Blur blur, const QImage &pixels) {
    const QImage columns = blurredAndTransposed(pixels, blur);
    return columns.isNull() ? columns : blurredAndTransposed(columns, blur);
}

} // namespace

QImage qn::gaussianBlurred(const QImage &pixels, double standardDeviation) {
    return standardDeviation < leastOfBoxes ? blurredBy(Weights(standardDeviation), pixels)
                                            : blurredBy(Boxes(standardDeviation), pixels);
}
