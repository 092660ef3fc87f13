// Waiting for rows that a background fetch still brings.
#pragma once

#include "platform/adodb/Recordset.h"

class wxWindow;

namespace norvel::search_window {

// Waits until no fetch runs. After a quarter of a second a small modal window says how many rows
// have come and offers "Annulla"; false when the operator took it (the fetch itself goes on).
bool attendiLettura(wxWindow& parent, adodb::Recordset& recordset);

// Waits until a statement that was begun in the background has its first rows, so that there are
// columns to show. After a quarter of a second a small modal window offers "Annulla", which ends
// the statement. Raises why it came to nothing; 3712 where the operator took it.
void attendiApertura(wxWindow& parent, adodb::Recordset& recordset);

} // namespace norvel::search_window
