// How long typing in the filter bar may go on before the filter is set.
#pragma once

#include "platform/adodb/Recordset.h"

namespace norvel::query {

// Of this project's own engine: none, every key filters at once. Over a host's own ADO recordset,
// which may take a second for a filter, as long as an operator pauses between two words.
inline constexpr int pausaSuAdoMs = 250;

// Milliseconds to wait after a key before the filter is set; 0: at once.
int pausaDigitazioneMs(const adodb::Recordset& recordset);

} // namespace norvel::query
