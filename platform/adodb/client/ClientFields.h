// The Fields of a ClientRecordset.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/store/ColumnInfo.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace norvel::adodb {

class ClientRecordset;

// One column. The object is used again when the recordset is opened again, so that a reference
// that a host kept over a Close raises 3420 instead of dangling.
class ClientField final : public Field {
  public:
    ClientField(ClientRecordset& recordset, int index) : recordset_(recordset), index_(index) {}

    std::string Name() const override { return info().name; }
    DataTypeEnum Type() const override { return info().type; }
    std::int64_t DefinedSize() const override { return info().definedSize; }
    std::int64_t ActualSize() const override;
    int Attributes() const override { return info().attributes; }
    int Precision() const override { return info().precision; }
    int NumericScale() const override { return info().scale; }
    Variant Value() const override;
    void SetValue(const Variant& value) override;
    Variant OriginalValue() const override;
    Variant UnderlyingValue() const override { return Value(); }

    void bind(ColumnInfo info) {
        info_ = std::move(info);
        bound_ = true;
    }
    void unbind() { bound_ = false; }
    const ColumnInfo& info() const; // 3420 where it is not bound

  private:
    ClientRecordset& recordset_;
    int index_;
    bool bound_ = false;
    ColumnInfo info_;
};

class ClientFields final : public Fields {
  public:
    explicit ClientFields(ClientRecordset& recordset) : recordset_(recordset) {}

    int Count() const override { return static_cast<int>(count_); }
    Field& Item(const Variant& nameOrIndex) override { return *fields_[indexOf(nameOrIndex)]; }
    void Append(const std::string& name, DataTypeEnum type, std::int64_t size,
                int attributes) override;
    void Delete(const Variant& nameOrIndex) override;

    // The column that a name or a number means; 3265 where none does.
    std::size_t indexOf(const Variant& nameOrIndex) const;
    void bind(const std::vector<ColumnInfo>& columns);
    void unbind();
    std::vector<ColumnInfo> infos() const;

  private:
    void changeable() const;
    std::size_t indexOfName(const std::string& name) const;

    ClientRecordset& recordset_;
    std::vector<std::unique_ptr<ClientField>> fields_; // the first count_ are bound
    std::size_t count_ = 0;
    std::unordered_map<std::string, std::size_t> byName_; // folded; the first of equal names
};

// The value as a column of this type keeps it; raises 3421 where it cannot.
Variant coerceForColumn(const ColumnInfo& column, const Variant& value);

} // namespace norvel::adodb
