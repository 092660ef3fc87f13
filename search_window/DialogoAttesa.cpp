#include "search_window/DialogoAttesa.h"

#include "platform/controls/Toolkit.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/ErroreInCorso.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <algorithm>
#include <optional>

namespace norvel::search_window {

namespace {

constexpr int passiBarra = 1000;

// The ordinary pointer, while it lives.
class PuntatoreLibero {
  public:
    PuntatoreLibero() {
        for (; wxIsBusy(); ++volte_)
            wxEndBusyCursor();
    }
    ~PuntatoreLibero() {
        for (; volte_ > 0; --volte_)
            wxBeginBusyCursor();
    }
    PuntatoreLibero(const PuntatoreLibero&) = delete;
    PuntatoreLibero& operator=(const PuntatoreLibero&) = delete;

  private:
    int volte_ = 0;
};

class DialogoAttesa : public wxDialog {
  public:
    DialogoAttesa(wxWindow& parent, const Attesa& attesa)
        : wxDialog(&parent, wxID_ANY, controls::toWx(attesa.titolo)), attesa_(attesa) {
        auto* colonna = new wxBoxSizer(wxVERTICAL);
        testo_ = new wxStaticText(this, wxID_ANY, wxEmptyString);
        barra_ =
            new wxGauge(this, wxID_ANY, passiBarra, wxDefaultPosition, FromDIP(wxSize(320, -1)));
        auto* annulla = new wxButton(this, wxID_CANCEL, "Annulla");
        mostra();
        const int bordo = FromDIP(12);
        colonna->Add(testo_, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, bordo);
        colonna->Add(barra_, 0, wxEXPAND | wxALL, bordo);
        colonna->Add(annulla, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, bordo);
        SetSizerAndFit(colonna);
        CentreOnParent();
        Bind(
            wxEVT_BUTTON, [this](wxCommandEvent&) { chiudi(true); }, wxID_CANCEL);
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { chiudi(true); });
        orologio_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { avanza(); });
    }

    bool esegui() {
        const PuntatoreLibero puntatore; // it is a window to click in
        orologio_.StartOnce(attesa_.pausa);
        ciclo_.Run(*this);
        orologio_.Stop();
        if (errore_) throw Errore(*errore_);
        return !annullato_;
    }

  private:
    void avanza() {
        if (chiuso_) return;
        try {
            if (!attesa_.passo()) return chiudi(false);
            mostra();
            orologio_.StartOnce(attesa_.pausa);
        } catch (...) { // it must not pass through the toolkit
            errore_ = erroreInCorso();
            chiudi(false);
        }
    }

    void mostra() {
        const StatoAttesa stato = attesa_.stato();
        const wxString testo = controls::toWx(stato.testo);
        if (testo != testo_->GetLabel()) testo_->SetLabel(testo);
        if (stato.fatto < 0) return barra_->Pulse();
        const int valore = static_cast<int>(std::min(1.0, stato.fatto) * passiBarra);
        if (valore != barra_->GetValue()) barra_->SetValue(valore);
    }

    void chiudi(bool annullato) {
        if (chiuso_) return;
        chiuso_ = true;
        annullato_ = annullato;
        ciclo_.End();
    }

    const Attesa& attesa_;
    wxStaticText* testo_ = nullptr;
    wxGauge* barra_ = nullptr;
    wxTimer orologio_;
    controls::ModalLoop ciclo_;
    std::optional<Errore> errore_;
    bool annullato_ = false;
    bool chiuso_ = false;
};

// Destroys the window however the wait ends.
struct Chiusura {
    wxDialog* dialogo;
    ~Chiusura() { dialogo->Destroy(); }
};

} // namespace

bool attendiConDialogo(wxWindow& parent, const Attesa& attesa) {
    auto* dialogo = new DialogoAttesa(parent, attesa);
    const Chiusura chiusura{dialogo};
    return dialogo->esegui();
}

} // namespace norvel::search_window
