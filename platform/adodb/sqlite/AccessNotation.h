// The host's neutral query notation, put into SQLite's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvel::adodb {

// Translates a statement; what is between quotes, in comments and in brackets is never touched.
//   #03/15/2011#   date literals: month first with '/' (day first where the month would be above
//                  12), yyyy-mm-dd and dd-mm-yyyy with '-', an optional time; they become ISO
//                  texts. In queries and changes they compare as dates, so that a stored midnight
//                  equals the day; in CREATE and ALTER they are plain texts.
//   iif(a;b;c;)    the separators ';' within an iif become ','; a last one goes.
// The rest of the notation SQLite knows itself (iif(a,b,c), [names], True, False) or gets from a
// registered function (datediff). '#' that starts no date stays, for SQLite to complain of.
std::string translateAccessNotation(std::string_view statement);

// The date between two '#', as ISO text; nullopt where it is none. Two-digit years are 1930 to
// 2029.
std::optional<std::string> isoOfDateLiteral(std::string_view literal);

// Name of the collation by which date literals compare.
inline constexpr const char* dateCollation = "nr_data";

} // namespace norvel::adodb
