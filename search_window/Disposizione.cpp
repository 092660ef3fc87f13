#include "search_window/Disposizione.h"

#include <algorithm>
#include <cmath>

namespace norvel::search_window {

std::optional<Misura> misuraGriglia(Misura area, std::optional<double> barraVisibile,
                                    std::optional<double> statusVisibile) {
    const double altezza =
        area.altezza - barraVisibile.value_or(0) - statusVisibile.value_or(0) - margineInferiore;
    if (altezza < 0) return std::nullopt;
    return Misura{area.larghezza, altezza};
}

Riga ripartisciRiga(int larghezza, int freccia, int pannello, int chiudi) {
    Riga riga;
    riga.chiudi = std::clamp(chiudi, 0, std::max(0, larghezza));
    const int resto = std::max(0, larghezza - riga.chiudi);
    riga.pannello = std::clamp(pannello, 0, std::max(0, resto - freccia));
    riga.barra = resto - riga.pannello;
    return riga;
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
