// Statements cut into tokens by the lexical rules of each database.
#pragma once

#include <string_view>
#include <vector>

namespace norvel::query {

// Sources: SQL Server, "Transact-SQL syntax conventions", "Comments", "Database identifiers";
// MySQL Reference Manual, "Language Structure" (string literals with backslash escapes, comments);
// Access, "Specifications" of Jet SQL as it is documented for queries; SQLite, "The Tokenizer" of
// its language page. Sqlite is that of this project's own provider: SQLite with dates between "#".
enum class Regole { SqlServer, Access, MySql, Sqlite };

enum class GenereSimbolo {
    Testo,    // '…', and "…" where that is a text
    Nome,     // in brackets, double quotes or backquotes
    Data,     // #…#
    Parola,   // keywords, names, @variables
    Numero,   // without its sign
    Segno,    // one character of punctuation
    Commento, // it is no blank here: what is hidden in it counts
    Rotto,    // a text, name or comment that never ends, or a character no statement may hold
};

struct Simbolo {
    GenereSimbolo genere = GenereSimbolo::Segno;
    std::string_view testo; // with its quotes
    bool operator==(const Simbolo&) const = default;
};

// The tokens of the statement, which must outlive them. Blanks between tokens are left out. Raises
// nothing; takes time in proportion to the statement.
std::vector<Simbolo> simboliDi(std::string_view sql, Regole regole);

} // namespace norvel::query
