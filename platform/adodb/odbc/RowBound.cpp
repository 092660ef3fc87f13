#include "platform/adodb/odbc/RowBound.h"

#include "platform/adodb/fetch/FetchLimit.h"
#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/adodb/odbc/OdbcTypes.h"
#include "platform/adodb/odbc/StatementShape.h"

#include <algorithm>

namespace norvel::adodb {

namespace {

// What a value takes on average, where its column's declaration allows for more.
constexpr std::size_t likelyText = 80;
constexpr std::size_t likelyLong = 400;
constexpr std::size_t perValue = 8;

std::size_t likelyWidth(const OdbcColumn& column) {
    if (column.width == 0) return likelyLong;
    return std::min(column.width, likelyText);
}

std::size_t likelyRow(const std::shared_ptr<OdbcConnection>& connection,
                      const StatementRequest& request, const std::string& sql) {
    OdbcStatement statement(connection, request.cancelled, request.timeoutSeconds);
    statement.prepare(sql);
    std::size_t bytes = 0;
    for (const OdbcColumn& column : describeColumns(statement))
        bytes += likelyWidth(column) + perValue;
    return bytes;
}

void setBound(const std::shared_ptr<OdbcConnection>& connection, const std::string& rows) {
    OdbcStatement(connection, nullptr, 0).execute("SET SESSION SQL_SELECT_LIMIT = " + rows);
}

} // namespace

std::int64_t boundRows(const std::shared_ptr<OdbcConnection>& connection,
                       const StatementRequest& request, const std::string& sql) {
    if (connection->kind() != ServerKind::MySql) return 0;
    if (kindOfStatement(sql) != StatementKind::Reads) {
        if (connection->rowsBound()) setBound(connection, "DEFAULT");
        connection->setRowsBound(false);
        return 0;
    }
    const std::size_t row = likelyRow(connection, request, sql);
    if (row == 0) return 0;
    const std::size_t rows = std::max<std::size_t>(fetchLimit() / row, 1);
    setBound(connection, std::to_string(rows));
    connection->setRowsBound(true);
    return static_cast<std::int64_t>(rows);
}

} // namespace norvel::adodb
