// The DLL under test, loaded as a host's process loads it.
#pragma once

#include "component/com/Identificatori.h"
#include "component/com/Interfaccia.h"

#include <filesystem>
#include <string>

namespace norvel::tests {

std::filesystem::path percorsoDllDiProva();

// A copy of the DLL under a name of its own, so that each test finds a session that nothing was
// stored in.
class Dll {
  public:
    Dll();
    ~Dll();
    Dll(const Dll&) = delete;
    Dll& operator=(const Dll&) = delete;

    const std::filesystem::path& percorso() const { return percorso_; }
    HRESULT fabbrica(com::ComPtr<IClassFactory>& fabbrica, REFCLSID classe = com::idClasse) const;
    com::ComPtr<_Ricerca> crea() const; // null where it cannot be created
    bool scaricabile() const { return chiama("DllCanUnloadNow") == S_OK; }
    HRESULT registra() const { return chiama("DllRegisterServer"); }
    HRESULT annulla() const { return chiama("DllUnregisterServer"); }

  private:
    HRESULT chiama(const char* nome) const;
    std::filesystem::path percorso_;
    HMODULE modulo_ = nullptr;
};

} // namespace norvel::tests
