// The condition that one value of one filter cell makes.
#pragma once

#include "query/FiltroColonne.h"

#include <string>
#include <string_view>
#include <vector>

namespace norvel::query {

// What a value is: one of the fixed tokens, whatever the mode, or text to compare by the mode.
enum class Genere { Nulli = -1, NonVuoti = 0, Vuoti = 1, Contiene = 2, Uguale = 3, Diverso = 4 };
Genere genereDi(std::string_view valore, Confronto confronto);

// The conditions that hold together for the value, in the recordset's filter syntax; one for most
// values, two for [Non vuoti] on a text column, none for text that is no date in a date column.
std::vector<std::string> condizioniDi(const std::string& campo, std::string_view valore,
                                      adodb::DataTypeEnum tipo, Genere genere);

// The values of a cell that may hold several, by separatoreValori; views into the cell's text.
std::vector<std::string_view> valoriDi(std::string_view cella);

} // namespace norvel::query
