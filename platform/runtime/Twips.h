// Twips, the unit of geometry of the session and of layouts: 1440 to the inch.
#pragma once

#include <cmath>
#include <cstdint>

namespace norvel {

inline constexpr double twipsPerInch = 1440.0;
inline constexpr double baseDpi = 96.0;

// Logical pixels at scale (1.0 is 96 dpi), rounded to the nearest.
inline int twipsToPixels(double twips, double scale) {
    return static_cast<int>(std::lround(twips * baseDpi * scale / twipsPerInch));
}
inline double pixelsToTwips(int pixels, double scale) {
    return pixels * twipsPerInch / (baseDpi * scale);
}

} // namespace norvel
