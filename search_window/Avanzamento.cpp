#include "search_window/Avanzamento.h"

#include "platform/controls/Toolkit.h"
#include "platform/runtime/Errore.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <optional>

namespace norvel::search_window {

namespace {

using Orologio = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds primaDelDialogo{1000};
constexpr milliseconds turno{40}; // of work between the window's own events
constexpr int respiro = 5;        // milliseconds left to them
constexpr int passiBarra = 1000;

// The ordinary pointer, while it lives, whoever has made it the busy one.
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

enum class Esito { InCorso, Finito };

Esito lavora(output::Lavoro& lavoro, milliseconds tempo) {
    const auto fine = Orologio::now() + tempo;
    do
        if (!lavoro.passo()) return Esito::Finito;
    while (Orologio::now() < fine);
    return Esito::InCorso;
}

// The little window: a text, a bar, "Annulla".
class DialogoAvanzamento : public wxDialog {
  public:
    DialogoAvanzamento(wxWindow& parent, output::Lavoro& lavoro)
        : wxDialog(&parent, wxID_ANY, wxString::FromUTF8("Esportazione in corso")),
          lavoro_(lavoro) {
        auto* colonna = new wxBoxSizer(wxVERTICAL);
        testo_ = new wxStaticText(this, wxID_ANY, wxString::FromUTF8("Completato al 100 %"));
        barra_ =
            new wxGauge(this, wxID_ANY, passiBarra, wxDefaultPosition, FromDIP(wxSize(320, -1)));
        auto* annulla = new wxButton(this, wxID_CANCEL, wxString::FromUTF8("Annulla"));
        const int bordo = FromDIP(12);
        colonna->Add(testo_, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, bordo);
        colonna->Add(barra_, 0, wxEXPAND | wxALL, bordo);
        colonna->Add(annulla, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, bordo);
        SetSizerAndFit(colonna);
        CentreOnParent();
        mostra();
        Bind(
            wxEVT_BUTTON, [this](wxCommandEvent&) { chiudi(true); }, wxID_CANCEL);
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { chiudi(true); });
        orologio_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { avanza(); });
    }

    // False when the operator took "Annulla".
    bool esegui() {
        const PuntatoreLibero puntatore; // it is a window to click in
        orologio_.StartOnce(respiro);
        ciclo_.Run(*this);
        orologio_.Stop();
        if (errore_) throw Errore(*errore_);
        return !annullato_;
    }

  private:
    void avanza() {
        if (chiuso_) return;
        try {
            if (lavora(lavoro_, turno) == Esito::Finito) return chiudi(false);
            mostra();
            orologio_.StartOnce(respiro);
        } catch (const Errore& errore) { // it must not pass through the toolkit
            errore_ = errore;
            chiudi(false);
        }
    }

    void mostra() {
        const double fatto = lavoro_.fatto();
        if (fatto < 0) {
            testo_->SetLabel(wxString::FromUTF8("Lettura dei record"));
            barra_->Pulse();
            return;
        }
        const int valore = static_cast<int>(std::min(1.0, fatto) * passiBarra);
        if (valore == valore_) return;
        valore_ = valore;
        testo_->SetLabel(wxString::FromUTF8("Completato al " +
                                            std::to_string(valore * 100 / passiBarra) + " %"));
        barra_->SetValue(valore);
    }

    void chiudi(bool annullato) {
        if (chiuso_) return;
        chiuso_ = true;
        annullato_ = annullato;
        ciclo_.End();
    }

    output::Lavoro& lavoro_;
    wxStaticText* testo_ = nullptr;
    wxGauge* barra_ = nullptr;
    int valore_ = -1;
    wxTimer orologio_;
    controls::ModalLoop ciclo_;
    std::optional<Errore> errore_;
    bool annullato_ = false;
    bool chiuso_ = false;
};

// Destroys the window however its work ends.
struct Chiusura {
    wxDialog* dialogo;
    ~Chiusura() { dialogo->Destroy(); }
};

} // namespace

bool eseguiConAvanzamento(wxWindow& parent, output::Lavoro& lavoro) {
    if (lavora(lavoro, primaDelDialogo) == Esito::Finito) return true;
    auto* dialogo = new DialogoAvanzamento(parent, lavoro);
    const Chiusura chiusura{dialogo};
    return dialogo->esegui();
}

} // namespace norvel::search_window
