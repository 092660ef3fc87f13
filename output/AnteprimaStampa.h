// The print preview of the search window's rows.
#pragma once

#include "platform/grid/print/PrintInfo.h"

#include <string>

namespace norvel::output {

// What the program sets before each print: the header, the caption in italics; the footer, the page
// number in the centre; headings on every page. Absolute values: a second print sets the same.
NR_API void impostaStampa(grid::PrintInfo& stampa, const std::string& caption);

// Sets them and opens the preview. Every error is ignored.
NR_API void anteprimaStampa(grid::PrintInfo& stampa, const std::string& caption);

} // namespace norvel::output
