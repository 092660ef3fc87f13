#include "search_window/Disposizione.h"

#include <cmath>

namespace norvel::search_window {

std::optional<Misura> misuraGriglia(Misura area, std::optional<double> barraVisibile,
                                    std::optional<double> statusVisibile) {
    const double altezza =
        area.altezza - barraVisibile.value_or(0) - statusVisibile.value_or(0) - margineInferiore;
    if (altezza < 0) return std::nullopt;
    return Misura{area.larghezza, altezza};
}

namespace {

double meta(double differenza) {
    const long interi = static_cast<long>(std::nearbyint(differenza)) / 2;
    return static_cast<double>(interi);
}

} // namespace

Posizione posizioneCentrata(Misura schermo, Misura finestra) {
    return {meta(schermo.larghezza - finestra.larghezza), meta(schermo.altezza - finestra.altezza)};
}

} // namespace norvel::search_window
