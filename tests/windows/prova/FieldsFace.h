#pragma once

#include "tests/windows/prova/Face.h"

#include <map>

namespace norvel::prova {

class FieldFace : public Face {
  public:
    FieldFace(adodb::RecordsetRef owner, adodb::Field& field)
        : owner_(std::move(owner)), field_(field) {}
    adodb::Field& field() { return field_; }

  protected:
    const DISPID* identifier(const wchar_t* name) const override;
    bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) override;

  private:
    adodb::RecordsetRef owner_; // keeps the field
    adodb::Field& field_;
};

class FieldsFace : public Face {
  public:
    explicit FieldsFace(adodb::RecordsetRef owner) : owner_(std::move(owner)) {}
    adodb::Fields& fields() { return owner_->Fields(); }
    // The same object for the same column.
    com::ComPtr<FieldFace> item(adodb::Field& field);
    com::OwnedVariant all(); // an enumerator

  protected:
    const DISPID* identifier(const wchar_t* name) const override;
    bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) override;

  private:
    adodb::RecordsetRef owner_;
    std::map<adodb::Field*, com::ComPtr<FieldFace>> items_;
};

} // namespace norvel::prova
