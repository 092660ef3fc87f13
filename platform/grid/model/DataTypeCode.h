// Which columns hold yes and no.
#pragma once

#include "platform/adodb/Recordset.h"

namespace norvel::grid {

// The code of a column of yes/no values: those that can be shown as check boxes.
inline constexpr int yesNoTypeCode = 10;

// 10 for a field of the type Boolean and for one of an integer type whose values, of all rows that
// have come by now and whatever the filter shows of them, are 0 or -1 or Null, with at least one
// that is not Null; the field's ADO type for any other. Reads only as far as it must, and never
// waits for rows. field: its number. Errore: what the recordset raises.
NR_API int dataTypeCode(adodb::Recordset& recordset, int field);

} // namespace norvel::grid
