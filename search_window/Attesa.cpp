#include "search_window/Attesa.h"

#include "platform/controls/Toolkit.h"
#include "platform/runtime/Errore.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <optional>
#include <string>

namespace norvel::search_window {

namespace {

constexpr int primaDelDialogo = 250; // milliseconds
constexpr int battito = 100;         // milliseconds between two looks at the fetch

wxString testoLette(adodb::RowCount lette) {
    return wxString::FromUTF8("Record letti finora: " + std::to_string(lette));
}

// The little window: a text, a moving bar, "Annulla".
class DialogoAttesa : public wxDialog {
  public:
    DialogoAttesa(wxWindow& parent, adodb::Recordset& recordset)
        : wxDialog(&parent, wxID_ANY, wxString::FromUTF8("Lettura dei record in corso")),
          recordset_(recordset) {
        auto* colonna = new wxBoxSizer(wxVERTICAL);
        lette_ = new wxStaticText(this, wxID_ANY, testoLette(recordset.RecordCount()));
        barra_ = new wxGauge(this, wxID_ANY, 100, wxDefaultPosition, FromDIP(wxSize(320, -1)));
        auto* annulla = new wxButton(this, wxID_CANCEL, wxString::FromUTF8("Annulla"));
        const int bordo = FromDIP(12);
        colonna->Add(lette_, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, bordo);
        colonna->Add(barra_, 0, wxEXPAND | wxALL, bordo);
        colonna->Add(annulla, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, bordo);
        SetSizerAndFit(colonna);
        CentreOnParent();
        Bind(
            wxEVT_BUTTON, [this](wxCommandEvent&) { chiudi(true); }, wxID_CANCEL);
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { chiudi(true); });
        orologio_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { guarda(); });
    }

    bool attendi() {
        orologio_.Start(battito);
        ciclo_.Run(*this);
        orologio_.Stop();
        if (errore_) throw Errore(*errore_);
        return !annullato_;
    }

  private:
    void guarda() {
        try {
            lette_->SetLabel(testoLette(recordset_.RecordCount()));
            barra_->Pulse();
            if (recordset_.WaitFetch(0)) chiudi(false);
        } catch (const Errore& errore) { // it must not pass through the toolkit
            errore_ = errore;
            chiudi(false);
        }
    }
    void chiudi(bool annullato) {
        annullato_ = annullato;
        ciclo_.End();
    }

    adodb::Recordset& recordset_;
    wxStaticText* lette_ = nullptr;
    wxGauge* barra_ = nullptr;
    wxTimer orologio_;
    controls::ModalLoop ciclo_;
    std::optional<Errore> errore_;
    bool annullato_ = false;
};

// Destroys the window however the wait ends.
struct Chiusura {
    wxDialog* dialogo;
    ~Chiusura() { dialogo->Destroy(); }
};

} // namespace

bool attendiLettura(wxWindow& parent, adodb::Recordset& recordset) {
    if (recordset.WaitFetch(primaDelDialogo)) return true;
    auto* dialogo = new DialogoAttesa(parent, recordset);
    const Chiusura chiusura{dialogo};
    return dialogo->attendi();
}

} // namespace norvel::search_window
