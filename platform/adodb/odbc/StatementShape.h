// What a statement does, as far as its words tell.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

enum class StatementKind : std::uint8_t {
    Reads,  // gives rows and depends on nothing but committed data
    Writes, // changes tables, not the connection
    Own,    // anything else: what follows depends on the connection that ran it
};

// The words and signs of a statement; of a text in quotes one ' only, names in quotes or brackets
// with these; comments left out.
std::vector<std::string_view> statementTokens(std::string_view sql);

StatementKind kindOfStatement(std::string_view sql);

// True for SELECT … FROM one table, without another SELECT, a join or a set operation: every row is
// a row of that table. False also where the words do not tell.
bool readsOneTable(std::string_view sql);

} // namespace norvel::adodb
