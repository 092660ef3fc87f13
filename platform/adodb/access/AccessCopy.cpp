#include "platform/adodb/access/AccessCopy.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/odbc/StatementShape.h"
#include "platform/adodb/sqlite/AccessFunctions.h"
#include "platform/adodb/sqlite/SqliteIdentity.h"
#include "platform/adodb/sqlite/SqliteSession.h"
#include "platform/runtime/Text.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <system_error>

namespace norvel::adodb {

namespace {

using namespace std::chrono_literals;

constexpr auto coarsestFileTime = 2s; // of the file systems that servers and sticks have
constexpr int mostAttempts = 3;       // at a file that is being written

// A folder that only this user can enter, removed with the object.
class PrivateFolder {
  public:
    PrivateFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "norvel-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw Errore(oleFail, "Impossibile creare una cartella temporanea: " +
                                      std::generic_category().message(errno) + ".");
        path_ = name;
    }
    ~PrivateFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    std::string file(const char* name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

// The tables whose names are among the statement's words, in brackets, quotes or bare.
std::vector<std::string> namedTables(const std::string& statement,
                                     const std::vector<std::string>& tables) {
    std::vector<std::string> named;
    for (std::string_view word : statementTokens(statement)) {
        const bool enclosed = word.size() > 2 &&
                              std::string_view("[\"`").find(word.front()) != std::string_view::npos;
        if (enclosed) word = word.substr(1, word.size() - 2);
        for (const std::string& table : tables)
            if (equalsText(table, word) && std::ranges::find(named, table) == named.end())
                named.push_back(table);
    }
    return named;
}

std::string definitionOf(const std::string& table, const std::vector<AccessColumn>& columns) {
    std::string sql = "CREATE TABLE " + quotedName(table) + " (";
    for (const AccessColumn& column : columns) {
        if (sql.back() != '(') sql += ", ";
        sql += quotedName(column.name) + " " + column.type;
        if (column.text) sql.append(" COLLATE ").append(textCollation);
    }
    return sql + ")";
}

std::string insertionOf(const std::string& table, std::size_t columns) {
    std::string sql = "INSERT INTO " + quotedName(table) + " VALUES (?";
    for (std::size_t i = 1; i < columns; ++i)
        sql += ",?";
    return sql + ")";
}

std::string bytesOfHex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        unsigned value = 0;
        std::from_chars(digits.data() + i, digits.data() + i + 2, value, 16);
        bytes += static_cast<char>(value);
    }
    return bytes;
}

// mdb-export cuts longer notes without a word.
constexpr std::size_t longestNote = 199'999; // bytes

// The whole characters of a note that was cut, and a mark that says so.
std::string markedCut(std::string note) {
    const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; };
    while (!note.empty() && continues(note.back()))
        note.pop_back();
    if (!note.empty()) note.pop_back();
    return note + "…";
}

int bindCell(sqlite3_stmt* statement, int parameter, const AccessColumn& column,
             const AccessValue& value) {
    if (value.null) return sqlite3_bind_null(statement, parameter);
    if (column.truth) return sqlite3_bind_int(statement, parameter, value.text == "0" ? 0 : -1);
    if (column.bytes) {
        const std::string bytes = bytesOfHex(value.text);
        return sqlite3_bind_blob64(statement, parameter, bytes.data(), bytes.size(),
                                   SQLITE_TRANSIENT);
    }
    if (value.text.size() >= longestNote) {
        const std::string note = markedCut(value.text);
        return sqlite3_bind_text64(statement, parameter, note.data(), note.size(), SQLITE_TRANSIENT,
                                   SQLITE_UTF8);
    }
    // Numbers, too: what a column was declared as makes them numbers.
    return sqlite3_bind_text64(statement, parameter, value.text.data(), value.text.size(),
                               SQLITE_STATIC, SQLITE_UTF8);
}

// Within a Turn.
void copyTable(SqliteHandle& handle, const AccessFile& file, const std::string& table,
               const std::vector<AccessColumn>& columns, const Stop& stop) {
    handle.run(definitionOf(table, columns).c_str());
    const StatementHandle insertion = handle.prepareBound(insertionOf(table, columns.size()), {});
    const auto add = [&](const AccessRow& row) {
        for (std::size_t i = 0; i < row.size(); ++i)
            if (const int result =
                    bindCell(insertion.get(), static_cast<int>(i) + 1, columns[i], row[i]);
                result != SQLITE_OK)
                throw handle.error(result);
        sqlite3_step(insertion.get());
        if (const int result = sqlite3_reset(insertion.get()); result != SQLITE_OK)
            throw handle.error(result);
    };
    file.rows(table, columns.size(), stop, add);
}

} // namespace

FileStamp stampOf(const std::string& path) {
    std::error_code error;
    FileStamp stamp;
    stamp.size = std::filesystem::file_size(path, error);
    stamp.written = std::filesystem::last_write_time(path, error);
    return stamp;
}

AccessCopy::AccessCopy(const AccessFile& file, const std::string& statement, const Stop& stop) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt)
        if (copy(file, statement, stop)) return;
    throw Errore(oleFail, "Un altro programma sta scrivendo il database «" + file.name() +
                              "». Riprovare tra poco.");
}

// False where the file changed meanwhile: the tables may then not go together.
bool AccessCopy::copy(const AccessFile& file, const std::string& statement, const Stop& stop) {
    stamp_ = stampOf(file.path());
    settled_ = std::filesystem::file_time_type::clock::now() - stamp_.written > coarsestFileTime;
    tables_ = file.tables(stop);
    booleans_.clear();
    copied_ = namedTables(statement, tables_);
    const PrivateFolder folder;
    const std::string path = folder.file("copia.db");
    std::ofstream(path).flush();
    {
        const auto handle = SqliteHandle::open(path, false);
        const SqliteHandle::Turn turn(*handle, &stop);
        handle->run("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN");
        for (const std::string& table : copied_) {
            const auto columns = file.columns(table, stop);
            for (const AccessColumn& column : columns)
                if (column.truth) booleans_.insert(column.name);
            copyTable(*handle, file, table, columns, stop);
        }
        handle->run("COMMIT");
    }
    session_ = openSqliteSession(ConnectionString("Data Source=" + path + ";Mode=Read"));
    return stampOf(file.path()) == stamp_;
}

bool AccessCopy::serves(const AccessFile& file, const std::string& statement) const {
    if (!settled_ || stampOf(file.path()) != stamp_) return false;
    return std::ranges::all_of(namedTables(statement, tables_), [&](const std::string& table) {
        return std::ranges::find(copied_, table) != copied_.end();
    });
}

} // namespace norvel::adodb
