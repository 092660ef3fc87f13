// The host's neutral query notation, rendered for the database that a connection string names.
#pragma once

#include "platform/adodb/provider/Dialetto.h"
#include "platform/runtime/Variant.h"

#include <string>
#include <string_view>

namespace norvel::query {

using adodb::Dialetto;
using adodb::riconosciDialetto;

// Renders the query for the dialect of the connection string. strQuery itself loses blanks at both
// ends and then one ";" at its end. Dates between "#" become CONVERT (Sql) or DATE_FORMAT (MySql)
// where the text holds at least two "#"; datediff('d',…), iif(…;…;…;) and, for Sql, plain SELECTs
// (TOP 100 PERCENT) are rewritten. A date is what the platform's date test accepts, a bare time of
// day excepted; year, month and day are taken by their places in the text, month first unless the
// fifth character is "-".
//
// Failures show the usual box and give "": an iif without its ";)" for Sql (5), a strQuery that is
// no text and cannot become one (13, 94).
std::string ElaboraQuery(Variant& strQuery, const std::string& strConnessione);

// The rendering alone: the same text, but failures are raised as Errore and no box is shown.
std::string rendiQuery(Variant& strQuery, Dialetto dialetto);

// Cuts the text from "OPTION (FAST " on, the blank before it stays. strQuery itself is cut too. A
// hint beyond character 32,767 shows the usual box (6, "Overflow"), gives "" and changes nothing.
std::string togliOptionFast(std::string& strQuery);

// "" for Null, anything else as it is. An object whose reference is Nothing is itself, too.
Variant Nullo(const Variant& valore);

} // namespace norvel::query
