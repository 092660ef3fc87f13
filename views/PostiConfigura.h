// Where the parts of the configuration window stand, in twips: the arithmetic, without the window.
#pragma once

#include "platform/runtime/Api.h"

namespace norvel::views {

struct Riquadro {
    double left = 0, top = 0, width = 0, height = 0; // twips
    bool operator==(const Riquadro&) const = default;
};

struct PostiConfigura {
    Riquadro menu, griglia, pagina; // of the window's inner area
    bool operator==(const PostiConfigura&) const = default;
};

inline constexpr double sinistraPagine = 75; // from the menu's right edge; the grid's, too
inline constexpr double altoPagine = 2500;   // the pages' top; the grid ends a little above it

// The menu at the left edge, as high as the window; the grid beside it; the pages below the grid,
// over what is left of the window. Where hardly anything is left, grid and pages go on beyond the
// window's edge: scroll bars without the room that they need are an error to the toolkit.
NR_API PostiConfigura postiConfigura(double larghezza, double altezza, double larghezzaMenu);

// Centred on a screen, each half a whole number of twips.
NR_API Riquadro centrata(double schermoLarghezza, double schermoAltezza, double larghezza,
                         double altezza);

} // namespace norvel::views
