// The running query with the active filter in it, for an export of the whole result.
#pragma once

#include "platform/adodb/Recordset.h"

#include <string>

namespace norvel::output {

// q: the text of the running command. filtro: the recordset's Filter; 0 (or "") is none, a text has
// every "*" written as "%" and joins the query: behind " and " where the query has a " where ",
// else behind " where ". A query with an " Order BY" is cut before its first "Order by" then, and
// stays as it is without a filter. All case-blind. A filter that is an array of bookmarks cannot be
// said in SQL: 13.
std::string queryEsportazione(const std::string& q, const Variant& filtro);

// The same from what a recordset runs, and found to be of the shape that it has with harmless
// values (FormaQuery.h): Errore where a value of the filter would change it. 91 where the recordset
// runs no command.
std::string queryEsportazione(const adodb::Recordset& recordset);

} // namespace norvel::output
