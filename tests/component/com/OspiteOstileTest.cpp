// Calls that no sensible host makes: each ends with a code, none with a crash, and none changes the
// session.
#include "component/TabellaMembri.h"
#include "platform/adodb/ado/Variants.h"
#include "tests/component/com/Dll.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace norvel::tests {
namespace {

using com::ComPtr;
using com::OwnedVariant;

// A host's object that is of no use: each call fails with a code of the test's.
class OggettoInutile final : public IDispatch {
  public:
    explicit OggettoInutile(HRESULT codice) : codice_(codice) {}
    ULONG riferimenti = 1;

    STDMETHODIMP QueryInterface(REFIID iid, void** faccia) override {
        const bool nota = iid == IID_IUnknown || iid == IID_IDispatch;
        *faccia = nota ? this : nullptr;
        if (nota) AddRef();
        return nota ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++riferimenti; }
    STDMETHODIMP_(ULONG) Release() override { return --riferimenti; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return codice_; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return codice_; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return codice_; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return codice_;
    }

  private:
    HRESULT codice_;
};

VARIANT diTipo(unsigned tipo) {
    VARIANT valore{}; // and nothing behind it: null pointers, zeros
    V_VT(&valore) = static_cast<VARTYPE>(tipo);
    return valore;
}

class OspiteOstile : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(oggetto_ = dll_.crea());
        BSTR testo = com::newBstr("prima");
        EXPECT_EQ(oggetto_->put_Caption(testo), S_OK);
        SysFreeString(testo);
    }

    struct Esito {
        HRESULT codice;
        HRESULT eccezione;
        std::string descrizione;
    };
    Esito invoca(DISPID id, WORD modo, DISPPARAMS* argomenti) {
        EXCEPINFO eccezione{};
        VARIANT risultato;
        VariantInit(&risultato);
        Esito esito{};
        esito.codice = oggetto_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, modo, argomenti,
                                        &risultato, &eccezione, nullptr);
        esito.eccezione = eccezione.scode;
        esito.descrizione = com::textOf(eccezione.bstrDescription);
        SysFreeString(eccezione.bstrDescription);
        SysFreeString(eccezione.bstrSource);
        VariantClear(&risultato);
        return esito;
    }
    Esito scrivi(DISPID id, const VARIANT& valore, WORD modo = DISPATCH_PROPERTYPUT) {
        VARIANT prestato = valore;
        DISPID nuovo = DISPID_PROPERTYPUT;
        DISPPARAMS argomenti{&prestato, &nuovo, 1, 1};
        return invoca(id, modo, &argomenti);
    }
    std::string titolo() {
        BSTR testo = nullptr;
        EXPECT_EQ(oggetto_->get_Caption(&testo), S_OK);
        std::string letto = com::textOf(testo);
        SysFreeString(testo);
        return letto;
    }
    // The value is refused with that number, and the title is as before.
    void rifiuta(const VARIANT& valore, int numero) {
        const Esito esito = scrivi(idCaption, valore);
        EXPECT_EQ(esito.codice, DISP_E_EXCEPTION) << "tipo " << V_VT(&valore);
        EXPECT_EQ(esito.eccezione,
                  static_cast<HRESULT>(0x800A0000U | static_cast<unsigned>(numero)))
            << "tipo " << V_VT(&valore);
        EXPECT_FALSE(esito.descrizione.empty());
        EXPECT_EQ(titolo(), "prima");
    }

    static constexpr DISPID idCaption = 0x6803000C;
    static constexpr DISPID idRecordset = 0x68030002;
    Dll dll_;
    ComPtr<_Ricerca> oggetto_;
};

TEST_F(OspiteOstile, AMissingArgumentIsTheEmptyTextAndNullIsAnError) {
    VARIANT mancante = diTipo(VT_ERROR);
    V_ERROR(&mancante) = DISP_E_PARAMNOTFOUND;
    EXPECT_EQ(scrivi(idCaption, mancante).codice, S_OK);
    EXPECT_EQ(titolo(), "");
    EXPECT_EQ(scrivi(idCaption, diTipo(VT_BSTR)).codice, S_OK); // a null BSTR
    EXPECT_EQ(titolo(), "");
    EXPECT_EQ(scrivi(idCaption, diTipo(VT_NULL)).eccezione, static_cast<HRESULT>(0x800A005E));
}

TEST_F(OspiteOstile, TypesThatAutomationDoesNotPassAreRefused) {
    for (const unsigned tipo :
         {unsigned{VT_RECORD}, unsigned{VT_CLSID}, unsigned{VT_VARIANT}, unsigned{VT_FILETIME},
          unsigned{VT_LPWSTR}, unsigned{VT_BLOB}, unsigned{VT_VOID}, 0x0FFFU, 0x1008U})
        rifiuta(diTipo(tipo), 13);
}

TEST_F(OspiteOstile, ReferencesToNothingAreRefused) {
    for (const unsigned tipo :
         {unsigned{VT_I4}, unsigned{VT_BSTR}, unsigned{VT_VARIANT}, unsigned{VT_DECIMAL},
          unsigned{VT_DATE}, unsigned{VT_ARRAY | VT_VARIANT}, unsigned{VT_DISPATCH},
          unsigned{VT_EMPTY}, 0x0FFFU})
        rifiuta(diTipo(tipo | VT_BYREF), 13);
}

TEST_F(OspiteOstile, AReferenceToItselfIsRefused) {
    VARIANT anello;
    V_VT(&anello) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&anello) = &anello;
    rifiuta(anello, 13);
}

TEST_F(OspiteOstile, ArraysAreRefusedWhateverTheyHold) {
    SAFEARRAYBOUND limiti[2] = {{2, 0}, {3, -1}};
    for (const VARTYPE tipo : {VT_VARIANT, VT_BSTR, VT_I4, VT_DISPATCH}) {
        for (const UINT dimensioni : {1U, 2U}) {
            VARIANT elenco = diTipo(VT_ARRAY | unsigned{tipo});
            V_ARRAY(&elenco) = SafeArrayCreate(tipo, dimensioni, limiti);
            rifiuta(elenco, 13);
            VARIANT perRiferimento = diTipo(VT_BYREF | VT_ARRAY | unsigned{tipo});
            V_ARRAYREF(&perRiferimento) = &V_ARRAY(&elenco);
            rifiuta(perRiferimento, 13);
            VariantClear(&elenco);
        }
        rifiuta(diTipo(VT_ARRAY | unsigned{tipo}), 13); // no array behind it
    }
}

TEST_F(OspiteOstile, ObjectsThatFailAreErrorsAndAreNotKept) {
    for (const HRESULT codice :
         {E_FAIL, E_NOTIMPL, DISP_E_EXCEPTION, DISP_E_TYPEMISMATCH, RPC_E_DISCONNECTED}) {
        OggettoInutile inutile(codice);
        VARIANT valore = diTipo(VT_DISPATCH);
        V_DISPATCH(&valore) = &inutile;
        const Esito testo = scrivi(idCaption, valore);
        EXPECT_EQ(testo.codice, DISP_E_EXCEPTION);
        EXPECT_TRUE(FAILED(testo.eccezione));
        EXPECT_FALSE(testo.descrizione.empty());
        EXPECT_EQ(titolo(), "prima");
        const Esito recordset = scrivi(idRecordset, valore, DISPATCH_PROPERTYPUTREF);
        EXPECT_EQ(recordset.eccezione, static_cast<HRESULT>(0x800A000D));
        EXPECT_EQ(inutile.riferimenti, 1U);
    }
}

TEST_F(OspiteOstile, NoObjectIsNoText) {
    for (const unsigned tipo : {unsigned{VT_DISPATCH}, unsigned{VT_UNKNOWN}}) {
        const Esito esito = scrivi(idCaption, diTipo(tipo));
        EXPECT_EQ(esito.codice, DISP_E_EXCEPTION);
        EXPECT_TRUE(FAILED(esito.eccezione));
    }
    EXPECT_EQ(titolo(), "prima");
}

TEST_F(OspiteOstile, OnlyObjectsGoIntoARecordsetProperty) {
    VARIANT numero = diTipo(VT_I4);
    V_I4(&numero) = 5;
    for (const VARIANT& valore :
         {numero, diTipo(VT_EMPTY), diTipo(VT_NULL), diTipo(VT_BSTR), diTipo(VT_ARRAY | VT_I4)})
        EXPECT_EQ(scrivi(idRecordset, valore, DISPATCH_PROPERTYPUTREF).eccezione,
                  static_cast<HRESULT>(0x800A000D))
            << V_VT(&valore);
    EXPECT_EQ(scrivi(idRecordset, diTipo(VT_DISPATCH), DISPATCH_PROPERTYPUTREF).codice,
              S_OK); // Nothing
    EXPECT_EQ(scrivi(idRecordset, diTipo(VT_UNKNOWN), DISPATCH_PROPERTYPUTREF).codice, S_OK);
}

TEST_F(OspiteOstile, TextsOfAnyLengthAndContentComeBackWhole) {
    std::vector<std::wstring> testi = {std::wstring(1 << 20, L'x'), std::wstring(L"a\0b", 3),
                                       L"\u00E8 \u20AC \u4E2D"};
    for (const std::wstring& testo : testi) {
        BSTR prestato = SysAllocStringLen(testo.data(), static_cast<UINT>(testo.size()));
        EXPECT_EQ(oggetto_->put_User(prestato), S_OK);
        SysFreeString(prestato);
        BSTR letto = nullptr;
        EXPECT_EQ(oggetto_->get_User(&letto), S_OK);
        EXPECT_TRUE(std::wstring(letto, SysStringLen(letto)) == testo) << testo.size();
        SysFreeString(letto);
    }
    // Half a character: read as something, and no failure.
    BSTR mezzo = SysAllocStringLen(L"\xD800", 1);
    EXPECT_EQ(oggetto_->put_User(mezzo), S_OK);
    SysFreeString(mezzo);
}

TEST_F(OspiteOstile, NumbersThatAreNoNumbersAreTextsOrErrors) {
    VARIANT valore = diTipo(VT_R8);
    for (const double numero : {std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity(), -1.7e308, 4.9e-324}) {
        V_R8(&valore) = numero;
        const HRESULT codice = scrivi(idCaption, valore).codice;
        EXPECT_TRUE(codice == S_OK || codice == DISP_E_EXCEPTION);
    }
    valore = diTipo(VT_DATE);
    V_DATE(&valore) = 1e300;
    const HRESULT codice = scrivi(idCaption, valore).codice;
    EXPECT_TRUE(codice == S_OK || codice == DISP_E_EXCEPTION);
}

TEST_F(OspiteOstile, IdentifiersThatAreNoMembersAreToldByTheirCode) {
    DISPPARAMS nessuno{};
    constexpr DISPID estremi[] = {std::numeric_limits<DISPID>::min(),
                                  std::numeric_limits<DISPID>::max(),
                                  0x68030019,
                                  0x60030000,
                                  -32768,
                                  DISPID_VALUE,
                                  DISPID_UNKNOWN,
                                  DISPID_NEWENUM,
                                  DISPID_EVALUATE,
                                  DISPID_PROPERTYPUT};
    for (const DISPID id : estremi)
        for (const WORD modo :
             {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF})
            EXPECT_EQ(invoca(id, modo, &nessuno).codice, DISP_E_MEMBERNOTFOUND) << id;
}

TEST_F(OspiteOstile, ArgumentListsThatDoNotAddUpAreToldByTheirCode) {
    VARIANT valori[3] = {diTipo(VT_EMPTY), diTipo(VT_EMPTY), diTipo(VT_EMPTY)};
    DISPID nomi[2] = {DISPID_PROPERTYPUT, 7};
    DISPID ignoto = 7;
    std::array<DISPPARAMS, 7> elenchi = {{{valori, nomi, 3, 1},
                                          {valori, nomi, 1, 2},
                                          {valori, &ignoto, 1, 1},
                                          {nullptr, nullptr, 1, 0},
                                          {valori, nullptr, 1, 1},
                                          {nullptr, nomi, 0, 1},
                                          {valori, nomi, 0xFFFFFFFF, 0}}};
    for (DISPPARAMS& elenco : elenchi)
        for (const WORD modo : {DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_METHOD})
            EXPECT_TRUE(FAILED(invoca(idCaption, modo, &elenco).codice))
                << &elenco - elenchi.data();
    EXPECT_EQ(invoca(idCaption, DISPATCH_PROPERTYGET, nullptr).codice, E_INVALIDARG);
    DISPPARAMS nessuno{};
    EXPECT_TRUE(FAILED(invoca(idCaption, 0, &nessuno).codice));
    EXPECT_TRUE(FAILED(invoca(idCaption, 0xFFFF, &nessuno).codice));
    EXPECT_EQ(titolo(), "prima");
}

TEST_F(OspiteOstile, PlacesForResultsThatAreMissingAreToldByTheirCode) {
    EXPECT_EQ(oggetto_->get_Caption(nullptr), E_POINTER);
    EXPECT_EQ(oggetto_->get_SoloRicerca(nullptr), E_POINTER);
    EXPECT_EQ(oggetto_->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(oggetto_->GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(oggetto_->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(oggetto_->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr), E_POINTER);
    LPOLESTR senzaNome[] = {nullptr};
    DISPID id = 0;
    EXPECT_TRUE(FAILED(oggetto_->GetIDsOfNames(IID_NULL, senzaNome, 1, 0, &id)));
    DISPPARAMS nessuno{};
    EXPECT_EQ(oggetto_->Invoke(idCaption, IID_NULL, 0, DISPATCH_PROPERTYGET, &nessuno, nullptr,
                               nullptr, nullptr),
              S_OK);
}

} // namespace
} // namespace norvel::tests
