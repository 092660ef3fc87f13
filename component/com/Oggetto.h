// The automation object that a host creates: COM's face of the class Ricerca.
#pragma once

#include "component/Ricerca.h"
#include "component/TabellaMembri.h"
#include "component/com/Membri.h"

#include <atomic>
#include <span>

namespace norvel::com {

// By its interface (early binding) or by name (late binding), every call goes through the member
// table. It lives in the apartment of the thread that created it, and as long as somebody counts
// it.
class Oggetto final : public Membri, public IProvideClassInfo, public ISupportErrorInfo {
  public:
    Oggetto();
    Oggetto(const Oggetto&) = delete;
    Oggetto& operator=(const Oggetto&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** faccia) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetTypeInfoCount(UINT* numero) override;
    STDMETHODIMP GetTypeInfo(UINT indice, LCID lingua, ITypeInfo** tipo) override;
    STDMETHODIMP GetIDsOfNames(REFIID riservato, LPOLESTR* nomi, UINT numero, LCID lingua,
                               DISPID* identificatori) override;
    STDMETHODIMP Invoke(DISPID id, REFIID riservato, LCID lingua, WORD modo, DISPPARAMS* argomenti,
                        VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomentoErrato) override;

    STDMETHODIMP GetClassInfo(ITypeInfo** tipo) override; // IProvideClassInfo
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;

  protected:
    HRESULT leggi(std::string_view nome, BSTR* valore) noexcept override;
    HRESULT leggi(std::string_view nome, VARIANT_BOOL* valore) noexcept override;
    HRESULT scrivi(std::string_view nome, BSTR valore) noexcept override;
    HRESULT scrivi(std::string_view nome, VARIANT_BOOL valore) noexcept override;
    HRESULT scrivi(std::string_view nome, IDispatch* valore) noexcept override;
    HRESULT chiama(std::string_view nome, VARIANT* risultato) noexcept override;

  private:
    ~Oggetto(); // by the last Release
    Variant usa(const Membro& membro, unsigned modo, std::span<const Variant> argomenti);
    HRESULT scriviValore(std::string_view nome, unsigned modo, const VARIANT& valore) noexcept;

    std::atomic<ULONG> riferimenti_{1};
    norvel::Ricerca ricerca_;
};

} // namespace norvel::com
