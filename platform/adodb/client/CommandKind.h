// What a command's text is: a statement or the name of a table.
#pragma once

#include "platform/adodb/provider/Provider.h"

#include <string>
#include <string_view>

namespace norvel::adodb {

// True where a text of unknown kind is one name, bracketed or quoted or not ("clienti",
// "[Clienti attivi]", "main.clienti"), and no statement of one word (COMMIT).
bool isTableName(std::string_view text);

// The statement that a text of this kind stands for: itself, or the query of a whole table. Raises
// 3251 on stored procedures and files, which no provider here has.
std::string statementFor(const Session& session, const std::string& text, CommandTypeEnum type);

} // namespace norvel::adodb
