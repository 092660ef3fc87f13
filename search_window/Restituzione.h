// How the operator's choice leaves the window: the rules, on plain parts that a test can give.
#pragma once

#include "component/VariabiliGlobali.h"
#include "platform/adodb/Recordset.h"

#include <functional>
#include <string>

namespace norvel::search_window {

// What a hand-back needs of the window.
struct Scelta {
    adodb::RecordsetRef recordset;                 // behind DBRicerca
    std::function<adodb::RowCount()> selezionate;  // Griglia.SelBookmarks.Count
    std::function<Variant()> primaSelezionata;     // SelBookmarks(0)
    std::function<void()> togliPrima;              // SelBookmarks.Remove 0
    std::function<void(const Variant&)> vaiA;      // Griglia.Bookmark =
    std::function<void(const std::string&)> stato; // StatusBar.Panels(1).Text =
    std::function<bool()> attendiRighe; // waits for a running fetch; false: operator gave up
    std::function<void()> scarica;      // unloads the window, from code
};

// Single hand-back (double-click; Enter without multiple selection). Shows its own boxes; after an
// error the window stays and gRisposta keeps what it had.
void restituisciRiga(VariabiliGlobali& sessione, const Scelta& scelta);

// Multiple hand-back: every selected row in the order of selection; with none selected, after the
// question, every row of the recordset from the first. Raises Errore; then (and when the operator
// stops the wait for rows still coming) nothing is handed back and the window stays.
void restituisciSelezione(VariabiliGlobali& sessione, const Scelta& scelta);

} // namespace norvel::search_window
