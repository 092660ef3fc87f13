#include "views/PostiConfigura.h"

#include <algorithm>
#include <cmath>

namespace norvel::views {

namespace {

constexpr double altoGriglia = 75;     // the grid's top
constexpr double margineGriglia = 100; // what the grid leaves of the width beside the menu
constexpr double marginePagina = 75;   // below and beside the pages, and between grid and pages
constexpr double minimoParte = 1000;   // of grid and pages: room for a scroll bar

double meta(double differenza) {
    return std::trunc(std::round(differenza) / 2);
}

} // namespace

PostiConfigura postiConfigura(double larghezza, double altezza, double larghezzaMenu) {
    PostiConfigura posti;
    posti.menu = {0, 0, larghezzaMenu, altezza};
    const double sinistra = larghezzaMenu + sinistraPagine;
    posti.griglia = {sinistra, altoGriglia,
                     std::max(minimoParte, larghezza - larghezzaMenu - margineGriglia),
                     altoPagine - marginePagina - altoGriglia};
    posti.pagina = {sinistra, altoPagine,
                    std::max(minimoParte, larghezza - sinistra - marginePagina),
                    std::max(minimoParte, altezza - altoPagine - marginePagina)};
    return posti;
}

Riquadro centrata(double schermoLarghezza, double schermoAltezza, double larghezza,
                  double altezza) {
    return {meta(schermoLarghezza - larghezza), meta(schermoAltezza - altezza), larghezza, altezza};
}

} // namespace norvel::views
