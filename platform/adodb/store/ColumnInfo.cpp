#include "platform/adodb/store/ColumnInfo.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace norvel::adodb {

namespace {

struct TypeFacts {
    DataTypeEnum type;
    StorageClass storage;
    std::int64_t size; // bytes of a fixed type, default length of a variable one
    int precision;
    int attributes;
};

constexpr std::int64_t longSize = 2147483647; // of memos and BLOBs: no limit of their own
constexpr std::int64_t textSize = 65536;      // of a text declared without a length
constexpr int fixed = adFldFixed;
constexpr int longer = adFldLong | adFldMayDefer;

// Sizes and precisions: Microsoft's ADO pages on DefinedSize and Precision.
constexpr TypeFacts facts[] = {
    {adSmallInt, StorageClass::Integer, 2, 5, fixed},
    {adInteger, StorageClass::Integer, 4, 10, fixed},
    {adSingle, StorageClass::Double, 4, 7, fixed},
    {adDouble, StorageClass::Double, 8, 15, fixed},
    {adCurrency, StorageClass::Scaled, 8, 19, fixed},
    {adDate, StorageClass::Date, 8, notApplicable, fixed},
    {adBSTR, StorageClass::Text, textSize, notApplicable, 0},
    {adBoolean, StorageClass::Boolean, 2, notApplicable, fixed},
    {adVariant, StorageClass::Mixed, 16, notApplicable, fixed},
    {adDecimal, StorageClass::Scaled, 16, 28, fixed},
    {adTinyInt, StorageClass::Integer, 1, 3, fixed},
    {adUnsignedTinyInt, StorageClass::Integer, 1, 3, fixed},
    {adUnsignedSmallInt, StorageClass::Integer, 2, 5, fixed},
    {adUnsignedInt, StorageClass::Integer, 4, 10, fixed},
    {adBigInt, StorageClass::Integer, 8, 19, fixed},
    {adUnsignedBigInt, StorageClass::Integer, 8, 20, fixed},
    {adFileTime, StorageClass::Date, 8, notApplicable, fixed},
    {adGUID, StorageClass::Text, 16, notApplicable, fixed},
    {adBinary, StorageClass::Bytes, 255, notApplicable, fixed},
    {adChar, StorageClass::Text, 255, notApplicable, fixed},
    {adWChar, StorageClass::Text, 255, notApplicable, fixed},
    {adNumeric, StorageClass::Scaled, 19, 28, fixed},
    {adDBDate, StorageClass::Date, 6, 10, fixed},
    {adDBTime, StorageClass::Date, 6, 8, fixed},
    {adDBTimeStamp, StorageClass::Date, 16, 19, fixed},
    {adVarNumeric, StorageClass::Scaled, 19, 28, 0},
    {adVarChar, StorageClass::Text, textSize, notApplicable, 0},
    {adLongVarChar, StorageClass::Text, longSize, notApplicable, longer},
    {adVarWChar, StorageClass::Text, textSize, notApplicable, 0},
    {adLongVarWChar, StorageClass::Text, longSize, notApplicable, longer},
    {adVarBinary, StorageClass::Bytes, textSize, notApplicable, 0},
    {adLongVarBinary, StorageClass::Bytes, longSize, notApplicable, longer},
};

const TypeFacts* factsOf(DataTypeEnum type) {
    const auto* found = std::ranges::find(facts, type, &TypeFacts::type);
    return found == std::end(facts) ? nullptr : found;
}

bool hasOwnLength(const TypeFacts& f) {
    return f.storage == StorageClass::Text || f.storage == StorageClass::Bytes;
}

} // namespace

StorageClass storageClass(DataTypeEnum type) {
    const TypeFacts* f = factsOf(type);
    return f ? f->storage : StorageClass::Mixed;
}

bool canFabricate(DataTypeEnum type) {
    return factsOf(type) != nullptr;
}

ColumnInfo describeColumn(std::string name, DataTypeEnum type, std::int64_t size) {
    ColumnInfo info;
    info.name = std::move(name);
    info.type = type;
    info.attributes = adFldIsNullable | adFldMayBeNull;
    if (const TypeFacts* f = factsOf(type)) {
        info.definedSize = hasOwnLength(*f) && size > 0 ? size : f->size;
        info.precision = f->precision;
        info.scale = f->storage == StorageClass::Scaled ? (type == adCurrency ? 4 : 0) : info.scale;
        info.attributes |= f->attributes;
    }
    return info;
}

} // namespace norvel::adodb
