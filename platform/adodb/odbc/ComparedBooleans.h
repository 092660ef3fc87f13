// Boolean columns that a query compares with numbers, on a server that has no such comparison.
#pragma once

#include "platform/adodb/odbc/OdbcConnection.h"
#include "platform/adodb/odbc/ServerNotation.h"

#include <memory>
#include <string>

namespace norvel::adodb {

// What PostgreSQL's catalog says, once its refusal of a query tells that a Boolean met a number:
// the names among the query's words that are Boolean columns of a table among its words. Nothing
// where the failure is another one.
NameSet comparedBooleans(const std::shared_ptr<OdbcConnection>& connection, const Errore& failure,
                         const std::string& query);

} // namespace norvel::adodb
