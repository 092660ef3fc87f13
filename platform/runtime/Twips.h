// Twips, the unit of geometry of the session and of layouts: 1440 to the inch.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace norvel {

inline constexpr double twipsPerInch = 1440.0;
inline constexpr double baseDpi = 96.0;

// Logical pixels at scale (1.0 is 96 dpi), rounded to the nearest. Geometry comes from hosts: what
// no int holds becomes the nearest that one does, what is no number becomes 0.
inline int twipsToPixels(double twips, double scale) {
    const double pixels = std::round(twips * baseDpi * scale / twipsPerInch);
    if (std::isnan(pixels)) return 0;
    return static_cast<int>(std::clamp<double>(pixels, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}
inline double pixelsToTwips(int pixels, double scale) {
    return pixels * twipsPerInch / (baseDpi * scale);
}

} // namespace norvel
