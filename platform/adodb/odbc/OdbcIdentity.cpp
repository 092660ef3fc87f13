#include "platform/adodb/odbc/OdbcIdentity.h"

#include "platform/adodb/odbc/OdbcText.h"
#include "platform/adodb/odbc/StatementShape.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>

namespace norvel::adodb {

namespace {

constexpr SQLSMALLINT nameSize = 512;
constexpr SQLUSMALLINT keyColumnName = 4; // of SQLPrimaryKeys' rows

using Names = std::vector<std::string>;

SQLRETURN askKeys(OdbcStatement& statement, const OdbcColumn& of) {
    if (statement.connection().target().narrow) {
        const auto name = [](const std::string& text) {
            return text.empty() ? nullptr
                                : reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
        };
        return SQLPrimaryKeys(statement.get(), name(of.catalog), SQL_NTS, name(of.schema), SQL_NTS,
                              name(of.table), SQL_NTS);
    }
    std::vector<SQLWCHAR> catalog = odbcWide(of.catalog);
    std::vector<SQLWCHAR> schema = odbcWide(of.schema);
    std::vector<SQLWCHAR> table = odbcWide(of.table);
    const auto name = [](std::vector<SQLWCHAR>& text) {
        return text.size() == 1 ? nullptr : text.data();
    };
    return SQLPrimaryKeysW(statement.get(), name(catalog), SQL_NTS, name(schema), SQL_NTS,
                           name(table), SQL_NTS);
}

// The columns of the table's primary key; none where it has none.
Names primaryKey(const std::shared_ptr<OdbcConnection>& connection, const OdbcColumn& of) {
    OdbcStatement statement(connection, nullptr, 30);
    statement.call([&] { return askKeys(statement, of); });
    std::array<char, nameSize> name{};
    SQLLEN length = 0;
    SQLBindCol(statement.get(), keyColumnName, SQL_C_CHAR, name.data(), nameSize, &length);
    Names key;
    while (statement.call([&] { return SQLFetch(statement.get()); }) != SQL_NO_DATA)
        if (length > 0) key.emplace_back(name.data());
    return key;
}

bool sameTable(const OdbcColumn& a, const OdbcColumn& b) {
    return a.catalog == b.catalog && a.schema == b.schema && a.table == b.table;
}

bool comparesExactly(const OdbcColumn& column) {
    return column.width > 0 && column.as != FetchedAs::Real && column.as != FetchedAs::Bytes;
}

// The first column that shows each column of the key; empty where one is missing.
std::vector<int> placesOf(const Names& key, const std::vector<OdbcColumn>& columns,
                          const OdbcColumn& of) {
    std::vector<int> places;
    for (const std::string& name : key) {
        const auto found = std::ranges::find_if(columns, [&](const OdbcColumn& column) {
            return sameTable(column, of) && equalsText(column.info.origin, name);
        });
        if (found == columns.end()) return {};
        places.push_back(static_cast<int>(found - columns.begin()));
    }
    return places;
}

std::string tableText(ServerKind kind, const OdbcColumn& of) {
    std::string text;
    // PostgreSQL names the database, but its SQL knows the current one alone.
    if (kind != ServerKind::PostgreSql && !of.catalog.empty())
        text += quotedName(kind, of.catalog) + ".";
    if (!of.schema.empty()) text += quotedName(kind, of.schema) + ".";
    return text + quotedName(kind, of.table);
}

} // namespace

std::string quotedName(ServerKind kind, std::string_view name) {
    switch (kind) {
    case ServerKind::MySql:
        return "`" + replaceText(name, "`", "``") + "`";
    case ServerKind::SqlServer:
    case ServerKind::Access:
        return "[" + replaceText(name, "]", "]]") + "]";
    case ServerKind::PostgreSql:
    case ServerKind::Other:
        break;
    }
    return "\"" + replaceText(name, "\"", "\"\"") + "\"";
}

RowIdentity identifyRows(const std::shared_ptr<OdbcConnection>& connection, const std::string& sql,
                         std::vector<OdbcColumn>& columns) {
    RowIdentity identity;
    const auto first = std::ranges::find_if(
        columns, [](const OdbcColumn& column) { return !column.info.origin.empty(); });
    if (first == columns.end() || !connection->severalStatements()) return identity;
    const OdbcColumn of = *first;
    const bool oneTable = std::ranges::all_of(columns, [&](const OdbcColumn& column) {
        return column.info.origin.empty() || sameTable(column, of);
    });
    if (!oneTable) return identity;
    identity.table = tableText(connection->kind(), of);
    identity.mixed = !readsOneTable(sql);
    const Names key = primaryKey(connection, of);
    identity.key = placesOf(key, columns, of);
    for (const int column : identity.key)
        columns[static_cast<std::size_t>(column)].info.attributes |= adFldKeyColumn;
    if (!key.empty()) return identity;
    if (identity.mixed) return {}; // it may be the name of a derived table
    for (std::size_t c = 0; c < columns.size(); ++c)
        if (!columns[c].info.origin.empty() && comparesExactly(columns[c]))
            identity.key.push_back(static_cast<int>(c));
    return identity;
}

} // namespace norvel::adodb
