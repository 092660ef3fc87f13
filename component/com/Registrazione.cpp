#include "component/com/Registrazione.h"

#include "component/com/Identificatori.h"
#include "component/com/Modulo.h"

#include <algorithm>
#include <array>
#include <objbase.h>
#include <string>
#include <string_view>

namespace norvel::com {

namespace {

// Stand for what is known only here and now: the identifiers as the registry writes them, the DLL's
// path and its folder.
constexpr std::wstring_view classe = L"%CLASSE%";
constexpr std::wstring_view interfaccia = L"%INTERFACCIA%";
constexpr std::wstring_view libreria = L"%LIBRERIA%";
constexpr std::wstring_view percorso = L"%DLL%";
constexpr std::wstring_view cartella = L"%CARTELLA%";

struct Riga {
    const wchar_t* chiave; // below Software\Classes
    const wchar_t* nome;   // of the value; null: the key's own
    const wchar_t* dati;
    // Seen by programs of both widths, and so by the component of the other one. (Source: "Registry
    // Keys Affected by WOW64" of the Windows documentation: CLSID and Interface are kept apart.)
    bool condivisa;
};

// The marshaler that carries any interface described by a type library to another apartment.
#define MARSHALER_UNIVERSALE L"{00020424-0000-0000-C000-000000000046}"
#if defined(_WIN64)
#define SISTEMA L"win64"
#else
#define SISTEMA L"win32"
#endif

constexpr std::array righe = {
    Riga{L"NorvelRicerca.Ricerca", nullptr, L"NorvelRicerca.Ricerca", true},
    Riga{L"NorvelRicerca.Ricerca\\Clsid", nullptr, L"%CLASSE%", true},
    Riga{L"CLSID\\%CLASSE%", nullptr, L"NorvelRicerca.Ricerca", false},
    Riga{L"CLSID\\%CLASSE%\\InprocServer32", nullptr, L"%DLL%", false},
    Riga{L"CLSID\\%CLASSE%\\InprocServer32", L"ThreadingModel", L"Apartment", false},
    Riga{L"CLSID\\%CLASSE%\\ProgID", nullptr, L"NorvelRicerca.Ricerca", false},
    Riga{L"CLSID\\%CLASSE%\\Programmable", nullptr, L"", false},
    Riga{L"CLSID\\%CLASSE%\\TypeLib", nullptr, L"%LIBRERIA%", false},
    Riga{L"CLSID\\%CLASSE%\\VERSION", nullptr, L"1.0", false},
    Riga{L"Interface\\%INTERFACCIA%", nullptr, L"_Ricerca", false},
    Riga{L"Interface\\%INTERFACCIA%\\ProxyStubClsid32", nullptr, MARSHALER_UNIVERSALE, false},
    Riga{L"Interface\\%INTERFACCIA%\\TypeLib", nullptr, L"%LIBRERIA%", false},
    Riga{L"Interface\\%INTERFACCIA%\\TypeLib", L"Version", L"1.0", false},
    Riga{L"TypeLib\\%LIBRERIA%\\1.0", nullptr, L"NorvelRicerca", true},
    Riga{L"TypeLib\\%LIBRERIA%\\1.0\\FLAGS", nullptr, L"0", true},
    Riga{L"TypeLib\\%LIBRERIA%\\1.0\\HELPDIR", nullptr, L"%CARTELLA%", true},
    Riga{L"TypeLib\\%LIBRERIA%\\1.0\\0\\" SISTEMA, nullptr, L"%DLL%", false},
};

// The machine's keys for everybody's classes, which stay when they are empty. A user has them only
// with something below.
constexpr std::array<std::wstring_view, 3> chiaviDelSistema = {L"CLSID", L"Interface", L"TypeLib"};

bool restaVuota(HKEY radice, const std::wstring& chiave) {
    return radice == HKEY_LOCAL_MACHINE &&
           std::find(chiaviDelSistema.begin(), chiaviDelSistema.end(), chiave) !=
               chiaviDelSistema.end();
}

std::wstring testoDi(const GUID& id) {
    std::array<wchar_t, 39> testo{};
    StringFromGUID2(id, testo.data(), static_cast<int>(testo.size()));
    return testo.data();
}

std::wstring espandi(std::wstring testo) {
    const std::wstring dll = percorsoModulo();
    const std::array<std::pair<std::wstring_view, std::wstring>, 5> valori = {{
        {classe, testoDi(idClasse)},
        {interfaccia, testoDi(idInterfaccia)},
        {libreria, testoDi(idLibreria)},
        {percorso, dll},
        {cartella, dll.substr(0, dll.find_last_of(L'\\'))},
    }};
    for (const auto& [segno, valore] : valori)
        if (const std::size_t dove = testo.find(segno); dove != std::wstring::npos)
            return testo.replace(dove, segno.size(), valore);
    return testo;
}

std::wstring sottoClassi(const std::wstring& chiave) {
    return L"Software\\Classes\\" + chiave;
}

LSTATUS scrivi(HKEY radice, const Riga& riga) {
    HKEY chiave = nullptr;
    const LSTATUS esito = RegCreateKeyExW(radice, sottoClassi(espandi(riga.chiave)).c_str(), 0,
                                          nullptr, 0, KEY_SET_VALUE, nullptr, &chiave, nullptr);
    if (esito != ERROR_SUCCESS) return esito;
    const std::wstring dati = espandi(riga.dati);
    const LSTATUS scritto =
        RegSetValueExW(chiave, riga.nome, 0, REG_SZ, reinterpret_cast<const BYTE*>(dati.c_str()),
                       static_cast<DWORD>((dati.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(chiave);
    return scritto;
}

bool esiste(HKEY radice, const std::wstring& chiave, REGSAM vista = 0) {
    HKEY aperta = nullptr;
    if (RegOpenKeyExW(radice, chiave.c_str(), 0, KEY_READ | vista, &aperta) != ERROR_SUCCESS)
        return false;
    RegCloseKey(aperta);
    return true;
}

bool vuota(HKEY radice, const std::wstring& chiave) {
    HKEY aperta = nullptr;
    if (RegOpenKeyExW(radice, chiave.c_str(), 0, KEY_READ, &aperta) != ERROR_SUCCESS) return false;
    DWORD chiavi = 0;
    DWORD valori = 0;
    const LSTATUS esito = RegQueryInfoKeyW(aperta, nullptr, nullptr, nullptr, &chiavi, nullptr,
                                           nullptr, &valori, nullptr, nullptr, nullptr, nullptr);
    RegCloseKey(aperta);
    return esito == ERROR_SUCCESS && chiavi == 0 && valori == 0;
}

// The key, and those above it that are empty without it.
void potaVuote(HKEY radice, std::wstring chiave) {
    while (!restaVuota(radice, chiave) && vuota(radice, sottoClassi(chiave)) &&
           RegDeleteKeyW(radice, sottoClassi(chiave).c_str()) == ERROR_SUCCESS) {
        const std::size_t fine = chiave.find_last_of(L'\\');
        if (fine == std::wstring::npos) return;
        chiave.resize(fine);
    }
}

// What is not there is taken away already.
LSTATUS togli(HKEY radice, const Riga& riga) {
    const std::wstring chiave = espandi(riga.chiave);
    if (!esiste(radice, sottoClassi(chiave))) return ERROR_SUCCESS;
    HKEY aperta = nullptr;
    LSTATUS esito = RegOpenKeyExW(radice, sottoClassi(chiave).c_str(), 0, KEY_SET_VALUE, &aperta);
    if (esito != ERROR_SUCCESS) return esito;
    esito = RegDeleteValueW(aperta, riga.nome);
    RegCloseKey(aperta);
    potaVuote(radice, chiave);
    return esito == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : esito;
}

// On a Windows of 32 bits, which has one view only, this is asked when the own rows are gone.
bool altraLarghezzaRegistrata(HKEY radice) {
    constexpr REGSAM altraVista = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    return esiste(radice, sottoClassi(espandi(L"CLSID\\%CLASSE%\\InprocServer32")), altraVista);
}

LSTATUS togliTutte(HKEY radice) {
    LSTATUS primo = ERROR_SUCCESS;
    const auto togliSe = [&](bool condivise) {
        for (auto riga = righe.rbegin(); riga != righe.rend(); ++riga) {
            if (riga->condivisa != condivise) continue;
            const LSTATUS esito = togli(radice, *riga);
            if (primo == ERROR_SUCCESS) primo = esito;
        }
    };
    togliSe(false);
    if (!altraLarghezzaRegistrata(radice)) togliSe(true);
    return primo;
}

LSTATUS scriviTutte(HKEY radice) {
    for (const Riga& riga : righe) {
        const LSTATUS esito = scrivi(radice, riga);
        if (esito == ERROR_SUCCESS) continue;
        if (&riga != righe.begin()) togliTutte(radice);
        return esito;
    }
    return ERROR_SUCCESS;
}

} // namespace

HRESULT registra() {
    const LSTATUS esito = scriviTutte(HKEY_LOCAL_MACHINE);
    if (esito == ERROR_SUCCESS) {
        togliTutte(HKEY_CURRENT_USER);
        return S_OK;
    }
    if (esito != ERROR_ACCESS_DENIED) return HRESULT_FROM_WIN32(static_cast<DWORD>(esito));
    return HRESULT_FROM_WIN32(static_cast<DWORD>(scriviTutte(HKEY_CURRENT_USER)));
}

HRESULT annullaRegistrazione() {
    const LSTATUS utente = togliTutte(HKEY_CURRENT_USER);
    const LSTATUS macchina = togliTutte(HKEY_LOCAL_MACHINE);
    return HRESULT_FROM_WIN32(static_cast<DWORD>(utente != ERROR_SUCCESS ? utente : macchina));
}

} // namespace norvel::com
