// The toolbar's moves among the rows, and the refresh.
#pragma once

#include "platform/adodb/Recordset.h"

namespace norvel::search_window {

// To the first and to the last record; nothing where there is none.
void vaiAlPrimo(adodb::Recordset& recordset);
void vaiAllUltimo(adodb::Recordset& recordset);
// One record back or on. Beyond the edge they bounce back: "indietro" at BOF goes to the first
// record, "avanti" at EOF to the last; nothing where there is none.
void vaiIndietro(adodb::Recordset& recordset);
void vaiAvanti(adodb::Recordset& recordset);

// Runs the query again, in the background, where the connection is one to SQL Server
// ("sqloledb" or "SQL Server" in its string); nothing on any other.
void aggiornaElenco(adodb::Recordset& recordset);

} // namespace norvel::search_window
