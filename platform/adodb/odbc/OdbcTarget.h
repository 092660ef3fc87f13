// Where a host's connection string leads on this system: which server, through which ODBC driver.
#pragma once

#include "platform/adodb/provider/ConnectionString.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

enum class ServerKind : std::uint8_t { MySql, PostgreSql, SqlServer, Access, Other };

struct OdbcTarget {
    ServerKind kind = ServerKind::Other;
    // The pairs for the driver; a value may be empty text only where it was given so. The password
    // is among them: for SQLDriverConnect, never for a message.
    std::vector<std::pair<std::string, std::string>> pairs;
    std::string password;
    std::string place; // "server/database" or the file or the data source, for messages
    std::string user;
    bool narrow = false;  // the driver takes its texts in UTF-8 bytes, not in UTF-16
    bool neutral = false; // the string names no dialect of a server: queries come in the neutral
                          // notation, which the provider puts into the server's own
};

// A driver or a data source that the driver manager knows; of a source, the driver behind it.
struct OdbcEntry {
    std::string name;
    std::string driver;
};

// Hosts name their databases as Windows does: Provider=SQLOLEDB, SQLNCLI… and MSOLEDBSQL, the OLE
// DB providers of Jet, ACE, MySQL and PostgreSQL; Provider=MSDASQL or nothing with Driver={…} or
// DSN=…, the pairs inside "Extended Properties" included. Drivers by Windows' names become Debian's
// (odbc-mariadb, odbc-postgresql, tdsodbc), unless one of the very name is
// installed; keywords that mean server, database, user, password and port become the driver's own,
// and what a driver alone knows is handed on. nullopt where the string names nothing of the kind.
//
// Sources: Microsoft's pages on SQLOLEDB, Jet and MSDASQL connection strings; the drivers' own
// pages on theirs.
std::optional<OdbcTarget> odbcTarget(const ConnectionString& connection,
                                     const std::vector<OdbcEntry>& drivers,
                                     const std::vector<OdbcEntry>& sources);

// The target's pairs in one text, values in braces where they need them.
std::string driverString(const OdbcTarget& target);

// The kind that a name of a driver, a provider, a library or a product tells.
ServerKind kindOfName(std::string_view name);

} // namespace norvel::adodb
