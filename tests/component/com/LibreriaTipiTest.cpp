#include "component/TabellaMembri.h"
#include "tests/component/com/Dll.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel::tests {
namespace {

using com::ComPtr;

// One entry of the dual interface, as the member table implies it and as the type library tells it.
struct Voce {
    std::string nome;
    DispId id;
    int modo;
    VARTYPE tipo; // of the argument, or of the result
    bool operator==(const Voce&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Voce& voce) {
    return out << voce.nome << " " << std::hex << voce.id << " " << voce.modo << " " << voce.tipo;
}

VARTYPE tipoAutomazione(TipoMembro tipo) {
    switch (tipo) {
    case TipoMembro::Testo:
        return VT_BSTR;
    case TipoMembro::Booleano:
        return VT_BOOL;
    case TipoMembro::Recordset:
        return VT_DISPATCH;
    case TipoMembro::Variante:
        return VT_VARIANT;
    case TipoMembro::Nessuno:
        return VT_VOID;
    }
    return VT_ILLEGAL;
}

std::vector<Voce> vociDellaTabella() {
    std::vector<Voce> voci;
    for (const Membro& membro : tabellaMembri())
        for (const int modo : {modoMetodo, modoGet, modoLet, modoSet})
            if ((membro.modi & static_cast<unsigned>(modo)) != 0)
                voci.push_back(
                    {std::string(membro.nome), membro.id, modo, tipoAutomazione(membro.tipo)});
    return voci;
}

std::string nomeDi(ITypeInfo& tipo, MEMBERID id) {
    BSTR nome = nullptr;
    UINT numero = 0;
    EXPECT_EQ(tipo.GetNames(id, &nome, 1, &numero), S_OK);
    std::string testo = com::textOf(nome);
    SysFreeString(nome);
    return testo;
}

// The automation view of a dual interface: results stand where a method's result stands.
Voce voceDi(ITypeInfo& tipo, UINT indice) {
    FUNCDESC* funzione = nullptr;
    EXPECT_EQ(tipo.GetFuncDesc(indice, &funzione), S_OK);
    const bool scrive = funzione->cParams == 1;
    const ELEMDESC& elemento = scrive ? funzione->lprgelemdescParam[0] : funzione->elemdescFunc;
    Voce voce{nomeDi(tipo, funzione->memid), funzione->memid, funzione->invkind, elemento.tdesc.vt};
    tipo.ReleaseFuncDesc(funzione);
    return voce;
}

class LibreriaTipi : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(LoadTypeLibEx(percorsoDllDiProva().c_str(), REGKIND_NONE, libreria_.put()), S_OK);
    }
    ComPtr<ITypeInfo> tipo(REFGUID id) {
        ComPtr<ITypeInfo> trovato;
        EXPECT_EQ(libreria_->GetTypeInfoOfGuid(id, trovato.put()), S_OK);
        return trovato;
    }
    ComPtr<ITypeLib> libreria_;
};

TEST_F(LibreriaTipi, InterfaceIsTheMemberTableInItsOrder) {
    const ComPtr<ITypeInfo> interfaccia = tipo(com::idInterfaccia);
    TYPEATTR* attributi = nullptr;
    ASSERT_EQ(interfaccia->GetTypeAttr(&attributi), S_OK);
    EXPECT_EQ(attributi->typekind, TKIND_DISPATCH);
    EXPECT_NE(attributi->wTypeFlags & TYPEFLAG_FDUAL, 0);
    constexpr UINT ereditate = 7; // IUnknown's and IDispatch's own
    std::vector<Voce> voci;
    for (UINT indice = ereditate; indice < attributi->cFuncs; ++indice)
        voci.push_back(voceDi(*interfaccia.get(), indice));
    interfaccia->ReleaseTypeAttr(attributi);
    EXPECT_EQ(voci, vociDellaTabella());
}

TEST_F(LibreriaTipi, EntriesOfTheInterfaceStandOneAfterTheOther) {
    const ComPtr<ITypeInfo> automazione = tipo(com::idInterfaccia);
    HREFTYPE riferimento = 0;
    ComPtr<ITypeInfo> interfaccia; // the face for early binding
    ASSERT_EQ(automazione->GetRefTypeOfImplType(static_cast<UINT>(-1), &riferimento), S_OK);
    ASSERT_EQ(automazione->GetRefTypeInfo(riferimento, interfaccia.put()), S_OK);
    const std::size_t numero = vociDellaTabella().size();
    for (UINT indice = 0; indice < numero; ++indice) {
        FUNCDESC* funzione = nullptr;
        ASSERT_EQ(interfaccia->GetFuncDesc(indice, &funzione), S_OK);
        EXPECT_EQ(funzione->oVft, static_cast<SHORT>((7 + indice) * sizeof(void*)));
        EXPECT_EQ(funzione->memid, vociDellaTabella()[indice].id);
        interfaccia->ReleaseFuncDesc(funzione);
    }
}

TEST_F(LibreriaTipi, KeepsItsIdentifiers) {
    TLIBATTR* attributi = nullptr;
    ASSERT_EQ(libreria_->GetLibAttr(&attributi), S_OK);
    EXPECT_TRUE(attributi->guid == com::idLibreria);
    EXPECT_EQ(attributi->wMajorVerNum, 1);
    EXPECT_EQ(attributi->wMinorVerNum, 0);
    libreria_->ReleaseTLibAttr(attributi);
    const auto testo = [](const GUID& id) {
        wchar_t spazio[39];
        StringFromGUID2(id, spazio, 39);
        return std::wstring(spazio);
    };
    EXPECT_EQ(testo(com::idLibreria), L"{146A34E5-90C0-450B-84EA-F02F0FA9B83D}");
    EXPECT_EQ(testo(com::idClasse), L"{466D9F72-EE4D-41CD-B43C-2B86055D530B}");
    EXPECT_EQ(testo(com::idInterfaccia), L"{0D795A52-0972-42DC-B591-3C829ADC6A7B}");
}

TEST_F(LibreriaTipi, ClassRicercaHasTheInterfaceAsItsDefault) {
    const ComPtr<ITypeInfo> classe = tipo(com::idClasse);
    BSTR nome = nullptr;
    ASSERT_EQ(classe->GetDocumentation(MEMBERID_NIL, &nome, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(com::textOf(nome), "Ricerca");
    SysFreeString(nome);
    HREFTYPE riferimento = 0;
    ComPtr<ITypeInfo> interfaccia;
    ASSERT_EQ(classe->GetRefTypeOfImplType(0, &riferimento), S_OK);
    ASSERT_EQ(classe->GetRefTypeInfo(riferimento, interfaccia.put()), S_OK);
    TYPEATTR* attributi = nullptr;
    ASSERT_EQ(interfaccia->GetTypeAttr(&attributi), S_OK);
    EXPECT_TRUE(attributi->guid == com::idInterfaccia);
    interfaccia->ReleaseTypeAttr(attributi);
    int segni = 0;
    ASSERT_EQ(classe->GetImplTypeFlags(0, &segni), S_OK);
    EXPECT_EQ(segni, IMPLTYPEFLAG_FDEFAULT);
}

} // namespace
} // namespace norvel::tests
