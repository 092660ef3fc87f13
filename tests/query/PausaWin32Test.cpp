// Typing over a host's own ADO recordset waits for the operator.
#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/Com.h"
#include "query/PausaDigitazione.h"
#include "tests/query/Archivio.h"

#include <gtest/gtest.h>

namespace norvel::query {
namespace {

// An automation object that answers nothing.
class Muto final : public IDispatch {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** oggetto) override {
        *oggetto = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++riferimenti_; }
    ULONG STDMETHODCALLTYPE Release() override { return --riferimenti_; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }

  private:
    ULONG riferimenti_ = 1;
};

TEST(Pausa, SulRecordsetDiUnOspiteSiAspettaChiScrive) {
    Muto oggetto;
    {
        const auto recordset = adodb::wrapAdoRecordset(&oggetto);
        EXPECT_EQ(pausaDigitazioneMs(*recordset), pausaSuAdoMs);
    }
    EXPECT_GT(pausaSuAdoMs, 0);
}

TEST(Pausa, SuiRecordsetNostriNonSiAspetta) {
    EXPECT_EQ(pausaDigitazioneMs(*adodb::makeClientRecordset()), 0);
}

} // namespace
} // namespace norvel::query
