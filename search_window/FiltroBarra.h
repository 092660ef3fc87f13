// What the filter bar's cells amount to: which are refused, and the filter text of the rest.
#pragma once

#include "query/FiltroColonne.h"

#include <string>
#include <vector>

namespace norvel::search_window {

struct FiltroBarra {
    std::vector<std::string> motivi; // one a column: why its cell is no filter; "" where it is one
    bool valido = false;             // testo may be set
    std::string testo;               // "" is no filter
    std::string rifiuto;             // why all cells together make no filter, for the operator
};

// True where one of the cells holds several values: it means them whatever the list's mode is by
// now.
bool contienePiuValori(const std::vector<query::ColonnaFiltro>& colonne);

// multiplo: composes with the composer of several values. A cell that the recordset would refuse is
// told of, and there is no filter text then.
FiltroBarra valutaBarra(const std::vector<query::ColonnaFiltro>& colonne,
                        const query::TipoDiCampo& tipo, query::Confronto confronto, bool multiplo);

} // namespace norvel::search_window
