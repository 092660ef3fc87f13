// The host's neutral query notation, put into a server's.
#pragma once

#include "platform/adodb/odbc/OdbcTarget.h"
#include "platform/runtime/Text.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

using NameSet = std::set<std::string, LessText>;

// Reads a statement as the embedded database does, and writes what the server reads the same way;
// what stands in quotes and comments is never touched, MySQL's backslashes apart, which get a
// second one.
//   #03/15/2011#       a literal of the server's; what is no date stays
//   iif(a;b;c;)        CASE WHEN, or IF of MySQL; separators ',' as well
//   datediff('d',a,b)  days from a to b, as Access counts; also 'y', 'yyyy', 'q', 'm', 'h', 'n',
//                      's', and on SQL Server 'ww'; other intervals stay
//   [name]             the server's quotes; PostgreSQL gets plain names in small letters, as it
//                      keeps those that were never quoted
//   True, False        1 and 0 on SQL Server, -1 and 0 for Access
//   RTRIM(x)           on PostgreSQL of the value's text, so that numbers and dates have one
//   LIKE               on PostgreSQL of the value's text, case-blind; '\' means nothing special
// booleans: PostgreSQL's and Access's columns of that type; compared with a number they are
// compared with whether that is 0. Nothing else is changed for Access.
std::string serverNotation(std::string_view statement, ServerKind kind,
                           const NameSet& booleans = {});

// The [names] of a text alone.
std::string serverNames(std::string_view text, ServerKind kind);

// Letters of ASCII, digits and '_', no digit first.
bool isPlainName(std::string_view name);
// The plain names of a statement, outside quotes and comments, without repetition.
std::vector<std::string> plainWords(std::string_view statement);

} // namespace norvel::adodb
