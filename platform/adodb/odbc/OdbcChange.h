// Writes one row to a table of a server.
#pragma once

#include "platform/adodb/odbc/OdbcConnection.h"
#include "platform/adodb/provider/Provider.h"

#include <atomic>
#include <memory>
#include <vector>

namespace norvel::adodb {

// Session::change, in a transaction of its own or, inTransaction, behind a savepoint of the one
// that is open. The row is locked, compared with what was read, written and read again. sent turns
// true once something was sent that may have changed the database. Once nobody waits for it any
// more (givenUp) it writes nothing and commits nothing.
std::vector<Variant> changeRow(const std::shared_ptr<OdbcConnection>& connection,
                               const RowChange& change, bool inTransaction,
                               const std::atomic<bool>& givenUp, bool& sent);

} // namespace norvel::adodb
