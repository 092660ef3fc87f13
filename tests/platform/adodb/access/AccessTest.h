// What the tests of Access files share.
#pragma once

#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/access/AccessWriter.h"

#include <string>

namespace norvel::adodb {

// The strings of hosts for a file.
std::string jetProvider(const std::string& path);
std::string accessDriver(const std::string& path);

// A file that Access itself wrote, as packaging/prepara unpacks it; a failure of the test says so
// where it is not there. Access 2000: Monitor.mdb; Access 97: testodbc.mdb.
std::string fileOfAccess2000();
std::string fileOfAccess97(const TemporaryFolder& folder);

// The values of a query's rows, those of a row between commas, rows between bars.
std::string rowsOf(const std::string& connection, const std::string& sql);
std::string rowsOf(Recordset& recordset);

// A table of customers: numbers, texts with accents, Yes/No, prices, dates, notes, Nulls.
void writeCustomers(const std::string& path, int more = 0, std::uint32_t key = 0,
                    const std::string& password = "");

} // namespace norvel::adodb
