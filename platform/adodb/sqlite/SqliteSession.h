// The provider of the embedded database.
#pragma once

#include "platform/adodb/provider/Provider.h"

#include <memory>

namespace norvel::adodb {

// "Provider=SQLite;Data Source=PATH": PATH in the host's notation, an existing file, or ":memory:"
// for an empty database of the session's own. "Mode=Read" opens it for reading only. A source for
// the background reads through a handle of its own where that sees the same data, else through the
// session's, in turns.
std::shared_ptr<Session> openSqliteSession(const ConnectionString& connection);

} // namespace norvel::adodb
