// The boxes of the exports: each fixed text in one place.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/MessageBox.h"
#include "platform/spreadsheet/Workbook.h"

#include <string>

namespace norvel::output {

Messaggio messaggioNessunaArea();   // the plain copy without an area
Messaggio domandaInteroRecordset(); // the export without one
Messaggio messaggioEsportazioneFallita(const Errore& errore);
Messaggio messaggioAreaCopiata(int colonne, adodb::RowCount righe);
Messaggio messaggioCartellaCreata(const std::string& percorso);
// What the workbook could not hold.
Messaggio messaggioCartellaIncompleta(const spreadsheet::WorkbookLosses& perse);

} // namespace norvel::output
