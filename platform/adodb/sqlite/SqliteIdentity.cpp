#include "platform/adodb/sqlite/SqliteIdentity.h"

#include "platform/runtime/Text.h"

#include <sqlite3.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace norvel::adodb {

namespace {

struct Origin {
    std::string database;
    std::string table;
    std::vector<int> key; // columns of the result that belong to its primary key
    bool operator==(const Origin& other) const {
        return database == other.database && table == other.table;
    }
};

std::string text(const char* value) {
    return value ? value : "";
}

// How many columns the primary key has; 0 where there is none.
std::size_t keyWidth(SqliteHandle& handle, const Origin& origin) {
    const auto count =
        handle.prepareBound("SELECT count(*) FROM pragma_table_info(?1, ?2) WHERE pk > 0",
                            {Variant(origin.table), Variant(origin.database)});
    if (sqlite3_step(count.get()) != SQLITE_ROW) return 0;
    return static_cast<std::size_t>(sqlite3_column_int(count.get(), 0));
}

bool inPrimaryKey(SqliteHandle& handle, const Origin& origin, const std::string& column) {
    int inKey = 0;
    const int result =
        sqlite3_table_column_metadata(handle.get(), origin.database.c_str(), origin.table.c_str(),
                                      column.c_str(), nullptr, nullptr, nullptr, &inKey, nullptr);
    return result == SQLITE_OK && inKey != 0;
}

} // namespace

std::string quotedName(std::string_view name) {
    return "\"" + replaceText(name, "\"", "\"\"") + "\"";
}

RowIdentity identifyRows(SqliteHandle& handle, sqlite3_stmt* statement,
                         std::vector<ColumnInfo>& columns) {
    std::vector<Origin> origins;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int column = static_cast<int>(i);
        Origin origin{text(sqlite3_column_database_name(statement, column)),
                      text(sqlite3_column_table_name(statement, column)),
                      {}};
        columns[i].origin = text(sqlite3_column_origin_name(statement, column));
        if (origin.table.empty() || columns[i].origin.empty()) continue;
        auto known = std::ranges::find(origins, origin);
        if (known == origins.end()) known = origins.insert(origins.end(), std::move(origin));
        columns[i].attributes |= adFldUpdatable;
        if (!inPrimaryKey(handle, *known, columns[i].origin)) continue;
        columns[i].attributes |= adFldKeyColumn;
        const bool again = std::ranges::any_of(known->key, [&](int other) {
            return columns[static_cast<std::size_t>(other)].origin == columns[i].origin;
        });
        if (!again) known->key.push_back(column);
    }
    RowIdentity identity;
    if (origins.size() == 1)
        identity.table =
            quotedName(origins.front().database) + "." + quotedName(origins.front().table);
    const bool whole = std::ranges::all_of(origins, [&](const Origin& origin) {
        return !origin.key.empty() && origin.key.size() == keyWidth(handle, origin);
    });
    if (!whole) return identity;
    for (const Origin& origin : origins)
        identity.key.insert(identity.key.end(), origin.key.begin(), origin.key.end());
    return identity;
}

} // namespace norvel::adodb
