// The database dialect that a connection string names.
#pragma once

#include <string_view>

namespace norvel::adodb {

// What a connection string tells about its database; Nessuno is treated as Access.
enum class Dialetto { Nessuno, Sql, Access, MySql };

// Five independent searches, case-blind; the last that matches wins: "sqloledb", "SQL Server",
// "access", ".mdb", "MySQL".
Dialetto riconosciDialetto(std::string_view strConnessione);

} // namespace norvel::adodb
