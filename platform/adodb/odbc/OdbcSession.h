// The provider of servers that are reached through ODBC.
#pragma once

#include "platform/adodb/provider/Provider.h"

#include <memory>

namespace norvel::adodb {

// Null where the string names nothing that ODBC has here (see odbcTarget). Queries run on
// connections of their own unless a transaction is open or an earlier statement (SET, a temporary
// table…) left something on the session's; a lost connection is opened again by the next statement,
// and a query that finds its connection lost before it began is sent once more.
std::shared_ptr<Session> openOdbcSession(const ConnectionString& connection);

} // namespace norvel::adodb
