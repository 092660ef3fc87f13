#include "tests/component/com/Dll.h"

#include <gtest/gtest.h>

#include <sddl.h>
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
        if (macchina_.empty()) leggiRegistro();
    }
    void TearDown() override { CoUninitialize(); }

    // Once: every test leaves the registry as it was. Reading all of it takes a while.
    static void leggiRegistro() {
        HKEY utente = nullptr; // which Windows gives every user
        RegCreateKeyExW(HKEY_CURRENT_USER, classi, 0, nullptr, 0, KEY_READ, nullptr, &utente,
                        nullptr);
        RegCloseKey(utente);
        macchina_ = registro(HKEY_LOCAL_MACHINE);
        utente_ = registro(HKEY_CURRENT_USER);
    }

    static HRESULT creaPerNome(ComPtr<_Ricerca>& oggetto) {
        CLSID classe{};
        const HRESULT esito = CLSIDFromProgID(com::progId, &classe);
        if (FAILED(esito)) return esito;
        return CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, com::idInterfaccia,
                                reinterpret_cast<void**>(oggetto.put()));
    }

    Dll dll_;
    static inline std::vector<std::wstring> macchina_; // before
    static inline std::vector<std::wstring> utente_;
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

// --- without rights to the machine ---

constexpr wchar_t chiaveNome[] = L"Software\\Classes\\NorvelRicerca.Ricerca";
constexpr wchar_t chiaveInterfaccia[] =
    L"Software\\Classes\\Interface\\{0D795A52-0972-42DC-B591-3C829ADC6A7B}";

// A key of the machine that everybody may read and nobody write (neither values nor keys) while
// this lives. Removed at the end, with those above it that it made.
class ChiaveNegata {
  public:
    explicit ChiaveNegata(const wchar_t* chiave) : chiave_(chiave) {
        PSECURITY_DESCRIPTOR regole = nullptr;
        HKEY aperta = nullptr;
        EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
            L"D:(D;;0x6;;;WD)(A;;KA;;;WD)", SDDL_REVISION_1, &regole, nullptr));
        EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, chiave, 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, &aperta, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegSetKeySecurity(aperta, DACL_SECURITY_INFORMATION, regole), ERROR_SUCCESS);
        RegCloseKey(aperta);
        LocalFree(regole);
    }
    ~ChiaveNegata() {
        for (std::wstring chiave = chiave_;
             RegDeleteKeyW(HKEY_LOCAL_MACHINE, chiave.c_str()) == ERROR_SUCCESS;) {
            chiave.resize(chiave.find_last_of(L'\\'));
            if (chiave.ends_with(L"Interface") || chiave.ends_with(L"Classes")) return;
        }
    }
    ChiaveNegata(const ChiaveNegata&) = delete;
    ChiaveNegata& operator=(const ChiaveNegata&) = delete;

  private:
    std::wstring chiave_;
};

// Windows shows the user's classes over the machine's; Wine has no such view, so the user's rows
// stand beside the machine's for a while.
class ClassiDelUtente {
  public:
    ClassiDelUtente() {
        HKEY utente = nullptr;
        HKEY macchina = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, classi, 0, KEY_READ, &utente), ERROR_SUCCESS);
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, classi, 0, KEY_ALL_ACCESS, &macchina),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegCopyTreeW(utente, nullptr, macchina), ERROR_SUCCESS);
        RegCloseKey(utente);
        RegCloseKey(macchina);
    }
};

TEST_F(Registrazione, WithoutRightsToTheMachineItIsForTheUserAloneAndHostsFindIt) {
    {
        const ChiaveNegata negata(chiaveNome);
        ASSERT_EQ(dll_.registra(), S_OK);
    }
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
    const auto soloUtente = registro(HKEY_CURRENT_USER);
    EXPECT_GT(soloUtente.size(), utente_.size());

    const ClassiDelUtente viste;
    ComPtr<_Ricerca> oggetto;
    EXPECT_EQ(creaPerNome(oggetto), S_OK);
    EXPECT_TRUE(oggetto);
    ComPtr<ITypeLib> libreria;
    EXPECT_EQ(LoadRegTypeLib(com::idLibreria, 1, 0, 0, libreria.put()), S_OK);

    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
    EXPECT_EQ(registro(HKEY_CURRENT_USER), utente_);
}

TEST_F(Registrazione, RightsThatEndHalfwayLeaveNothingWithTheMachine) {
    {
        const ChiaveNegata negata(chiaveInterfaccia);
        const auto prima = registro(HKEY_LOCAL_MACHINE);
        EXPECT_EQ(dll_.registra(), S_OK);
        EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), prima);
    }
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
    EXPECT_GT(registro(HKEY_CURRENT_USER).size(), utente_.size());
    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(registro(HKEY_CURRENT_USER), utente_);
}

// The user's rows would hide the machine's from that user, and with them every later upgrade.
TEST_F(Registrazione, ForTheMachineTakesAwayAnEarlierOneForTheUser) {
    {
        const ChiaveNegata negata(chiaveNome);
        ASSERT_EQ(dll_.registra(), S_OK);
    }
    ASSERT_EQ(dll_.registra(), S_OK);
    EXPECT_EQ(registro(HKEY_CURRENT_USER), utente_);
    EXPECT_GT(registro(HKEY_LOCAL_MACHINE).size(), macchina_.size());
    EXPECT_EQ(dll_.annulla(), S_OK);
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
}

TEST_F(Registrazione, TakingTheMachinesAwayWithoutRightsIsAnErrorThatSaysSo) {
    ASSERT_EQ(dll_.registra(), S_OK);
    {
        const ChiaveNegata negata(chiaveInterfaccia);
        EXPECT_EQ(dll_.annulla(), E_ACCESSDENIED);
    }
    dll_.annulla();
    EXPECT_EQ(registro(HKEY_LOCAL_MACHINE), macchina_);
}

} // namespace
} // namespace norvel::tests
