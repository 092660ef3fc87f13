// The commands of the page of views: save, activate, delete, load the base, save as base.
#pragma once

#include "component/VariabiliGlobali.h"
#include "platform/grid/layout/LayoutKeeper.h"
#include "views/ListaVoci.h"

#include <functional>
#include <string>

namespace norvel::views {

// The window's parts that the commands touch.
struct PartiSalvataggio {
    grid::LayoutKeeper& griglia;       // of the window's own grid
    ListaVoci& lista;                  // Lista: the names of the operator's views of this search
    std::function<std::string()> nome; // txtNome
    std::function<void(const std::string&)> scriviNome;
    std::function<bool()> predefinito; // ChkPredefinito
    std::function<void(bool)> scriviPredefinito;
    std::function<void()> caricaColonne;    // the lists of columns and the style's controls
    std::function<void()> riapplicaStile;   // what ChkColonne and ChkSposta set
    std::function<void()> togliBarraFiltri; // of the grid's first split
    std::function<void()> scarica;          // unloads the window
};

// Fills Lista. Raises what the recordset raises; 91 where there is none.
NR_API void CaricaElencoViste(const VariabiliGlobali& sessione, ListaVoci& lista);

// Each asks first and acts on Yes only. Nothing is raised: the first step that fails ends the
// command with the usual box instead of its own last one, and what was done by then stays (a file
// that was written, an entry taken off the list). A row that the database refused is given up, so
// that it does not go in with some later step.

// The layout's file first, then the row: of the same name (case-blind) if it is in the list. A new
// name whose file is there already is refused. Checked as preferred, the view is the only one.
NR_API void salvaVista(const VariabiliGlobali& sessione, const PartiSalvataggio& parti);
// Shows the selected view in the window, for editing; the table is not touched.
NR_API void attivaVista(const VariabiliGlobali& sessione, const PartiSalvataggio& parti);
// Takes the selected view off the list and its row out of the table; its file stays. Then the grid
// shows the view named in the name box.
NR_API void eliminaVista(const VariabiliGlobali& sessione, const PartiSalvataggio& parti);
// Shows the search's base layout in the window.
NR_API void caricoBase(const VariabiliGlobali& sessione, const PartiSalvataggio& parti);
// Stores the grid's layout, without its filter bar, as the base of the search for everybody. After
// a No it says that it has saved, too; either way it unloads the window.
NR_API void salvaComeBase(const VariabiliGlobali& sessione, const PartiSalvataggio& parti);

} // namespace norvel::views
