// The curve between the components of a colour, as they are stored, and amounts of light (IEC 61966-2-1).
#pragma once

#include <cmath>

namespace qn {

/// The amount of light, 0 to 1, of a component from 0 to 1.
inline double linearFromSRGB(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

/// The reverse.
inline double srgbFromLinear(double light) {
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

} // namespace qn
