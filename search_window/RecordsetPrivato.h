// The recordset of the window's own that receives the rows of a value list.
#pragma once

#include "platform/adodb/Recordset.h"

namespace norvel::search_window {

struct RecordsetPrivato {
    adodb::RecordsetRef recordset; // closed
    int opzioni = -1;              // of its Open
};

// Of the same making as the grid's: over a host's ADO recordset a new one of the machine's ADO,
// which is opened without options; otherwise this project's own engine, which brings its rows in
// the background. Raises what creating it raises.
RecordsetPrivato creaRecordsetPrivato(const adodb::Recordset& dellaGriglia);

} // namespace norvel::search_window
