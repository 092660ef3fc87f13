// Which table and which key the rows of an ODBC statement have.
#pragma once

#include "platform/adodb/odbc/OdbcConnection.h"
#include "platform/adodb/odbc/OdbcTypes.h"
#include "platform/adodb/provider/Provider.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// Notes in columns which can be written and which belong to their table's primary key. Rows of one
// table without a primary key are told apart by all of its columns that are compared exactly; rows
// that are equal in them cannot be changed. Where the driver does not tell the table, or the
// statement reads more than one and no key is known, there is no identity.
RowIdentity identifyRows(const std::shared_ptr<OdbcConnection>& connection, const std::string& sql,
                         std::vector<OdbcColumn>& columns);

// A name as the server quotes it.
std::string quotedName(ServerKind kind, std::string_view name);

} // namespace norvel::adodb
