// The store of personal views: the rows of ricerchepers, which the host hands over as a recordset.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Api.h"

#include <optional>
#include <string>
#include <vector>

namespace norvel::views {

// Whose views, of which search: the session's User and Modulo.
struct Proprietario {
    std::string utente;
    std::string modulo;
};

// The filters on the recordset of views, values inserted as they are: a quote in one breaks the
// filter. Field names stand in the spellings that each use has.
NR_API std::string filtroPreferita(const Proprietario& di);
NR_API std::string filtroViste(const Proprietario& di);
NR_API std::string filtroVisteElenco(const Proprietario& di); // for the list in the configuration
NR_API std::string filtroVistePerSalvare(const Proprietario& di); // ends in a blank
NR_API std::string filtroVista(const Proprietario& di, const std::string& nome);
// On the recordset of operators; begins with a blank.
NR_API std::string filtroOperatore(const std::string& utente);

// What follows leaves the recordset filtered, and raises what the recordset raises.

// Whether the operator may keep views of his own: the field ricerchepers of his row.
NR_API bool permessoViste(adodb::Recordset& operatori, const std::string& utente);
// The first view marked as preferred, in the recordset's own order.
NR_API std::optional<std::string> vistaPreferita(adodb::Recordset& viste, const Proprietario& di);
// The names of all views, in the recordset's own order: for the menu, and for the list in the
// configuration.
NR_API std::vector<std::string> nomiViste(adodb::Recordset& viste, const Proprietario& di);
NR_API std::vector<std::string> nomiVisteElenco(adodb::Recordset& viste, const Proprietario& di);

} // namespace norvel::views
