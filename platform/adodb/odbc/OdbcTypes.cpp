#include "platform/adodb/odbc/OdbcTypes.h"

#include "platform/adodb/odbc/OdbcText.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace norvel::adodb {

namespace {

struct TypeRow {
    SQLSMALLINT sql;
    DataTypeEnum ado;
    DataTypeEnum withoutSign;
    FetchedAs as;
    SQLSMALLINT cType;
};

constexpr TypeRow types[] = {
    {SQL_BIT, adBoolean, adBoolean, FetchedAs::Integer, SQL_C_SBIGINT},
    {SQL_TINYINT, adTinyInt, adUnsignedTinyInt, FetchedAs::Integer, SQL_C_SBIGINT},
    {SQL_SMALLINT, adSmallInt, adUnsignedSmallInt, FetchedAs::Integer, SQL_C_SBIGINT},
    {SQL_INTEGER, adInteger, adUnsignedInt, FetchedAs::Integer, SQL_C_SBIGINT},
    {SQL_BIGINT, adBigInt, adUnsignedBigInt, FetchedAs::Integer, SQL_C_SBIGINT},
    {SQL_REAL, adSingle, adSingle, FetchedAs::Real, SQL_C_DOUBLE},
    {SQL_FLOAT, adDouble, adDouble, FetchedAs::Real, SQL_C_DOUBLE},
    {SQL_DOUBLE, adDouble, adDouble, FetchedAs::Real, SQL_C_DOUBLE},
    {SQL_DECIMAL, adNumeric, adNumeric, FetchedAs::Text, SQL_C_CHAR},
    {SQL_NUMERIC, adNumeric, adNumeric, FetchedAs::Text, SQL_C_CHAR},
    {SQL_TYPE_DATE, adDBDate, adDBDate, FetchedAs::Date, SQL_C_TYPE_DATE},
    {SQL_TYPE_TIME, adDBTime, adDBTime, FetchedAs::Time, SQL_C_TYPE_TIME},
    {SQL_TYPE_TIMESTAMP, adDBTimeStamp, adDBTimeStamp, FetchedAs::Moment, SQL_C_TYPE_TIMESTAMP},
    {SQL_DATETIME, adDBDate, adDBDate, FetchedAs::Date, SQL_C_TYPE_DATE},
    {SQL_TIME, adDBTime, adDBTime, FetchedAs::Time, SQL_C_TYPE_TIME},
    {SQL_TIMESTAMP, adDBTimeStamp, adDBTimeStamp, FetchedAs::Moment, SQL_C_TYPE_TIMESTAMP},
    {SQL_CHAR, adChar, adChar, FetchedAs::Text, SQL_C_CHAR},
    {SQL_VARCHAR, adVarChar, adVarChar, FetchedAs::Text, SQL_C_CHAR},
    {SQL_LONGVARCHAR, adLongVarChar, adLongVarChar, FetchedAs::Text, SQL_C_CHAR},
    {SQL_WCHAR, adWChar, adWChar, FetchedAs::Text, SQL_C_CHAR},
    {SQL_WVARCHAR, adVarWChar, adVarWChar, FetchedAs::Text, SQL_C_CHAR},
    {SQL_WLONGVARCHAR, adLongVarWChar, adLongVarWChar, FetchedAs::Text, SQL_C_CHAR},
    {SQL_BINARY, adBinary, adBinary, FetchedAs::Bytes, SQL_C_BINARY},
    {SQL_VARBINARY, adVarBinary, adVarBinary, FetchedAs::Bytes, SQL_C_BINARY},
    {SQL_LONGVARBINARY, adLongVarBinary, adLongVarBinary, FetchedAs::Bytes, SQL_C_BINARY},
    {SQL_GUID, adGUID, adGUID, FetchedAs::Guid, SQL_C_CHAR},
};
// What is none of these (intervals, a server's own types) is read as its text.
constexpr TypeRow unknownType{0, adVarWChar, adVarWChar, FetchedAs::Text, SQL_C_CHAR};

constexpr std::size_t longestBound = 8000; // characters; a longer declaration says little
constexpr std::size_t bytesPerCharacter = 4;
constexpr std::size_t momentWidth = 40; // of a date or a time as a text
constexpr SQLSMALLINT nameSize = 512;

const TypeRow& typeOf(SQLSMALLINT sql) {
    const auto* found = std::ranges::find(types, sql, &TypeRow::sql);
    return found == std::end(types) ? unknownType : *found;
}

class Describer {
  public:
    Describer(OdbcStatement& statement, SQLUSMALLINT column)
        : statement_(statement), column_(column) {}

    OdbcColumn describe() {
        SQLSMALLINT sql = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        SQLULEN size = 0;
        const std::string name = nameAndType(sql, size, digits, nullable);
        const TypeRow& type = typeOf(sql);
        OdbcColumn column;
        const bool withSign = number(SQL_DESC_UNSIGNED) == SQL_FALSE;
        const bool isLong = (describeColumn({}, type.ado).attributes & adFldLong) != 0;
        const std::int64_t given = isLong || size > maximum ? 0 : static_cast<std::int64_t>(size);
        column.info = describeColumn(name, withSign ? type.ado : type.withoutSign, given);
        column.as = type.as;
        column.cType = sql == SQL_BIGINT && !withSign ? SQLSMALLINT{SQL_C_UBIGINT} : type.cType;
        if (type.ado == adNumeric && size > 0 && size <= 38) {
            column.info.precision = static_cast<int>(size);
            column.info.scale = digits;
        }
        if (nullable == SQL_NO_NULLS) column.info.attributes &= ~(adFldIsNullable | adFldMayBeNull);
        column.width = isLong ? 0 : widthOf(type, size);
        if (comesAsText(type.as)) {
            column.cType = SQL_C_CHAR;
            column.width = momentWidth;
        }
        column.info.origin = text(SQL_DESC_BASE_COLUMN_NAME);
        column.table = text(SQL_DESC_BASE_TABLE_NAME);
        column.catalog = text(SQL_DESC_CATALOG_NAME);
        column.schema = text(SQL_DESC_SCHEMA_NAME);
        if (column.table.empty()) column.info.origin.clear();
        if (!column.info.origin.empty()) column.info.attributes |= adFldUpdatable;
        return column;
    }

  private:
    static constexpr SQLULEN maximum = 0x7FFFFFFF;

    // What the driver cannot put into a struct it makes up, without a word: MariaDB's leaves a time
    // beyond a day as the buffer was, PostgreSQL's makes today of a date before Christ.
    bool comesAsText(FetchedAs as) const {
        const ServerKind kind = statement_.connection().kind();
        if (as == FetchedAs::Time)
            return kind == ServerKind::MySql || kind == ServerKind::PostgreSql;
        return kind == ServerKind::PostgreSql && (as == FetchedAs::Date || as == FetchedAs::Moment);
    }
    static std::size_t widthOf(const TypeRow& type, SQLULEN size) {
        if (type.as == FetchedAs::Bytes) return size > 0 && size <= longestBound ? size : 0;
        if (type.as == FetchedAs::Guid) return 64;
        if (type.as != FetchedAs::Text) return fixedWidth(type.as);
        if (type.ado == adNumeric) return std::clamp<SQLULEN>(size, 38, 1000) + 4;
        return size > 0 && size <= longestBound ? size * bytesPerCharacter + 1 : 0;
    }
    std::string nameAndType(SQLSMALLINT& type, SQLULEN& size, SQLSMALLINT& digits,
                            SQLSMALLINT& nullable) {
        SQLSMALLINT length = 0;
        if (statement_.connection().target().narrow) {
            std::array<SQLCHAR, nameSize> name{};
            check(SQLDescribeCol(statement_.get(), column_, name.data(), nameSize, &length, &type,
                                 &size, &digits, &nullable));
            return reinterpret_cast<const char*>(name.data());
        }
        std::array<SQLWCHAR, nameSize> name{};
        check(SQLDescribeColW(statement_.get(), column_, name.data(), nameSize, &length, &type,
                              &size, &digits, &nullable));
        return odbcNarrow(name.data(),
                          static_cast<std::size_t>(std::clamp<int>(length, 0, nameSize - 1)));
    }
    // "" where the driver does not tell.
    std::string text(SQLUSMALLINT field) {
        SQLSMALLINT bytes = 0;
        if (statement_.connection().target().narrow) {
            std::array<SQLCHAR, nameSize> value{};
            if (!succeeded(SQLColAttribute(statement_.get(), column_, field, value.data(), nameSize,
                                           &bytes, nullptr)))
                return {};
            return reinterpret_cast<const char*>(value.data());
        }
        std::array<SQLWCHAR, nameSize> value{};
        if (!succeeded(SQLColAttributeW(statement_.get(), column_, field, value.data(),
                                        nameSize * sizeof(SQLWCHAR), &bytes, nullptr)))
            return {};
        const auto end = std::ranges::find(value, SQLWCHAR{0});
        return odbcNarrow(value.data(), static_cast<std::size_t>(end - value.begin()));
    }
    SQLLEN number(SQLUSMALLINT field) {
        SQLLEN value = 0;
        SQLColAttribute(statement_.get(), column_, field, nullptr, 0, nullptr, &value);
        return value;
    }
    void check(SQLRETURN result) {
        if (!succeeded(result)) throw statement_.error();
    }

    OdbcStatement& statement_;
    SQLUSMALLINT column_;
};

} // namespace

std::size_t fixedWidth(FetchedAs as) {
    switch (as) {
    case FetchedAs::Date:
        return sizeof(SQL_DATE_STRUCT);
    case FetchedAs::Time:
        return sizeof(SQL_TIME_STRUCT);
    case FetchedAs::Moment:
        return sizeof(SQL_TIMESTAMP_STRUCT);
    default:
        return sizeof(std::int64_t);
    }
}

std::vector<OdbcColumn> describeColumns(OdbcStatement& statement) {
    std::vector<OdbcColumn> columns;
    const int count = statement.columns();
    columns.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i)
        columns.push_back(Describer(statement, static_cast<SQLUSMALLINT>(i)).describe());
    return columns;
}

} // namespace norvel::adodb
