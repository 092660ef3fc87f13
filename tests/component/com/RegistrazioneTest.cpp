#include "tests/component/com/Dll.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel::tests {
namespace {

using com::ComPtr;

constexpr wchar_t classi[] = L"Software\\Classes";

// Every key and value below a key, in the registry's order.
void elenca(HKEY radice, const std::wstring& chiave, std::vector<std::wstring>& righe) {
    HKEY aperta = nullptr;
    if (RegOpenKeyExW(radice, chiave.c_str(), 0, KEY_READ, &aperta) != ERROR_SUCCESS) return;
    righe.push_back(chiave);
    wchar_t nome[512];
    BYTE dati[2048];
    for (DWORD i = 0;; ++i) {
        DWORD lungoNome = 512;
        DWORD lungoDati = sizeof dati;
        DWORD tipo = 0;
        if (RegEnumValueW(aperta, i, nome, &lungoNome, nullptr, &tipo, dati, &lungoDati) != 0)
            break;
        righe.push_back(
            chiave + L"|" + nome + L"|" +
            std::wstring(reinterpret_cast<wchar_t*>(dati), lungoDati / sizeof(wchar_t)));
    }
    for (DWORD i = 0;; ++i) {
        DWORD lungoNome = 512;
        if (RegEnumKeyExW(aperta, i, nome, &lungoNome, nullptr, nullptr, nullptr, nullptr) != 0)
            break;
        elenca(radice, chiave + L"\\" + nome, righe);
    }
    RegCloseKey(aperta);
}

std::vector<std::wstring> registro(HKEY radice) {
    std::vector<std::wstring> righe;
    elenca(radice, classi, righe);
    return righe;
}

class Registrazione : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        macchina_ = registro(HKEY_LOCAL_MACHINE);
        utente_ = registro(HKEY_CURRENT_USER);
    }
    void TearDown() override { CoUninitialize(); }

    static HRESULT creaPerNome(ComPtr<_Ricerca>& oggetto) {
        CLSID classe{};
        const HRESULT esito = CLSIDFromProgID(com::progId, &classe);
        if (FAILED(esito)) return esito;
        return CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, com::idInterfaccia,
                                reinterpret_cast<void**>(oggetto.put()));
    }

    Dll dll_;
    std::vector<std::wstring> macchina_; // before
    std::vector<std::wstring> utente_;
};

TEST_F(Registrazione, AHostCreatesTheClassByNameAndNothingIsLeftAfterwards) {
    ComPtr<_Ricerca> oggetto;
    EXPECT_TRUE(FAILED(creaPerNome(oggetto)));
    ASSERT_EQ(dll_.registra(), S_OK);
    EXPECT_EQ(creaPerNome(oggetto), S_OK);
    EXPECT_TRUE(oggetto);
    ComPtr<ITypeLib> libreria;
    EXPECT_EQ(LoadRegTypeLib(com::idLibreria, 1, 0, 0, libreria.put()), S_OK);
    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
    EXPECT_EQ(registro(HKEY_CURRENT_USER), utente_);
}

TEST_F(Registrazione, TwiceIsOnceAndTakingAwayTwiceIsNoError) {
    ASSERT_EQ(dll_.registra(), S_OK);
    const auto una = registro(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(dll_.registra(), S_OK);
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), una);
    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
}

TEST_F(Registrazione, TheLastRegisteredCopyIsTheOneThatHostsGet) {
    const Dll nuova;
    ASSERT_EQ(dll_.registra(), S_OK);
    ASSERT_EQ(nuova.registra(), S_OK);
    ComPtr<ITypeLib> libreria;
    BSTR percorso = nullptr;
    ASSERT_EQ(QueryPathOfRegTypeLib(com::idLibreria, 1, 0, 0, &percorso), S_OK);
    EXPECT_EQ(std::wstring(percorso).substr(0, nuova.percorso().wstring().size()),
              nuova.percorso().wstring());
    SysFreeString(percorso);
    EXPECT_EQ(nuova.annulla(), S_OK);
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
}

// What another program keeps below the component's keys is not the component's to take away.
TEST_F(Registrazione, LeavesWhatOthersWroteBelowItsKeys) {
    ASSERT_EQ(dll_.registra(), S_OK);
    const wchar_t estranea[] = L"Software\\Classes\\NorvelRicerca.Ricerca\\Estranea";
    HKEY chiave = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, estranea, 0, nullptr, 0, KEY_WRITE, nullptr,
                              &chiave, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(chiave);
    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, estranea, 0, KEY_READ, &chiave), ERROR_SUCCESS);
    RegCloseKey(chiave);
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, estranea);
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\NorvelRicerca.Ricerca");
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
}

} // namespace
} // namespace norvel::tests
