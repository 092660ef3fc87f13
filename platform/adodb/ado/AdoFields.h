// The Fields and the Field of a host's recordset.
#pragma once

#include "platform/adodb/ado/Dispatch.h"
#include "platform/adodb/ado/EventRelay.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace norvel::adodb {

// One column. Its object is fetched again by its place when the recordset was opened anew over the
// same columns; 3420 once the column is no longer there.
class AdoField : public Field, public com::ComBacked {
  public:
    AdoField(const com::DispatchObject& recordset, EventRelay& relay, int index);

    std::string Name() const override;
    DataTypeEnum Type() const override;
    std::int64_t DefinedSize() const override;
    std::int64_t ActualSize() const override;
    int Attributes() const override;
    int Precision() const override;
    int NumericScale() const override;
    Variant Value() const override;
    void SetValue(const Variant& value) override;
    Variant OriginalValue() const override;
    Variant UnderlyingValue() const override;
    IDispatch* dispatch() const override { return field_.get(); }

    // Whether the object still stands for a column of the open recordset.
    bool Alive() const;
    // The column went; every member raises 3420 from here on.
    void Retire() { field_ = {}; }

  private:
    template <class Call>
    auto on(Call call) const;

    const com::DispatchObject& recordset_;
    EventRelay& relay_;
    int index_;
    mutable com::DispatchObject field_;
    std::string name_;
};

class AdoFields : public Fields {
  public:
    AdoFields(const com::DispatchObject& recordset, EventRelay& relay)
        : recordset_(recordset), relay_(relay) {}

    int Count() const override;
    Field& Item(const Variant& nameOrIndex) override;
    void Append(const std::string& name, DataTypeEnum type, std::int64_t size,
                int attributes) override;
    void Delete(const Variant& nameOrIndex) override;

    // The columns are asked anew at their next use; Field objects handed out before are retired.
    void Forget();

  private:
    com::DispatchObject collection() const;
    void load();
    AdoField* find(const Variant& nameOrIndex);

    const com::DispatchObject& recordset_;
    EventRelay& relay_;
    bool loaded_ = false;
    std::vector<std::unique_ptr<AdoField>> fields_;
    std::unordered_map<std::string, int> numbers_;   // by folded name, the first of equal names
    std::vector<std::unique_ptr<AdoField>> retired_; // callers may still hold them
};

} // namespace norvel::adodb
