#include "views/PaginaConfigura.h"

#include "platform/controls/WxText.h"

#include <wx/stattext.h>

#include <algorithm>

namespace norvel::views {

using controls::toWx;

namespace {

constexpr int spazio = 8;       // logical pixels at 96 dpi
constexpr int largoTesto = 560; // likewise: long texts break no earlier
constexpr int passoScorri = 10; // likewise

// A text that breaks its lines where its page ends.
class TestoLungo : public wxStaticText {
  public:
    TestoLungo(wxWindow* su, const char* parole)
        : wxStaticText(su, wxID_ANY, toWx(parole)), parole_(toWx(parole)) {
        Wrap(FromDIP(largoTesto));
    }
    void Adatta(int largo) {
        SetLabelText(parole_);
        Wrap(std::max(FromDIP(largoTesto), largo));
    }

  private:
    wxString parole_;
};

} // namespace

PaginaConfigura::PaginaConfigura(wxWindow* su, const char* titolo, const char* descrizione)
    : wxScrolled<wxPanel>(su, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                          wxTAB_TRAVERSAL | wxVSCROLL | wxHSCROLL),
      contenuto_(new wxBoxSizer(wxVERTICAL)) {
    auto* tutto = new wxBoxSizer(wxVERTICAL);
    auto* testa = new wxStaticText(this, wxID_ANY, toWx(titolo));
    testa->SetFont(GetFont().Bold().Larger());
    tutto->Add(testa, 0, wxBOTTOM, Spazio() / 2);
    AggiungiTesto(*tutto, descrizione);
    tutto->Add(contenuto_, 1, wxEXPAND);
    SetSizer(tutto);
    const int passo = FromDIP(passoScorri);
    SetScrollRate(passo, passo);
    m_container.DisableSelfFocus();
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        adattaTesti();
        event.Skip(); // then the page's own layout
    });
}

int PaginaConfigura::Spazio() const {
    return FromDIP(spazio);
}

void PaginaConfigura::AggiungiTesto(wxSizer& dove, const char* parole) {
    dove.Add(new TestoLungo(this, parole), 0, wxBOTTOM, Spazio());
}

void PaginaConfigura::adattaTesti() {
    for (wxWindow* parte : GetChildren())
        if (auto* lungo = dynamic_cast<TestoLungo*>(parte)) lungo->Adatta(GetClientSize().x);
}

} // namespace norvel::views
