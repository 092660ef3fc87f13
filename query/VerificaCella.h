// Tells of one filter cell whether the recordset would take it, before it is asked.
#pragma once

#include "query/FiltroColonne.h"

#include <optional>
#include <string>

namespace norvel::query {

// nullopt: the cell is empty or its condition holds. Otherwise why not, Italian, for the cell's
// tip: a number cell that holds anything but one number, a date cell that holds no date, wildcards
// where a filter cannot have them, a field that is not there, anything else that the criteria
// language refuses. With piuValori the cell may hold several values separated by separatoreValori,
// and each is looked at. Shows nothing, raises nothing.
std::optional<std::string> verificaCella(const ColonnaFiltro& cella, const TipoDiCampo& tipo,
                                         Confronto confronto, bool piuValori = false);

// One number as the filter bar takes it: a sign, digits, one decimal comma or point, an exponent;
// blanks around it do not count.
bool eUnNumero(std::string_view testo);

} // namespace norvel::query
