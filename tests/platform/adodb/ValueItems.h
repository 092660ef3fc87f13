// The list of a column's values, as the window asks a database for it.
#pragma once

#include "platform/adodb/Recordset.h"
#include "query/ListaValori.h"

#include <string>

namespace norvel::adodb {

// The items beside the fixed ones, each with a bar behind it: the query is composed from the
// recordset and rendered for its connection.
inline std::string valueItems(Recordset& recordset, const std::string& field) {
    const auto asked = query::richiestaValori(recordset, field, "");
    const auto values = makeClientRecordset();
    values->Open(query::queryListaValori(asked), recordset.ActiveConnection());
    const DataTypeEnum type = recordset.Fields()(field).Type();
    std::string items;
    for (; !values->EOF_(); values->MoveNext())
        items += query::testoVoce(values->Fields()(field).Value(), type) + "|";
    return items;
}

} // namespace norvel::adodb
