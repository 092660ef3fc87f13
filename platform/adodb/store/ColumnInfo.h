// What is known of a column: its ADO description and the way its values are stored.
#pragma once

#include "platform/adodb/Constants.h"

#include <cstdint>
#include <string>

namespace norvel::adodb {

// The family of representations a column's values belong to.
enum class StorageClass : std::uint8_t {
    Boolean,
    Integer,
    Double,
    Date,
    Scaled, // Currency, Decimal, Numeric: an integer and a number of decimals
    Text,
    Bytes,
    Mixed, // each value has its own type
};

// Not applicable, as ADO says it of Precision and NumericScale.
inline constexpr int notApplicable = 255;

struct ColumnInfo {
    std::string name;
    DataTypeEnum type = adEmpty;  // adEmpty: to be decided from the first rows
    std::int64_t definedSize = 0; // characters or bytes
    int precision = notApplicable;
    int scale = notApplicable;
    int attributes = 0; // FieldAttributeEnum bits
    std::string origin; // the table's column that it shows; "": none
};

StorageClass storageClass(DataTypeEnum type);

// True for the types a recordset without a source can hold.
bool canFabricate(DataTypeEnum type);

// A column of this type with the size, precision and attributes that ADO gives the type. size:
// characters or bytes for the types of variable length, 0 for the type's own default.
ColumnInfo describeColumn(std::string name, DataTypeEnum type, std::int64_t size = 0);

} // namespace norvel::adodb
