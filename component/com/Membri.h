// The dual interface's own entries, for hosts bound early: each is a line of the member table by
// its name.
#pragma once

#include "component/com/Interfaccia.h"

#include <string_view>

namespace norvel::com {

class Membri : public _Ricerca {
  protected:
    // Nothing is thrown; the error goes to the thread's error information and its code is the
    // result.
    virtual HRESULT leggi(std::string_view nome, BSTR* valore) noexcept = 0;
    virtual HRESULT leggi(std::string_view nome, VARIANT_BOOL* valore) noexcept = 0;
    virtual HRESULT scrivi(std::string_view nome, BSTR valore) noexcept = 0;
    virtual HRESULT scrivi(std::string_view nome, VARIANT_BOOL valore) noexcept = 0;
    virtual HRESULT scrivi(std::string_view nome, IDispatch* valore) noexcept = 0;
    virtual HRESULT chiama(std::string_view nome, VARIANT* risultato) noexcept = 0; // null: none

  public:
    STDMETHODIMP get_PercorsoPers(BSTR* valore) override { return leggi("PercorsoPers", valore); }
    STDMETHODIMP put_PercorsoPers(BSTR valore) override { return scrivi("PercorsoPers", valore); }
    STDMETHODIMP get_Percorso(BSTR* valore) override { return leggi("Percorso", valore); }
    STDMETHODIMP put_Percorso(BSTR valore) override { return scrivi("Percorso", valore); }
    STDMETHODIMP get_User(BSTR* valore) override { return leggi("User", valore); }
    STDMETHODIMP put_User(BSTR valore) override { return scrivi("User", valore); }
    STDMETHODIMP get_Risposta(BSTR* valore) override { return leggi("Risposta", valore); }
    STDMETHODIMP get_Modulo(BSTR* valore) override { return leggi("Modulo", valore); }
    STDMETHODIMP put_Modulo(BSTR valore) override { return scrivi("Modulo", valore); }
    STDMETHODIMP get_SoloRicerca(VARIANT_BOOL* valore) override {
        return leggi("SoloRicerca", valore);
    }
    STDMETHODIMP put_SoloRicerca(VARIANT_BOOL valore) override {
        return scrivi("SoloRicerca", valore);
    }
    STDMETHODIMP get_Caption(BSTR* valore) override { return leggi("Caption", valore); }
    STDMETHODIMP put_Caption(BSTR valore) override { return scrivi("Caption", valore); }
    STDMETHODIMP get_StatusBar(BSTR* valore) override { return leggi("StatusBar", valore); }
    STDMETHODIMP put_StatusBar(BSTR valore) override { return scrivi("StatusBar", valore); }
    STDMETHODIMP get_Toolbar(BSTR* valore) override { return leggi("Toolbar", valore); }
    STDMETHODIMP put_Toolbar(BSTR valore) override { return scrivi("Toolbar", valore); }
    STDMETHODIMP get_Top(BSTR* valore) override { return leggi("Top", valore); }
    STDMETHODIMP put_Top(BSTR valore) override { return scrivi("Top", valore); }
    STDMETHODIMP get_Left(BSTR* valore) override { return leggi("Left", valore); }
    STDMETHODIMP put_Left(BSTR valore) override { return scrivi("Left", valore); }
    STDMETHODIMP get_Height(BSTR* valore) override { return leggi("Height", valore); }
    STDMETHODIMP put_Height(BSTR valore) override { return scrivi("Height", valore); }
    STDMETHODIMP get_Width(BSTR* valore) override { return leggi("Width", valore); }
    STDMETHODIMP put_Width(BSTR valore) override { return scrivi("Width", valore); }
    STDMETHODIMP get_WindowsState(BSTR* valore) override { return leggi("WindowsState", valore); }
    STDMETHODIMP put_WindowsState(BSTR valore) override { return scrivi("WindowsState", valore); }
    STDMETHODIMP get_SelezioneMultipla(VARIANT_BOOL* valore) override {
        return leggi("SelezioneMultipla", valore);
    }
    STDMETHODIMP put_SelezioneMultipla(VARIANT_BOOL valore) override {
        return scrivi("SelezioneMultipla", valore);
    }
    STDMETHODIMP get_FilterBar(BSTR* valore) override { return leggi("FilterBar", valore); }
    STDMETHODIMP put_FilterBar(BSTR valore) override { return scrivi("FilterBar", valore); }
    STDMETHODIMP get_CampoRicerca(BSTR* valore) override { return leggi("CampoRicerca", valore); }
    STDMETHODIMP put_CampoRicerca(BSTR valore) override { return scrivi("CampoRicerca", valore); }
    STDMETHODIMP get_AbilitaModificaCampi(BSTR* valore) override {
        return leggi("AbilitaModificaCampi", valore);
    }
    STDMETHODIMP put_AbilitaModificaCampi(BSTR valore) override {
        return scrivi("AbilitaModificaCampi", valore);
    }
    STDMETHODIMP Ricerca(VARIANT* risultato) override { return chiama("Ricerca", risultato); }
    STDMETHODIMP abilitaCombo() override { return chiama("abilitaCombo", nullptr); }
    STDMETHODIMP put_QueryBase(BSTR valore) override { return scrivi("QueryBase", valore); }
    STDMETHODIMP putref_Recordset(IDispatch* valore) override {
        return scrivi("Recordset", valore);
    }
    STDMETHODIMP putref_RecordsetOperatori(IDispatch* valore) override {
        return scrivi("RecordsetOperatori", valore);
    }
    STDMETHODIMP putref_RecordsetViste(IDispatch* valore) override {
        return scrivi("RecordsetViste", valore);
    }
    STDMETHODIMP get_Ver(BSTR* valore) override { return leggi("Ver", valore); }
};

} // namespace norvel::com
