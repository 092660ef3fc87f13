// Shortcuts for hosts that make their recordsets here rather than bring ADO's own.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Api.h"

#include <string>
#include <vector>

namespace norvel {

// Opens the rows of an SQL statement on a connection (a Connection object or a connection string):
// a client-side, static recordset. opzioni: ExecuteOptionEnum bits (adAsyncFetch: control returns
// after the first block of rows), -1 for none. Raises what the open raises.
NR_API adodb::RecordsetRef apriRecordset(const Variant& connessione, const std::string& sql,
                                         adodb::LockTypeEnum blocco = adodb::adLockReadOnly,
                                         int opzioni = -1);

// An open recordset without rows, of text fields (255 characters) with these names: what a host
// passes as operators or views when it has none, since the window's styling ends at the first
// recordset that is not open. Raises 3001 without names, 3367 on a name given twice.
NR_API adodb::RecordsetRef recordsetVuoto(const std::vector<std::string>& campi);

// Those two, with the fields that the window asks for.
NR_API adodb::RecordsetRef operatoriVuoti(); // codiceutente, ricerchepers
NR_API adodb::RecordsetRef visteVuote();     // codiceoperatore, codicericerca, NomeVista, preferito

} // namespace norvel
