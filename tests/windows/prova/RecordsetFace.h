#pragma once

#include "tests/windows/prova/EventPoint.h"
#include "tests/windows/prova/FieldsFace.h"

namespace norvel::prova {

class RecordsetFace : public Face, public IConnectionPointContainer {
  public:
    explicit RecordsetFace(adodb::RecordsetRef recordset)
        : recordset_(std::move(recordset)), events_(*this) {}
    adodb::Recordset& recordset() { return *recordset_; }
    ObjectRef object() const override { return recordset_; }
    FieldsFace& fields();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return Face::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return Face::Release(); }
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  protected:
    const DISPID* identifier(const wchar_t* name) const override;
    bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) override;

  private:
    adodb::RecordsetRef recordset_;
    com::ComPtr<FieldsFace> fields_;
    EventPoint events_;
};

} // namespace norvel::prova
