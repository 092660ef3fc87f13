// The column editor: which columns a view shows, in two lists. An entry is a column's caption; its
// item data is the column's index, by which the column is found: two with one caption stay apart.
#pragma once

#include "platform/grid/model/Model.h"
#include "views/ListaVoci.h"

namespace norvel::views {

// Refills both lists from the grid, in the order of the columns' indexes.
NR_API void CaricaColonne(const grid::Columns& colonne, ListaVoci& visibili, ListaVoci& nascoste);

// Moves the selected entry of one list to the end of the other and gives its column that
// visibility. Selected in the first is then the entry that took its place, else the first one.
// Nothing without a selection.
NR_API void spostaScelta(ListaVoci& da, ListaVoci& a, grid::Columns& colonne, bool visibile);

// Every entry, one by one from the first: the other list keeps the order in which they came.
NR_API void spostaTutte(ListaVoci& da, ListaVoci& a, grid::Columns& colonne, bool visibile);

} // namespace norvel::views
