// The re-sort of a grouped grid: the rows of a group stand together.
#pragma once

#include "platform/adodb/Recordset.h"

#include <functional>
#include <string>
#include <vector>

namespace norvel::search_window {

// What the routine touches.
struct PartiRiordino {
    std::vector<std::string> campi;  // the group columns, outermost first, by their fields
    std::function<void()> ridisegna; // the grid
    adodb::RecordsetRef recordset;   // of the grid's data source
};

// "[provincia], [citta]"; "" without group columns.
std::string testoRiordino(const std::vector<std::string>& campi);

// Repaints the grid, then sorts the recordset by its group columns; without any, it stands in its
// own order again. False where it failed: a warning has been shown, the recordset keeps the sort it
// had.
bool riordinaGriglia(const PartiRiordino& parti);

} // namespace norvel::search_window
