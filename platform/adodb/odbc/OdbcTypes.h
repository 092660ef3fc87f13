// ODBC's types as ADO's, and as what a column's values are fetched as.
#pragma once

#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/adodb/store/ColumnInfo.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace norvel::adodb {

// How the driver hands a column's values over.
enum class FetchedAs : std::uint8_t { Integer, Real, Date, Time, Moment, Text, Guid, Bytes };

// A column of a statement's rows.
struct OdbcColumn {
    ColumnInfo info;
    FetchedAs as = FetchedAs::Text;
    SQLSMALLINT cType = SQL_C_CHAR;
    std::size_t width = 0; // bytes that its values take; 0: not told, or no limit worth a buffer
    // Where it comes from, as far as the driver tells; "": computed.
    std::string catalog;
    std::string schema;
    std::string table;
};

// Types as in ADO's provider for ODBC: TINYINT is adTinyInt or adUnsignedTinyInt, BIT is adBoolean,
// DECIMAL and NUMERIC are adNumeric, a BIGINT without sign is adUnsignedBigInt (a value beyond 63
// bits reads as its digits), a REAL is adSingle, GUIDs are texts in braces. Wide and narrow texts
// keep their own codes; both are UTF-8 here. What is no day of the years 100 to 9999 is NULL, a
// time beyond a day is that many days.
std::vector<OdbcColumn> describeColumns(OdbcStatement& statement);

// Bytes that a column's value takes in the driver's form; texts and bytes apart.
std::size_t fixedWidth(FetchedAs as);

} // namespace norvel::adodb
