// Keeps a driver that holds whole results from holding more than the machine does.
#pragma once

#include "platform/adodb/odbc/OdbcConnection.h"
#include "platform/adodb/provider/Provider.h"

#include <cstdint>
#include <memory>
#include <string>

namespace norvel::adodb {

// MariaDB's driver takes in every row before it gives the first (its releases from 3.1.17 on can do
// otherwise, Debian 12's cannot). So the server is asked for as many rows as the limit of a fetch
// holds by what their columns promise; the answer is that number, 0 where none was set: another
// server, or a statement that does more than read, which then has no limit: its end would be taken
// for the end of its rows.
std::int64_t boundRows(const std::shared_ptr<OdbcConnection>& connection,
                       const StatementRequest& request, const std::string& sql);

} // namespace norvel::adodb
