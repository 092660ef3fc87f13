#include "platform/adodb/odbc/ComparedBooleans.h"

#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/runtime/Text.h"

#include <array>

namespace norvel::adodb {

namespace {

constexpr const char* refusal = "operator does not exist: ";

// The query's words as a list of literals: plain names only, so nothing in them needs quoting.
std::string wordList(const std::string& query) {
    std::string list;
    for (const std::string& word : plainWords(query))
        list.append(list.empty() ? "'" : ", '").append(foldText(word)).append("'");
    return list;
}

} // namespace

NameSet comparedBooleans(const std::shared_ptr<OdbcConnection>& connection, const Errore& failure,
                         const std::string& query) {
    NameSet names;
    if (connection->kind() != ServerKind::PostgreSql) return names;
    const std::size_t at = findText(failure.descrizione(), refusal);
    if (at == std::string::npos ||
        findText(failure.descrizione(), "boolean", at) == std::string::npos)
        return names;
    const std::string list = wordList(query);
    if (list.empty()) return names;
    OdbcStatement statement(connection, nullptr, 30);
    statement.execute("SELECT DISTINCT a.attname FROM pg_attribute a JOIN pg_class c ON "
                      "c.oid = a.attrelid WHERE a.atttypid = 'bool'::regtype AND a.attnum > 0 AND "
                      "lower(c.relname) IN (" +
                      list + ") AND lower(a.attname) IN (" + list + ")");
    std::array<char, 256> name{};
    SQLLEN length = 0;
    SQLBindCol(statement.get(), 1, SQL_C_CHAR, name.data(), name.size(), &length);
    while (statement.call([&] { return SQLFetch(statement.get()); }) != SQL_NO_DATA)
        names.insert(name.data());
    return names;
}

} // namespace norvel::adodb
