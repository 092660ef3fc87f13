// Where the parts of the search window stand, in twips: the arithmetic, without the window.
#pragma once

#include <optional>

namespace norvel::search_window {

inline constexpr double altezzaBarra = 480;    // twips: toolbar, and the grid's top, always
inline constexpr double margineInferiore = 50; // twips between the grid and what is below it

struct Misura {
    double larghezza = 0, altezza = 0; // twips
    bool operator==(const Misura&) const = default;
};

struct Posizione {
    double left = 0, top = 0; // twips
    bool operator==(const Posizione&) const = default;
};

// Size of the grid in a client area; a height only of what is visible, nullopt otherwise. Each of
// the four cases takes the whole client height, less the visible bars, less the margin; the grid's
// top is altezzaBarra in all of them. nullopt where the height would be negative: the grid keeps
// its size.
std::optional<Misura> misuraGriglia(Misura area, std::optional<double> barraVisibile,
                                    std::optional<double> statusVisibile);

// Who has the window's first line, from the left: toolbar, panel of the advanced search, close
// button; they touch and never overlap.
struct Riga {
    int barra = 0, pannello = 0, chiudi = 0; // widths, pixels
    bool operator==(const Riga&) const = default;
};

// Shares out a width in pixels: the close button has what it wants first, then the toolbar the room
// of its overflow arrow, then the panel, which is cut where it does not fit; the toolbar has what
// is left.
Riga ripartisciRiga(int larghezza, int freccia, int pannello, int chiudi);

// Where a window is centred on the screen: each difference is rounded to whole twips, then halved
// by integer division (so that a window larger than the screen goes to a negative place).
Posizione posizioneCentrata(Misura schermo, Misura finestra);

} // namespace norvel::search_window
