// A rectangle in screen coordinates.
#pragma once

#include <QRect>

struct NSRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

inline NSRect toNSRect(const QRect &rect) {
    return {double(rect.x()), double(rect.y()), double(rect.width()), double(rect.height())};
}
