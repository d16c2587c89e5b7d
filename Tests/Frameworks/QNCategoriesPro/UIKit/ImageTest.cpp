// Images, by their pixels.
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Blur.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Color.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Corners.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Files.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Resizing.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Turning.h"
#include "Tests/Frameworks/QNCategoriesPro/UIKit/PictureTesting.h"
#include "Tests/Support/Random.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <QPainter>

#include <limits>

namespace {

using qn::BlurEdges;
using qn::ContentMode;

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double endless = std::numeric_limits<double>::infinity();

QImage noise(int width, int height, Random &random) {
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, static_cast<QRgb>(random()));
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// Yellow, red at its right and blue at its lower edge, and a hole.
QImage sample() {
    QImage image = qn::filledImage({60, 40}, QColor(0xFF, 0xD0, 0x40));
    QPainter painter(&image);
    painter.fillRect(48, 0, 12, 40, Qt::red);
    painter.fillRect(0, 32, 60, 8, Qt::blue);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(14, 8, 12, 12, Qt::black);
    return image;
}

/// The rectangle of pixels that are not transparent.
QRect seenIn(const QImage &image) {
    QRect seen;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 127)
                seen |= QRect(x, y, 1, 1);
    return seen;
}

/// What `blurred` comes close to: a Gaussian function, and the edges' pixels beyond them.
double blurredAt(const QImage &image, int x, int y, double deviation, int shift) {
    const int reach = static_cast<int>(4 * deviation);
    double sum = 0, weights = 0;
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const double weight = std::exp(-(dx * dx + dy * dy) / (2 * deviation * deviation));
            const int column = std::clamp(x + dx, 0, image.width() - 1);
            const auto *row = reinterpret_cast<const QRgb *>(
                image.constScanLine(std::clamp(y + dy, 0, image.height() - 1)));
            sum += weight * (row[column] >> shift & 0xFF);
            weights += weight;
        }
    return sum / weights;
}

double sumOf(const QImage &image, int shift) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            sum += reinterpret_cast<const QRgb *>(image.constScanLine(y))[x] >> shift & 0xFF;
    return sum;
}

QByteArray file(const QImage &image, const char *format, QImageIOHandler::Transformations turn = {}) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setTransformation(turn);
    EXPECT_TRUE(writer.write(image)) << format;
    return bytes;
}

/// Each operation once, in a field of 80 by 80.
QImage sheetOfImages() {
    const QGradientStops stops = {{0, Qt::white}, {1, QColor(0x20, 0x60, 0xA0)}};
    const QImage image = sample(), wide = qn::linearGradientImage({70, 50}, stops, 30);
    const QImage images[] = {image,
                             qn::resized(image, {70, 70}),
                             qn::resized(image, {70, 70}, ContentMode::aspectFit),
                             qn::resized(image, {70, 70}, ContentMode::aspectFill),
                             qn::rotated(image, 30),
                             qn::flipped(image, Qt::Horizontal),
                             qn::tinted(image, QColor(0x20, 0x80, 0x40)),
                             qn::tinted(image, QColor(0x80, 0xFF, 0x80), qn::Tint::shades),
                             qn::blurred(image, 6),
                             qn::blurred(image, 6, BlurEdges::fading),
                             wide,
                             qn::radialGradientImage({70, 50}, stops),
                             qn::rounded(wide, {20, 4, 20, 4}, {3, Qt::darkBlue}),
                             qn::circular(image, {2, Qt::black}),
                             qn::bordered(image, {4, QColor(0, 0, 0, 0x80)})};
    QImage sheet(5 * 80, 3 * 80, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(QColor(0xE0, 0xE0, 0xE0));
    QPainter painter(&sheet);
    for (int at = 0; at < 15; ++at)
        painter.drawImage(QPoint(at % 5, at / 5) * 80 +
                              QPoint(80 - images[at].width(), 80 - images[at].height()) / 2,
                          images[at]);
    return sheet;
}

} // namespace

TEST(Image, liesWhereItsContentModeSays) {
    const QImage image = qn::filledImage({40, 20}, Qt::red, 2); // 80 by 40 pixels
    const std::map<ContentMode, QRect> places = {
        {ContentMode::scaleToFill, {0, 0, 100, 120}}, {ContentMode::aspectFit, {0, 35, 100, 50}},
        {ContentMode::aspectFill, {0, 0, 100, 120}},  {ContentMode::center, {10, 40, 80, 40}},
        {ContentMode::top, {10, 0, 80, 40}},          {ContentMode::bottom, {10, 80, 80, 40}},
        {ContentMode::left, {0, 40, 80, 40}},         {ContentMode::right, {20, 40, 80, 40}},
        {ContentMode::topLeft, {0, 0, 80, 40}},       {ContentMode::topRight, {20, 0, 80, 40}},
        {ContentMode::bottomLeft, {0, 80, 80, 40}},   {ContentMode::bottomRight, {20, 80, 80, 40}}};
    for (const auto &[mode, place] : places) {
        const QImage made = qn::resized(image, {50, 60}, mode);
        EXPECT_EQ(made.size(), QSize(100, 120));
        EXPECT_EQ(made.devicePixelRatio(), 2);
        EXPECT_EQ(seenIn(made), place) << static_cast<int>(mode);
        EXPECT_EQ(made.pixelColor(place.center()), QColor(Qt::red));
    }
}

TEST(Image, showsItsMiddleWhenItCoversBounds) {
    const QImage made = qn::resized(sample(), {20, 40}, ContentMode::aspectFill);
    EXPECT_EQ(made, qn::cropped(sample(), {20, 0, 20, 40})) << "nothing is scaled, so no pixel is changed";
    Random random(5);
    for (int round = 0; round < 200; ++round) {
        const auto side = [&](std::size_t most) { return static_cast<double>(1 + random.below(most)); };
        const QSizeF size(side(50), side(50)), content(side(30), side(3000));
        const QImage covered = qn::resized(qn::filledImage(content, Qt::red), size, ContentMode::aspectFill);
        EXPECT_EQ(seenIn(covered), QRect(QPoint(), size.toSize())) << "no gap at an edge";
    }
    EXPECT_EQ(qn::cropped(sample(), {50, -9, 1e9, 1e9}).size(), QSize(10, 40));
    EXPECT_TRUE(qn::cropped(sample(), {60, 0, 9, 9}).isNull() ||
                qn::cropped(sample(), {0, none, 9, 9}).isNull());
}

TEST(Image, turnsWithoutLoss) {
    Random random(6);
    const QImage image = noise(7, 5, random);
    EXPECT_EQ(qn::rotated(image, 90).pixel(4, 0), image.pixel(0, 0)) << "clockwise";
    EXPECT_EQ(qn::rotated(qn::rotated(image, 90), -450), image);
    EXPECT_EQ(qn::rotated(image, 180), qn::flipped(qn::flipped(image, Qt::Horizontal), Qt::Vertical));
    EXPECT_EQ(qn::flipped(image, Qt::Horizontal).pixel(6, 2), image.pixel(0, 2));
    EXPECT_EQ(qn::rotated(qn::filledImage({30, 40}, Qt::red), 45).size(), QSize(50, 50));
    const QImage back = qn::rotated(qn::rotated(sample(), 25), -25);
    const QPoint center = back.rect().center();
    EXPECT_EQ(back.pixelColor(center + QPoint(-26, 0)), QColor(0xFF, 0xD0, 0x40));
    EXPECT_EQ(back.pixelColor(center + QPoint(26, 0)), QColor(Qt::red));
}

TEST(Image, isBlurredAsIfByGauss) {
    Random random(7);
    QImage image = qn::resized(noise(8, 8, random), {50, 40});
    for (const double radius : {2.0, 5.0, 13.0}) {
        const QImage made = qn::blurred(image, radius);
        for (int probe = 0; probe < 40; ++probe) {
            const int x = static_cast<int>(random.below(50)), y = static_cast<int>(random.below(40));
            for (const int shift : {0, 8, 16, 24})
                EXPECT_NEAR(reinterpret_cast<const QRgb *>(made.constScanLine(y))[x] >> shift & 0xFF,
                            blurredAt(image, x, y, radius / 2, shift), 6)
                    << radius << ": " << x << ", " << y;
        }
    }
}

TEST(Image, losesNothingByBlurring) {
    Random random(8);
    const QImage image = noise(33, 21, random);
    for (const double radius : {0.0, -1.0, none, 0.7, 3.0, 40.0}) {
        const QImage faded = qn::blurred(image, radius, BlurEdges::fading);
        for (const int shift : {0, 8, 16, 24})
            EXPECT_NEAR(sumOf(faded, shift) / sumOf(image, shift), 1, 0.02) << radius;
        if (!(radius > 0))
            EXPECT_EQ(faded, image);
    }
    for (const double radius : {0.6, 1.0, 7.3, 60.0, 240.0, 500.0, 1e9, endless}) {
        const QImage plain = qn::filledImage({17, 9}, QColor(10, 200, 255, 77));
        EXPECT_EQ(qn::blurred(plain, radius), plain)
            << "what has one colour keeps it, with a radius of " << radius;
        const QImage opaque = qn::blurred(image.convertToFormat(QImage::Format_RGB32), radius);
        EXPECT_EQ(sumOf(opaque, 24), 255.0 * 33 * 21);
        EXPECT_LE(sumOf(qn::blurred(image, radius), 0), sumOf(qn::blurred(image, radius), 24))
            << "premultiplied";
    }
}

TEST(Image, takesColors) {
    Random random(9);
    const QImage image = noise(9, 9, random);
    const QImage green = qn::tinted(image, Qt::green);
    EXPECT_EQ(sumOf(green, 24), sumOf(image, 24));
    EXPECT_EQ(sumOf(green, 8), sumOf(image, 24));
    EXPECT_EQ(sumOf(green, 0), 0);
    EXPECT_EQ(qn::tinted(image, Qt::white, qn::Tint::shades), image);
    EXPECT_EQ(seenIn(qn::tinted(sample(), Qt::red, qn::Tint::shades)), seenIn(sample()));
    EXPECT_EQ(qn::averageColor(qn::filledImage({9, 9}, QColor(1, 200, 3)))->rgba(), qRgb(1, 200, 3));
    QImage halves = qn::filledImage({2, 1}, QColor(0, 100, 255));
    halves.setPixelColor(1, 0, Qt::transparent);
    EXPECT_EQ(qn::averageColor(halves)->rgba(), qRgba(0, 100, 255, 128));
    EXPECT_FALSE(qn::averageColor(QImage()));
    const QImage slope = qn::linearGradientImage({64, 64}, {{0, Qt::black}, {1, Qt::white}}, 45);
    EXPECT_LE(slope.pixelColor(0, 0).red(), 4);
    EXPECT_NEAR(slope.pixelColor(63, 0).red(), 127, 4);
    EXPECT_GE(slope.pixelColor(63, 63).red(), 251);
}

TEST(Image, hasRoundCorners) {
    const QImage made = qn::rounded(qn::filledImage({40, 20}, Qt::red, 2), {10, 0, 0, 0}, {2, Qt::blue});
    EXPECT_EQ(made.devicePixelRatio(), 2);
    EXPECT_EQ(made.size(), QSize(80, 40));
    EXPECT_EQ(made.pixel(2, 2), 0U);
    EXPECT_EQ(made.pixelColor(79, 0), QColor(Qt::blue));
    EXPECT_EQ(made.pixelColor(75, 20), QColor(Qt::red));
    EXPECT_EQ(made.pixelColor(76, 20), QColor(Qt::blue));
    EXPECT_EQ(qn::circular(sample()).size(), QSize(40, 40));
    const QImage covered = qn::bordered(sample(), {1e9, Qt::blue});
    EXPECT_EQ(qn::averageColor(covered), QColor(Qt::blue));
}

TEST(Image, isReadFromFilesAtASize) {
    const QImage image = qn::resized(sample(), {600, 400});
    for (const char *format : {"png", "jpg", "bmp"}) {
        const QImage made = qn::thumbnailOfData(file(image, format), {50, 50}, 2);
        EXPECT_EQ(made.size(), QSize(100, 67)) << format;
        EXPECT_EQ(made.devicePixelRatio(), 2);
        EXPECT_EQ(qn::thumbnailOfData(file(image, format), {900, 900}).size(), image.size());
    }
    const auto turned = file(image, "jpg", QImageIOHandler::TransformationRotate90);
    EXPECT_EQ(qn::thumbnailOfData(turned, {30, 300}).size(), QSize(30, 45));
    EXPECT_TRUE(qn::thumbnailOfData(turned.left(100), {30, 30}).isNull());
    EXPECT_TRUE(qn::thumbnailOfData("", {30, 30}).isNull() ||
                qn::thumbnailOfData(turned, {none, 3}).isNull());
    EXPECT_TRUE(qn::thumbnailOfFile(QStringLiteral("/nowhere.png"), {30, 30}).isNull());
}

TEST(Image, isNullFromWhatCannotBeOne) {
    for (const double side : {0.0, -5.0, none, endless, 1e18, 32768.0, 20000.0}) {
        const QSizeF size(side, side);
        EXPECT_TRUE(qn::resized(sample(), size).isNull() &&
                    qn::resized(sample(), size, ContentMode::aspectFit).isNull());
        EXPECT_TRUE(qn::filledImage(size, Qt::red).isNull()) << side;
        EXPECT_TRUE(qn::radialGradientImage(size, {{0, Qt::red}}).isNull());
    }
    EXPECT_TRUE(qn::filledImage({3, 3}, QColor()).isNull() && qn::filledImage({3, 3}, Qt::red, -1).isNull());
    EXPECT_TRUE(qn::linearGradientImage({3, 3}, {}).isNull() && qn::rotated(sample(), none).isNull());
    EXPECT_TRUE(qn::blurred(sample(), 1e6, BlurEdges::fading).isNull());
    QImage odd = sample();
    odd.setColorSpace(QColorSpace::AdobeRgb);
    EXPECT_EQ(qn::blurred(odd, 1).colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
    EXPECT_TRUE(qn::blurred(odd, endless, BlurEdges::fading).isNull());
    odd.setDevicePixelRatio(none);
    for (const QImage &image : {QImage(), odd}) {
        EXPECT_TRUE(qn::resized(image, {9, 9}).isNull() && qn::cropped(image, {0, 0, 9, 9}).isNull());
        EXPECT_TRUE(qn::rotated(image, 45).isNull() && qn::flipped(image, Qt::Vertical).isNull());
        EXPECT_TRUE(qn::tinted(image, Qt::red).isNull() && qn::blurred(image, 5).isNull());
        EXPECT_TRUE(qn::rounded(image, 5).isNull() && qn::circular(image).isNull());
    }
}

TEST(Image, looksAsItDid) {
    expectPicture(sheetOfImages(), QStringLiteral("Images.png"));
}
