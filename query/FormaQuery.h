// What an operator types stays a value: the shape of a composed query is looked at before it runs.
#pragma once

#include "platform/runtime/Errore.h"

#include <functional>
#include <string>
#include <string_view>

namespace norvel::query {

// Puts a filter text into a query: neutral notation, what ElaboraQuery gets. Called more than once
// and with other filter texts than the real one, so it must depend on nothing else.
using ComponiQuery = std::function<std::string(const std::string& filtro)>;

// The composed and rendered query, ready to run. It is compared, token by token and by the lexical
// rules of the connection's database (backslashes escape in MySQL, and may wherever neither
// provider nor driver tells the database: then no value may hold one; of a database of no known
// dialect every rule set that reads the neutral notation must agree), with the query that harmless
// values in the filter's quotes and hashes give.
//
// Raises Errore where a value of the filter does not stand as the one literal that it was ("*"
// written as "%" aside), or anything else of the query depends on it; and where the filter itself
// has what no criteria have. Where the query around the filter cannot be rendered, ElaboraQuery
// shows its box and Errore is raised.
std::string queryControllata(const ComponiQuery& componi, const std::string& filtro,
                             const std::string& strConnessione);
// The same for a query that runs as it is composed, without being rendered.
std::string queryControllataNonResa(const ComponiQuery& componi, const std::string& filtro,
                                    const std::string& strConnessione);

} // namespace norvel::query
