// SQLite's declared types as ADO types.
#pragma once

#include "platform/adodb/store/ColumnInfo.h"

#include <string>

namespace norvel::adodb {

// The column of a declared type ("VARCHAR(50)", "NUMERIC(10,2)", case-blind). A declaration that is
// missing or unknown leaves the type adEmpty: the first rows settle it. Integers of every declared
// size but BIGINT are adInteger: SQLite limits none of them to its size, and a value beyond 32 bits
// reads as a 64-bit integer.
ColumnInfo columnOfDeclaredType(std::string name, const std::string& declared);

} // namespace norvel::adodb
