// SQLite's failures as ADO's, in Italian.
#pragma once

#include "platform/runtime/Errore.h"

#include <string>

struct sqlite3;

namespace norvel::adodb {

// result: SQLite's (extended) code; path: the database as the host named it. SQLite's own words
// follow where no Italian ones stand for them. db may be null.
Errore sqliteError(sqlite3* db, int result, const std::string& path);

} // namespace norvel::adodb
