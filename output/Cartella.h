// The whole result as a workbook.
#pragma once

#include "output/Esportazioni.h"

namespace norvel::output {

// Runs the grid's query again with the active filter in it and writes what it brings as
// "export.xls". Raises what went wrong; an operator who stops it is told nothing.
void esportaCartella(const ParteEsportazione& parte);

} // namespace norvel::output
