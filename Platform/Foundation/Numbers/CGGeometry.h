// Points, sizes, rectangles and the like. The unit is up to the user.
#pragma once

#include "Platform/Runtime/Object/TypeEncoding.h"

#pragma GCC visibility push(default)

struct CGPoint {
    double x = 0, y = 0;
    friend bool operator==(const CGPoint &, const CGPoint &) = default;
};

struct CGSize {
    double width = 0, height = 0;
    friend bool operator==(const CGSize &, const CGSize &) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect &, const CGRect &) = default;
};

/// Maps (x, y) to (a x + c y + tx, b x + d y + ty).
struct CGAffineTransform {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;
    friend bool operator==(const CGAffineTransform &, const CGAffineTransform &) = default;
};

struct UIEdgeInsets {
    double top = 0, left = 0, bottom = 0, right = 0;
    friend bool operator==(const UIEdgeInsets &, const UIEdgeInsets &) = default;
};

struct UIOffset {
    double horizontal = 0, vertical = 0;
    friend bool operator==(const UIOffset &, const UIOffset &) = default;
};

template <>
inline constexpr const char *runtime::customEncoding<CGPoint> = "{CGPoint=dd}";
template <>
inline constexpr const char *runtime::customEncoding<CGSize> = "{CGSize=dd}";
template <>
inline constexpr const char *runtime::customEncoding<CGRect> = "{CGRect={CGPoint=dd}{CGSize=dd}}";
template <>
inline constexpr const char *runtime::customEncoding<CGAffineTransform> = "{CGAffineTransform=dddddd}";
template <>
inline constexpr const char *runtime::customEncoding<UIEdgeInsets> = "{UIEdgeInsets=dddd}";
template <>
inline constexpr const char *runtime::customEncoding<UIOffset> = "{UIOffset=dd}";

#pragma GCC visibility pop
