#include "platform/adodb/sqlite/SqliteTypes.h"

#include "platform/runtime/Text.h"

#include <charconv>
#include <string_view>
#include <utility>

namespace norvel::adodb {

namespace {

struct Declared {
    std::string_view name;
    DataTypeEnum type;
};

constexpr Declared declaredTypes[] = {
    {"BOOLEAN", adBoolean},
    {"BOOL", adBoolean},
    {"BIT", adBoolean},
    {"YESNO", adBoolean},
    {"LOGICAL", adBoolean},
    {"INTEGER", adInteger},
    {"INT", adInteger},
    {"TINYINT", adInteger},
    {"SMALLINT", adInteger},
    {"MEDIUMINT", adInteger},
    {"INT2", adInteger},
    {"INT4", adInteger},
    {"LONG", adInteger},
    {"SHORT", adInteger},
    {"BYTE", adInteger},
    {"COUNTER", adInteger},
    {"AUTOINCREMENT", adInteger},
    {"BIGINT", adBigInt},
    {"INT8", adBigInt},
    {"UNSIGNED BIG INT", adBigInt},
    {"REAL", adDouble},
    {"DOUBLE", adDouble},
    {"DOUBLE PRECISION", adDouble},
    {"FLOAT", adDouble},
    {"SINGLE", adDouble},
    {"NUMERIC", adNumeric},
    {"DECIMAL", adNumeric},
    {"NUMBER", adNumeric},
    {"CURRENCY", adCurrency},
    {"MONEY", adCurrency},
    {"SMALLMONEY", adCurrency},
    {"DATE", adDate},
    {"DATETIME", adDBTimeStamp},
    {"TIMESTAMP", adDBTimeStamp},
    {"SMALLDATETIME", adDBTimeStamp},
    {"TIME", adDBTime},
    {"TEXT", adVarWChar},
    {"CHAR", adVarWChar},
    {"CHARACTER", adVarWChar},
    {"VARCHAR", adVarWChar},
    {"VARYING CHARACTER", adVarWChar},
    {"CHARACTER VARYING", adVarWChar},
    {"NCHAR", adVarWChar},
    {"NVARCHAR", adVarWChar},
    {"NATIVE CHARACTER", adVarWChar},
    {"STRING", adVarWChar},
    {"GUID", adVarWChar},
    {"UNIQUEIDENTIFIER", adVarWChar},
    {"LONGTEXT", adLongVarWChar},
    {"LONGCHAR", adLongVarWChar},
    {"LONGVARCHAR", adLongVarWChar},
    {"MEDIUMTEXT", adLongVarWChar},
    {"NTEXT", adLongVarWChar},
    {"MEMO", adLongVarWChar},
    {"CLOB", adLongVarWChar},
    {"BLOB", adLongVarBinary},
    {"LONGBLOB", adLongVarBinary},
    {"BINARY", adLongVarBinary},
    {"VARBINARY", adLongVarBinary},
    {"LONGBINARY", adLongVarBinary},
    {"LONGVARBINARY", adLongVarBinary},
    {"OLEOBJECT", adLongVarBinary},
    {"IMAGE", adLongVarBinary},
    // What copies of Access files declare: Jet's own types, which files of SQLite do not name so.
    {"JET BYTE", adUnsignedTinyInt},
    {"JET SHORT", adSmallInt},
    {"JET SINGLE", adSingle},
    {"JET GUID", adGUID},
};

DataTypeEnum typeNamed(std::string_view name) {
    for (const Declared& declared : declaredTypes)
        if (equalsText(declared.name, name)) return declared.type;
    return adEmpty;
}

// The numbers in "(10,2)"; those missing are 0.
std::pair<int, int> lengths(std::string_view parentheses) {
    int first = 0;
    int second = 0;
    const std::size_t comma = parentheses.find(',');
    const std::string a = trimText(parentheses.substr(0, comma));
    std::from_chars(a.data(), a.data() + a.size(), first);
    if (comma != std::string_view::npos) {
        const std::string b = trimText(parentheses.substr(comma + 1));
        std::from_chars(b.data(), b.data() + b.size(), second);
    }
    return {first, second};
}

} // namespace

ColumnInfo columnOfDeclaredType(std::string name, const std::string& declared) {
    const std::size_t open = declared.find('(');
    const DataTypeEnum type = typeNamed(trimText(std::string_view(declared).substr(0, open)));
    const auto [first, second] = open == std::string::npos
                                     ? std::pair(0, 0)
                                     : lengths(std::string_view(declared).substr(open + 1));
    ColumnInfo info = describeColumn(std::move(name), type, first);
    info.attributes |= adFldUnknownUpdatable;
    if (type == adNumeric && first > 0) {
        info.precision = first;
        info.scale = second;
    }
    return info;
}

} // namespace norvel::adodb
