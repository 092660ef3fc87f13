#include "tests/component/com/Dll.h"

namespace norvel::tests {

namespace fs = std::filesystem;

// The build gives it as this system's path; Wine has the file system's root as drive Z.
fs::path percorsoDllDiProva() {
    return fs::path(NR_DLL).has_root_name() ? fs::path(NR_DLL) : fs::path("Z:" NR_DLL);
}

Dll::Dll() {
    static int copie = 0;
    percorso_ = fs::temp_directory_path() / ("NorvelRicerca-" + std::to_string(++copie) + ".dll");
    fs::copy_file(percorsoDllDiProva(), percorso_, fs::copy_options::overwrite_existing);
    modulo_ = LoadLibraryW(percorso_.c_str());
}

// A DLL that keeps itself stays loaded, and its file in use.
Dll::~Dll() {
    if (modulo_ != nullptr) FreeLibrary(modulo_);
    std::error_code nonImporta;
    fs::remove(percorso_, nonImporta);
}

HRESULT Dll::chiama(const char* nome) const {
    const auto funzione = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(modulo_, nome)));
    return funzione == nullptr ? E_NOTIMPL : funzione();
}

HRESULT Dll::fabbrica(com::ComPtr<IClassFactory>& fabbrica, REFCLSID classe) const {
    const auto funzione = reinterpret_cast<LPFNGETCLASSOBJECT>(
        reinterpret_cast<void*>(GetProcAddress(modulo_, "DllGetClassObject")));
    if (funzione == nullptr) return E_NOTIMPL;
    return funzione(classe, IID_IClassFactory, reinterpret_cast<void**>(fabbrica.put()));
}

com::ComPtr<_Ricerca> Dll::crea() const {
    com::ComPtr<IClassFactory> classe;
    com::ComPtr<_Ricerca> oggetto;
    if (SUCCEEDED(fabbrica(classe)))
        classe->CreateInstance(nullptr, com::idInterfaccia,
                               reinterpret_cast<void**>(oggetto.put()));
    return oggetto;
}

} // namespace norvel::tests
