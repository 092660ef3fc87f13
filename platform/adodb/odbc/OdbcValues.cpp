#include "platform/adodb/odbc/OdbcValues.h"

#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace norvel::adodb {

namespace {

constexpr SQLULEN longestVarchar = 4000;

constexpr long long dayMicroseconds = 86400LL * 1000000;

// "yyyy-mm-dd", "hh:mm:ss", or both with as many decimals of a second as there are.
std::string momentText(double days, DataTypeEnum type, OdbcSql::Moments moments) {
    double day = std::trunc(days);
    auto microseconds = std::llround(std::abs(days - day) * static_cast<double>(dayMicroseconds));
    const bool noise = microseconds % 1000 < 20 || microseconds % 1000 > 980;
    if (moments == OdbcSql::Moments::Rounded && noise)
        microseconds = (microseconds + 500) / 1000 * 1000;
    if (microseconds == dayMicroseconds) {
        microseconds = 0;
        day += 1;
    }
    const CivilDate date = civilDate(Date{day});
    const long long seconds = microseconds / 1000000;
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02lld:%02lld:%02lld", date.year,
                  date.month, date.day, seconds / 3600, seconds / 60 % 60, seconds % 60);
    std::string full = text.data();
    if (microseconds % 1000000 != 0) {
        std::snprintf(text.data(), text.size(), ".%06lld", microseconds % 1000000);
        full += text.data();
    }
    if (type == adDBDate) return full.substr(0, 10);
    return type == adDBTime ? full.substr(11) : full;
}

std::string dateLiteral(ServerKind kind, double days, DataTypeEnum type, OdbcSql::Moments moments) {
    const std::string moment = momentText(days, type, moments);
    if (kind == ServerKind::SqlServer) return "'" + replaceText(moment, " ", "T") + "'";
    if (kind != ServerKind::MySql && kind != ServerKind::PostgreSql) return "'" + moment + "'";
    const char* word = type == adDBDate ? "DATE" : type == adDBTime ? "TIME" : "TIMESTAMP";
    return std::string(word) + " '" + moment + "'";
}

std::string doubleLiteral(double value) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

bool isDateColumn(DataTypeEnum type) {
    return storageClass(type) == StorageClass::Date;
}

} // namespace

void OdbcSql::add(const OdbcSql& other) {
    text += other.text;
    parameters_.insert(parameters_.end(), other.parameters_.begin(), other.parameters_.end());
}

void OdbcSql::addValue(const ColumnInfo& column, const Variant& value, Moments moments) {
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Null:
        text += "NULL";
        return;
    case VarType::Boolean:
        if (kind_ == ServerKind::PostgreSql && column.type == adBoolean)
            text += value.toBoolean() ? "TRUE" : "FALSE";
        else
            text += value.toBoolean() ? "1" : "0";
        return;
    case VarType::Date:
        text += dateLiteral(kind_, value.toDate().days,
                            isDateColumn(column.type) ? column.type : adDBTimeStamp, moments);
        return;
    case VarType::R4:
    case VarType::R8:
        text += doubleLiteral(value.toDouble());
        return;
    case VarType::Currency:
    case VarType::Decimal:
        text += value.toDecimal().toText();
        return;
    case VarType::Bytes:
        parameters_.push_back({{value.bytes().begin(), value.bytes().end()}, true, 0});
        text += "?";
        return;
    case VarType::String:
        parameters_.push_back({value.text(), false, 0});
        text += "?";
        return;
    default:
        text += std::to_string(value.toI8());
    }
}

void OdbcSql::bind(OdbcStatement& statement) {
    SQLUSMALLINT number = 0;
    for (Parameter& parameter : parameters_) {
        parameter.length = static_cast<SQLLEN>(parameter.value.size());
        const SQLULEN size = std::max<SQLULEN>(parameter.value.size(), 1);
        const SQLSMALLINT textual = size > longestVarchar ? SQL_LONGVARCHAR : SQL_VARCHAR;
        const SQLSMALLINT type = parameter.bytes ? SQLSMALLINT{SQL_LONGVARBINARY} : textual;
        ++number;
        statement.call([&] {
            return SQLBindParameter(statement.get(), number, SQL_PARAM_INPUT,
                                    parameter.bytes ? SQL_C_BINARY : SQL_C_CHAR, type, size, 0,
                                    parameter.value.data(), parameter.length, &parameter.length);
        });
    }
}

} // namespace norvel::adodb
