#include "tests/component/com/Dll.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace norvel::tests {
namespace {

using com::ComPtr;

TEST(Modulo, HasOneClassAndDoesNotAggregate) {
    const Dll dll;
    ComPtr<IClassFactory> fabbrica;
    EXPECT_EQ(dll.fabbrica(fabbrica, IID_IUnknown), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_FALSE(fabbrica);
    ASSERT_EQ(dll.fabbrica(fabbrica), S_OK);
    const ComPtr<_Ricerca> oggetto = dll.crea();
    ComPtr<IUnknown> dentro;
    EXPECT_EQ(fabbrica->CreateInstance(oggetto.get(), IID_IUnknown,
                                       reinterpret_cast<void**>(dentro.put())),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(
        fabbrica->CreateInstance(nullptr, IID_IPersist, reinterpret_cast<void**>(dentro.put())),
        E_NOINTERFACE);
    EXPECT_FALSE(dentro);
}

TEST(Modulo, MayGoWhileNothingNeedsIt) {
    const Dll dll;
    EXPECT_TRUE(dll.scaricabile());
    ComPtr<IClassFactory> fabbrica;
    ASSERT_EQ(dll.fabbrica(fabbrica), S_OK);
    EXPECT_FALSE(dll.scaricabile());
    fabbrica->LockServer(TRUE);
    ComPtr<IClassFactory> lasciata = std::move(fabbrica);
    lasciata = {};
    EXPECT_FALSE(dll.scaricabile());
    ASSERT_EQ(dll.fabbrica(fabbrica), S_OK);
    fabbrica->LockServer(FALSE);
    fabbrica = {};
    EXPECT_TRUE(dll.scaricabile());

    ComPtr<_Ricerca> oggetto = dll.crea();
    ASSERT_TRUE(oggetto);
    EXPECT_FALSE(dll.scaricabile());
    BSTR versione = nullptr;
    EXPECT_EQ(oggetto->get_Ver(&versione), S_OK); // reading stores nothing
    SysFreeString(versione);
    oggetto = {};
    EXPECT_TRUE(dll.scaricabile());
}

TEST(Modulo, StaysOnceTheSessionHoldsSomething) {
    const Dll dll;
    ComPtr<_Ricerca> oggetto = dll.crea();
    ASSERT_TRUE(oggetto);
    EXPECT_EQ(oggetto->put_SoloRicerca(VARIANT_FALSE), S_OK);
    oggetto = {};
    EXPECT_FALSE(dll.scaricabile());
    // Even a host that unloads it without asking finds the session again.
    const HMODULE modulo = GetModuleHandleW(dll.percorso().c_str());
    ASSERT_NE(modulo, nullptr);
    for (int i = 0; i < 3; ++i)
        FreeLibrary(modulo);
    EXPECT_EQ(GetModuleHandleW(dll.percorso().c_str()), modulo);
}

// The toolkit's threads, hooks and window classes point into the DLL, however far its start came.
TEST(Modulo, StaysOnceTheWindowIsAskedFor) {
    const Dll dll;
    ComPtr<_Ricerca> oggetto = dll.crea();
    ASSERT_TRUE(oggetto);
    oggetto->abilitaCombo();
    oggetto = {};
    EXPECT_FALSE(dll.scaricabile());
}

// The names of the libraries that a loaded module was linked with.
std::vector<std::string> importazioniDi(HMODULE modulo) {
    const auto* base = reinterpret_cast<const char*>(modulo);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* intestazione = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& tabella = intestazione->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* riga =
        reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + tabella.VirtualAddress);
    std::vector<std::string> nomi;
    for (; riga->Name != 0; ++riga) {
        std::string nome = base + riga->Name;
        CharLowerA(nome.data());
        nomi.push_back(nome.substr(0, nome.find('.')));
    }
    return nomi;
}

TEST(Modulo, NeedsOnlyWhatWindowsBrings) {
    const std::set<std::string> diWindows = {
        "advapi32", "comctl32", "comdlg32", "gdi32",   "gdiplus", "imm32",    "kernel32", "msimg32",
        "msvcrt",   "normaliz", "odbc32",   "ole32",   "oleacc",  "oleaut32", "rpcrt4",   "shell32",
        "shlwapi",  "user32",   "uxtheme",  "version", "winmm",   "winspool"};
    const Dll dll;
    const auto importate = importazioniDi(GetModuleHandleW(dll.percorso().c_str()));
    EXPECT_GT(importate.size(), 5U);
    for (const std::string& nome : importate)
        EXPECT_TRUE(diWindows.contains(nome)) << nome;
}

TEST(Modulo, CarriesItsVersion) {
    const std::wstring percorso = percorsoDllDiProva().wstring();
    DWORD ignorato = 0;
    std::vector<char> dati(GetFileVersionInfoSizeW(percorso.c_str(), &ignorato));
    ASSERT_FALSE(dati.empty());
    ASSERT_TRUE(
        GetFileVersionInfoW(percorso.c_str(), 0, static_cast<DWORD>(dati.size()), dati.data()));
    void* trovato = nullptr;
    UINT lunghezza = 0;
    ASSERT_TRUE(VerQueryValueW(dati.data(), L"\\", &trovato, &lunghezza));
    const auto* versione = static_cast<const VS_FIXEDFILEINFO*>(trovato);
    EXPECT_EQ(versione->dwFileVersionMS, 0x00010000U);
    EXPECT_EQ(versione->dwFileVersionLS, 94U);
    ASSERT_TRUE(VerQueryValueW(dati.data(), L"\\StringFileInfo\\041004B0\\FileVersion", &trovato,
                               &lunghezza));
    EXPECT_EQ(std::wstring(static_cast<const wchar_t*>(trovato)), L"1.0.0.94");
}

} // namespace
} // namespace norvel::tests
