// The provider of files of Access.
#pragma once

#include "platform/adodb/provider/Provider.h"

#include <memory>
#include <string>

namespace norvel::adodb {

// place: the file in the host's notation. Queries are answered by the embedded database, from a
// copy of the tables that they name: sub-selects, joins, groups and the notation of its provider
// all hold, and a Yes/No column may be compared with True, -1 or 1. The copy is made anew by the
// first query after the file changed. For reading only: a statement that is no query, and every
// change, is refused with 3251. Raises Errore where the file is missing or cannot be read.
std::shared_ptr<Session> openAccessSession(const std::string& place);

} // namespace norvel::adodb
