// Connection strings of databases that this project's providers do not have themselves.
#pragma once

#include "platform/adodb/provider/Provider.h"

#include <memory>

namespace norvel::adodb {

// A session on whatever the system has for the string (Linux: ODBC; Windows: nothing, the host
// brings ADO's own recordsets). Null where it names nothing that the system knows. Raises what
// opening raises.
std::shared_ptr<Session> openForeignSession(const ConnectionString& connection);

} // namespace norvel::adodb
