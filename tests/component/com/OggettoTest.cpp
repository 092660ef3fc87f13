#include "component/TabellaMembri.h"
#include "platform/adodb/ado/Dispatch.h"
#include "platform/runtime/WideText.h"
#include "tests/component/com/Dll.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel::tests {
namespace {

using com::ComPtr;
using com::OwnedVariant;

// Something of the host's that is counted, answers to one member's name, and has a default value.
class OggettoDelHost final : public IDispatch {
  public:
    explicit OggettoDelHost(const wchar_t* membro) : membro_(membro) {}
    ULONG riferimenti = 1;

    STDMETHODIMP QueryInterface(REFIID iid, void** faccia) override {
        const bool nota = iid == IID_IUnknown || iid == IID_IDispatch;
        *faccia = nota ? this : nullptr;
        if (nota) AddRef();
        return nota ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++riferimenti; }
    STDMETHODIMP_(ULONG) Release() override { return --riferimenti; }
    STDMETHODIMP GetTypeInfoCount(UINT* numero) override {
        *numero = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* nomi, UINT, LCID, DISPID* id) override {
        *id = std::wstring(nomi[0]) == membro_ ? 1 : DISPID_UNKNOWN;
        return *id == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* valore, EXCEPINFO*,
                        UINT*) override {
        if (id != DISPID_VALUE || membro_ != L"Value") return DISP_E_MEMBERNOTFOUND;
        V_VT(valore) = VT_I4;
        V_I4(valore) = 42;
        return S_OK;
    }

  private:
    std::wstring membro_;
};

class Automazione : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(oggetto_ = dll_.crea());
        tardi_ = com::DispatchObject(ComPtr<IDispatch>::keep(oggetto_.get()));
    }

    HRESULT invoca(DISPID id, WORD modo, std::vector<VARIANT> valori, EXCEPINFO* eccezione,
                   VARIANT* risultato = nullptr) {
        DISPID scritto = DISPID_PROPERTYPUT;
        const bool scrive = (modo & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        DISPPARAMS argomenti{valori.data(), scrive ? &scritto : nullptr,
                             static_cast<UINT>(valori.size()), scrive ? 1U : 0U};
        return oggetto_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, modo, &argomenti, risultato,
                                eccezione, nullptr);
    }

    Dll dll_;
    ComPtr<_Ricerca> oggetto_;
    com::DispatchObject tardi_;
};

VARIANT intero(LONG valore) {
    VARIANT v;
    V_VT(&v) = VT_I4;
    V_I4(&v) = valore;
    return v;
}

VARIANT riferimentoA(IDispatch* oggetto) {
    VARIANT v;
    V_VT(&v) = VT_DISPATCH;
    V_DISPATCH(&v) = oggetto;
    return v;
}

TEST_F(Automazione, GivesEachMembersIdentifierForItsNameInAnyCase) {
    for (const Membro& membro : tabellaMembri()) {
        for (const bool maiuscolo : {false, true}) {
            std::wstring nome = wideText(membro.nome);
            if (maiuscolo) CharUpperW(nome.data());
            LPOLESTR nomi[] = {nome.data()};
            DISPID id = 0;
            EXPECT_EQ(oggetto_->GetIDsOfNames(IID_NULL, nomi, 1, LOCALE_USER_DEFAULT, &id), S_OK);
            EXPECT_EQ(id, membro.id) << membro.nome;
        }
    }
    wchar_t ignoto[] = L"QuelCheNonCe";
    LPOLESTR nomi[] = {ignoto};
    DISPID id = 0;
    EXPECT_EQ(oggetto_->GetIDsOfNames(IID_NULL, nomi, 1, LOCALE_USER_DEFAULT, &id),
              DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
}

TEST_F(Automazione, EarlyAndLateBindingReachTheSameValue) {
    tardi_.put(L"Caption", com::textArgument("Ricerca città"));
    BSTR letto = nullptr;
    EXPECT_EQ(oggetto_->get_Caption(&letto), S_OK);
    EXPECT_EQ(com::textOf(letto), "Ricerca città");
    SysFreeString(letto);
    BSTR scritto = com::newBstr("1");
    EXPECT_EQ(oggetto_->put_WindowsState(scritto), S_OK);
    SysFreeString(scritto);
    EXPECT_EQ(tardi_.text(L"WindowsState"), "1");
    VARIANT_BOOL multipla = VARIANT_FALSE;
    EXPECT_EQ(oggetto_->get_SelezioneMultipla(&multipla), S_OK);
    EXPECT_EQ(multipla, VARIANT_TRUE); // WindowsState as a Boolean
    EXPECT_EQ(tardi_.text(L"Ver"), "1.000.094");
}

TEST_F(Automazione, ANullTextIsTheEmptyOne) {
    EXPECT_EQ(oggetto_->put_User(nullptr), S_OK);
    EXPECT_EQ(tardi_.text(L"User"), "");
}

TEST_F(Automazione, LetConvertsAsAutomationDoes) {
    EXPECT_EQ(invoca(0x68030006, DISPATCH_PROPERTYPUT, {intero(9000)}, nullptr), S_OK);
    EXPECT_EQ(tardi_.text(L"Width"), "9000");
    LONG variabile = 8000;
    VARIANT perRiferimento;
    V_VT(&perRiferimento) = VT_BYREF | VT_I4;
    V_I4REF(&perRiferimento) = &variabile;
    EXPECT_EQ(invoca(0x68030006, DISPATCH_PROPERTYPUT, {perRiferimento}, nullptr), S_OK);
    EXPECT_EQ(tardi_.text(L"Width"), "8000");
}

TEST_F(Automazione, AnObjectStandsForItsDefaultValueWhereATextIsWanted) {
    OggettoDelHost campo(L"Value");
    EXPECT_EQ(invoca(0x68030003, DISPATCH_PROPERTYPUT, {riferimentoA(&campo)}, nullptr), S_OK);
    EXPECT_EQ(tardi_.text(L"CampoRicerca"), "42");
    VARIANT variabile = riferimentoA(&campo);
    VARIANT perRiferimento;
    V_VT(&perRiferimento) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&perRiferimento) = &variabile;
    EXPECT_EQ(invoca(0x6803000C, DISPATCH_PROPERTYPUT, {perRiferimento}, nullptr), S_OK);
    EXPECT_EQ(tardi_.text(L"Caption"), "42");
    EXPECT_EQ(campo.riferimenti, 1U);
}

TEST_F(Automazione, TellsTheHostsMistakesByTheirOwnCodes) {
    EXPECT_EQ(invoca(0x68030013, DISPATCH_PROPERTYPUT, {intero(1)}, nullptr),
              DISP_E_MEMBERNOTFOUND); // Ver can only be read
    EXPECT_EQ(invoca(0x68030018, DISPATCH_PROPERTYGET, {}, nullptr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoca(0x12345678, DISPATCH_PROPERTYGET, {}, nullptr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoca(0x68030002, DISPATCH_PROPERTYPUT, {intero(1)}, nullptr),
              DISP_E_MEMBERNOTFOUND); // Recordset wants Set
    EXPECT_EQ(invoca(0x68030013, DISPATCH_PROPERTYGET, {intero(1)}, nullptr), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(invoca(0x68030006, DISPATCH_PROPERTYPUT, {}, nullptr), DISP_E_BADPARAMCOUNT);
}

TEST_F(Automazione, AFailureComesAsAnExceptionWithItsNumberAndText) {
    OggettoDelHost altro(L"Altro");
    EXCEPINFO eccezione{};
    EXPECT_EQ(invoca(0x68030002, DISPATCH_PROPERTYPUTREF, {riferimentoA(&altro)}, &eccezione),
              DISP_E_EXCEPTION);
    EXPECT_EQ(eccezione.scode, static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(com::textOf(eccezione.bstrDescription), "Tipo non corrispondente");
    EXPECT_EQ(com::textOf(eccezione.bstrSource), "NorvelRicerca.Ricerca");
    SysFreeString(eccezione.bstrDescription);
    SysFreeString(eccezione.bstrSource);
    EXPECT_EQ(altro.riferimenti, 1U);
    // Without a place for it, the code alone.
    EXPECT_EQ(invoca(0x68030002, DISPATCH_PROPERTYPUTREF, {riferimentoA(&altro)}, nullptr),
              DISP_E_EXCEPTION);
}

TEST_F(Automazione, AFailureOfTheDualInterfaceLeavesItsTextWithTheThread) {
    OggettoDelHost altro(L"Altro");
    EXPECT_EQ(oggetto_->putref_Recordset(&altro), static_cast<HRESULT>(0x800A000D));
    ComPtr<IErrorInfo> informazioni;
    ASSERT_EQ(GetErrorInfo(0, informazioni.put()), S_OK);
    BSTR testo = nullptr;
    ASSERT_EQ(informazioni->GetDescription(&testo), S_OK);
    EXPECT_EQ(com::textOf(testo), "Tipo non corrispondente");
    SysFreeString(testo);
    const auto sostegno = oggetto_.as<ISupportErrorInfo>(IID_ISupportErrorInfo);
    ASSERT_TRUE(sostegno);
    EXPECT_EQ(sostegno->InterfaceSupportsErrorInfo(com::idInterfaccia), S_OK);
    EXPECT_EQ(sostegno->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
}

TEST_F(Automazione, KeepsOneCountedReferenceToARecordsetUntilItIsSetToNothing) {
    OggettoDelHost recordset(L"AbsolutePosition");
    EXPECT_EQ(oggetto_->putref_RecordsetViste(&recordset), S_OK);
    EXPECT_EQ(recordset.riferimenti, 2U);
    EXPECT_EQ(invoca(0x68030000, DISPATCH_PROPERTYPUTREF, {riferimentoA(&recordset)}, nullptr),
              S_OK);
    EXPECT_EQ(recordset.riferimenti, 2U);
    EXPECT_EQ(oggetto_->putref_RecordsetViste(nullptr), S_OK);
    EXPECT_EQ(recordset.riferimenti, 1U);
}

TEST_F(Automazione, ASecondObjectSharesTheSession) {
    tardi_.put(L"Modulo", com::textArgument("Clienti"));
    const com::DispatchObject altro(ComPtr<IDispatch>::keep(dll_.crea().get()));
    EXPECT_EQ(altro.text(L"Modulo"), "Clienti");
}

TEST_F(Automazione, DescribesItself) {
    UINT numero = 0;
    EXPECT_EQ(oggetto_->GetTypeInfoCount(&numero), S_OK);
    EXPECT_EQ(numero, 1U);
    ComPtr<ITypeInfo> tipo;
    EXPECT_EQ(oggetto_->GetTypeInfo(0, LOCALE_USER_DEFAULT, tipo.put()), S_OK);
    EXPECT_EQ(oggetto_->GetTypeInfo(1, LOCALE_USER_DEFAULT, tipo.put()), DISP_E_BADINDEX);
    const auto descrizione = oggetto_.as<IProvideClassInfo>(IID_IProvideClassInfo);
    ASSERT_TRUE(descrizione);
    ASSERT_EQ(descrizione->GetClassInfo(tipo.put()), S_OK);
    TYPEATTR* attributi = nullptr;
    ASSERT_EQ(tipo->GetTypeAttr(&attributi), S_OK);
    EXPECT_EQ(attributi->typekind, TKIND_COCLASS);
    EXPECT_TRUE(attributi->guid == com::idClasse);
    tipo->ReleaseTypeAttr(attributi);
}

TEST_F(Automazione, EveryFaceIsTheSameObject) {
    const auto primo = oggetto_.as<IUnknown>(IID_IUnknown);
    const auto secondo = oggetto_.as<IProvideClassInfo>(IID_IProvideClassInfo);
    ASSERT_TRUE(secondo);
    EXPECT_EQ(secondo.as<IUnknown>(IID_IUnknown).get(), primo.get());
    EXPECT_EQ(secondo.as<IDispatch>(IID_IDispatch).get(), oggetto_.get());
    EXPECT_FALSE(oggetto_.as<IPersist>(IID_IPersist));
}

} // namespace
} // namespace norvel::tests
