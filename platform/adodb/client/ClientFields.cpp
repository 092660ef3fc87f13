#include "platform/adodb/client/ClientFields.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/adodb/store/RawConversion.h"
#include "platform/runtime/Text.h"

#include <cmath>
#include <utility>

namespace norvel::adodb {

namespace {

// UTF-16 units, which is how ADO counts a wide text.
std::int64_t wideLength(std::string_view text) {
    std::int64_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) != 0x80U) units += byte >= 0xF0U ? 2 : 1;
    }
    return units;
}

} // namespace

const ColumnInfo& ClientField::info() const {
    if (!bound_) throw adoError(adErrObjectNotSet);
    return info_;
}

Variant ClientField::Value() const {
    info();
    return recordset_.currentValue(index_);
}

Variant ClientField::OriginalValue() const {
    info();
    return recordset_.originalValue(index_);
}

void ClientField::SetValue(const Variant& value) {
    info();
    recordset_.setCurrentValue(index_, value);
}

// Bytes: two a character of a wide text, -1 where the value is NULL (adFldLong) or has no length.
std::int64_t ClientField::ActualSize() const {
    const Variant value = Value();
    if (value.isText()) return wideLength(value.text()) * 2;
    if (value.type() == VarType::Bytes) return static_cast<std::int64_t>(value.bytes().size());
    if (value.isNull()) return 0;
    return info().definedSize;
}

std::size_t ClientFields::indexOfName(const std::string& name) const {
    const auto found = byName_.find(foldText(name));
    return found == byName_.end() ? count_ : found->second;
}

std::size_t ClientFields::indexOf(const Variant& nameOrIndex) const {
    std::size_t index = count_;
    if (nameOrIndex.isText()) {
        index = indexOfName(nameOrIndex.text());
    } else if (nameOrIndex.isNumeric()) {
        const std::int64_t number = nameOrIndex.toI4();
        if (number >= 0) index = static_cast<std::size_t>(number);
    }
    if (index < count_) return index;
    const std::string which =
        nameOrIndex.isText() || nameOrIndex.isNumeric() ? nameOrIndex.toText() : std::string();
    throw adoError(adErrItemNotFound, which.empty() ? which : "(«" + which + "»)");
}

void ClientFields::bind(const std::vector<ColumnInfo>& columns) {
    unbind();
    for (const ColumnInfo& column : columns) {
        if (count_ == fields_.size())
            fields_.push_back(std::make_unique<ClientField>(recordset_, static_cast<int>(count_)));
        fields_[count_]->bind(column);
        byName_.try_emplace(foldText(column.name), count_);
        ++count_;
    }
}

void ClientFields::unbind() {
    for (const auto& field : fields_)
        field->unbind();
    count_ = 0;
    byName_.clear();
}

std::vector<ColumnInfo> ClientFields::infos() const {
    std::vector<ColumnInfo> columns;
    columns.reserve(count_);
    for (std::size_t i = 0; i < count_; ++i)
        columns.push_back(fields_[i]->info());
    return columns;
}

void ClientFields::changeable() const {
    if (recordset_.State() != adStateClosed) throw adoError(adErrObjectOpen);
}

void ClientFields::Append(const std::string& name, DataTypeEnum type, std::int64_t size,
                          int attributes) {
    changeable();
    if (name.empty() || size < 0 || !canFabricate(type)) throw adoError(adErrInvalidArgument);
    if (indexOfName(name) < count_) throw adoError(adErrObjectInCollection);
    auto columns = infos();
    columns.push_back(describeColumn(name, type, size));
    columns.back().attributes |= attributes | adFldUpdatable;
    bind(columns);
}

void ClientFields::Delete(const Variant& nameOrIndex) {
    changeable();
    auto columns = infos();
    columns.erase(columns.begin() + static_cast<std::ptrdiff_t>(indexOf(nameOrIndex)));
    bind(columns);
}

namespace {

Currency toCurrency(const Variant& value) {
    const Decimal number = value.toDecimal();
    if (number.high() == 0 && number.scale() <= 4 && number.low() <= 900'000'000'000'000U) {
        const auto magnitude =
            static_cast<std::int64_t>(number.low()) * powerOfTen(4 - number.scale());
        return {number.negative() ? -magnitude : magnitude};
    }
    const double scaled = std::nearbyint(value.toDouble() * 10000.0);
    if (!(std::abs(scaled) < 9.2e18)) throw erroreOverflow();
    return {static_cast<std::int64_t>(scaled)};
}

Variant coerce(const ColumnInfo& column, const Variant& value) {
    switch (storageClass(column.type)) {
    case StorageClass::Boolean:
        return value.toBoolean();
    case StorageClass::Integer:
        return value.toI8();
    case StorageClass::Double:
        return value.toDouble();
    case StorageClass::Date:
        return value.toDate();
    case StorageClass::Scaled:
        return column.type == adCurrency ? Variant(toCurrency(value)) : Variant(value.toDecimal());
    case StorageClass::Text:
        return toValidUtf8(value.toText());
    case StorageClass::Bytes:
        if (value.type() != VarType::Bytes) throw erroreTipoNonCorrispondente();
        return value;
    case StorageClass::Mixed:
        break;
    }
    return value;
}

} // namespace

Variant coerceForColumn(const ColumnInfo& column, const Variant& value) {
    if (value.isNull() || value.isEmpty()) return Variant::null();
    try {
        return coerce(column, value);
    } catch (const Errore& error) {
        throw adoError(adErrDataConversion,
                       "(campo «" + column.name + "»: " + error.descrizione() + ")");
    }
}

} // namespace norvel::adodb
