#include "search_window/FinestraRicerca.h"

#include "platform/runtime/Errore.h"

#include <utility>

namespace norvel::search_window {

namespace {

FonteFinestra& fonte() {
    static FonteFinestra source;
    return source;
}

} // namespace

FinestraRicerca::~FinestraRicerca() = default;

FonteFinestra impostaFinestraRicerca(FonteFinestra nuova) {
    return std::exchange(fonte(), std::move(nuova));
}

FinestraRicerca& frmRicerca() {
    if (!fonte().istanza) throw erroreOggettoNonImpostato();
    return *fonte().istanza();
}

bool frmRicercaCaricata() {
    return fonte().caricata && fonte().caricata();
}

void invertiCombo(FinestraRicerca& finestra) {
    for (int colonna = 0; colonna < finestra.NumeroColonne(); ++colonna)
        finestra.SetFilterCombo(colonna, !finestra.FilterCombo(colonna));
}

} // namespace norvel::search_window
