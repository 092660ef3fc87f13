#include "platform/adodb/sqlite/SqliteIdentity.h"

#include "platform/runtime/Text.h"

#include <sqlite3.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

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

// The pages where the table and its indexes begin: the table's first.
std::vector<int> rootPages(SqliteHandle& handle, const Origin& origin) {
    const auto pages = handle.prepareBound(
        "SELECT rootpage FROM " + quotedName(origin.database) +
            ".sqlite_schema WHERE tbl_name = ?1 COLLATE NOCASE AND rootpage > 0 ORDER BY type "
            "DESC",
        {Variant(origin.table)});
    std::vector<int> found;
    while (sqlite3_step(pages.get()) == SQLITE_ROW)
        found.push_back(sqlite3_column_int(pages.get(), 0));
    return found;
}

int databaseNumber(SqliteHandle& handle, const std::string& name) {
    const auto number = handle.prepareBound("SELECT seq FROM pragma_database_list WHERE name = ?1",
                                            {Variant(name)});
    return sqlite3_step(number.get()) == SQLITE_ROW ? sqlite3_column_int(number.get(), 0) : -1;
}

// What the program that SQLite made of a statement reads. Source: SQLite, "The SQLite Bytecode
// Engine" (OpenRead: cursor, page, database; DeferredSeek leads from an index to its table).
class Reads {
  public:
    Reads(std::vector<int> pages, int database) : pages_(std::move(pages)), database_(database) {}

    void note(std::string_view operation, int cursor, int page, int database) {
        if (operation == "DeferredSeek") fromIndex_ = true;
        if (operation == "ResultRow") ++results_;
        if (operation == "InitCoroutine" || operation == "VOpen") elsewhere_ = true;
        if (operation != "OpenRead") return;
        const auto known = std::ranges::find(pages_, page);
        if (database != database_ || known == pages_.end())
            elsewhere_ = true;
        else
            (known == pages_.begin() ? table_ : indexes_).insert(cursor);
    }
    bool tableOnce() const {
        if (elsewhere_ || results_ > 1 || table_.size() > 1 || indexes_.size() > 1) return false;
        return table_.size() + indexes_.size() <= 1 || fromIndex_;
    }

  private:
    std::vector<int> pages_;
    int database_;
    std::set<int> table_; // cursors
    std::set<int> indexes_;
    int results_ = 0;
    bool fromIndex_ = false;
    bool elsewhere_ = false;
};

bool readsTableOnce(SqliteHandle& handle, sqlite3_stmt* statement, const Origin& origin) {
    Reads reads(rootPages(handle, origin), databaseNumber(handle, origin.database));
    const auto program = handle.prepareBound("EXPLAIN " + text(sqlite3_sql(statement)), {});
    while (sqlite3_step(program.get()) == SQLITE_ROW) {
        const auto* operation =
            reinterpret_cast<const char*>(sqlite3_column_text(program.get(), 1));
        reads.note(text(operation), sqlite3_column_int(program.get(), 2),
                   sqlite3_column_int(program.get(), 3), sqlite3_column_int(program.get(), 4));
    }
    return reads.tableOnce();
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
    if (origins.size() == 1) identity.mixed = !readsTableOnce(handle, statement, origins.front());
    for (const Origin& origin : origins)
        identity.key.insert(identity.key.end(), origin.key.begin(), origin.key.end());
    return identity;
}

} // namespace norvel::adodb
