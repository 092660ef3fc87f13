// Which table and which key the rows of a SQLite statement have.
#pragma once

#include "platform/adodb/provider/Provider.h"
#include "platform/adodb/sqlite/SqliteHandle.h"

#include <vector>

namespace norvel::adodb {

// Notes in columns where each comes from (origin), whether it belongs to its table's primary key
// (adFldKeyColumn) and whether it can be written (adFldUpdatable). The key is known where the whole
// primary key of every table that gives columns is among them. The caller holds a Turn.
//
// Source: SQLite, "Source Of Data In A Query Result" (sqlite3_column_table_name and its kin).
RowIdentity identifyRows(SqliteHandle& handle, sqlite3_stmt* statement,
                         std::vector<ColumnInfo>& columns);

// A name in double quotes.
std::string quotedName(std::string_view name);

} // namespace norvel::adodb
