// Waiting for rows that a background fetch still brings.
#pragma once

#include "platform/adodb/Recordset.h"

class wxWindow;

namespace norvel::search_window {

// Waits until no fetch runs. After a quarter of a second a small modal window says how many rows
// have come and offers "Annulla"; false when the operator took it (the fetch itself goes on).
bool attendiLettura(wxWindow& parent, adodb::Recordset& recordset);

} // namespace norvel::search_window
