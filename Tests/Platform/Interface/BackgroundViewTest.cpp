// The picture behind a window.
#include "Platform/Interface/BackgroundView.h"

#include "Tests/Support/NoThreadLeft.h"
#include "Tests/Support/QtTesting.h"

namespace {

QImage painted(Qt::LayoutDirection direction) {
    BackgroundView view;
    view.setLayoutDirection(direction);
    view.setFixedSize(900, 600);
    return view.grab().toImage();
}

} // namespace

TEST(BackgroundView, isPaintedWithoutAThread) {
    const QtTesting qt;
    const dispatch::NoThreadLeft none; // Qt would wait for one without end
    const QImage picture = painted(Qt::LeftToRight);
    EXPECT_EQ(picture.pixel(5, 0), picture.pixel(895, 0)) << "nothing at the top";
    EXPECT_NE(picture.pixel(5, 599), picture.pixel(5, 0)) << "the accent's colour at the bottom";
    EXPECT_NE(picture.pixel(895, 450), picture.pixel(5, 450)) << "a wave that is higher on the right";
    EXPECT_EQ(picture.mirrored(true, false), painted(Qt::RightToLeft));
}
