// What the search window does about views while it opens.
#pragma once

#include "component/VariabiliGlobali.h"
#include "platform/grid/layout/LayoutKeeper.h"

#include <functional>
#include <string>

namespace norvel::views {

// The window's parts that the routine touches.
struct PartiAvvio {
    grid::LayoutKeeper& griglia;
    std::function<void(bool)> abilitaUltimo; // the toolbar button "ultimo"
    std::function<void(const std::string& chiave, const std::string& testo)> aggiungiVoce; // "Apri"
    std::function<void(adodb::RowCount righe)> scriviTotale;
    std::function<void()> togliBarraFiltri; // of the grid's first split
    std::function<void()> avviaTimer;
};

// In this order: the permission, the preferred view or else the base one, the menu of views, the
// total, the filter bar's switch, the timer. The first step that fails ends it, without a message,
// and what was done stays: a host gives all three recordsets, empty ones where it keeps no views.
NR_API void impostaStileGriglia(const VariabiliGlobali& sessione, const PartiAvvio& parti);

} // namespace norvel::views
