// The window's controls: making them, placing them, wiring them.
#include "component/VariabiliGlobali.h"
#include "platform/controls/Keyboard.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/ValueList.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/Twips.h"
#include "search_window/Disposizione.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Misure.h"
#include "search_window/Pulsanti.h"
#include "search_window/Scorciatoie.h"

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/timer.h>

namespace norvel::search_window {

namespace {

controls::ButtonStyle stile(TipoPulsante tipo) {
    switch (tipo) {
    case TipoPulsante::Interruttore:
        return controls::ButtonStyle::Check;
    case TipoPulsante::ConMenu:
        return controls::ButtonStyle::DropDown;
    case TipoPulsante::Comando:
        break;
    }
    return controls::ButtonStyle::Push;
}

} // namespace

double FrmRicerca::scala() const {
    return Finestra->FromDIP(1000) / 1000.0;
}

void FrmRicerca::creaControlli() {
    // Its place is said from the start: a move to 0, 0 would count as none and the desktop choose.
    Finestra = new wxFrame(nullptr, wxID_ANY, wxEmptyString, wxPoint(0, 0));
    Finestra->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    creaBarra();
    CmdChiudi =
        new wxButton(Finestra, wxID_ANY, "Chiudi", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    CmdChiudi->SetWindowVariant(wxWINDOW_VARIANT_SMALL);
    Griglia = new grid::Grid(Finestra);
    StatusBar = new controls::StatusBar(Finestra, 2);
    creaPannello();
    List1 = new controls::ValueList(Finestra);
    Timer1 = std::make_unique<wxTimer>();
    attesaFiltro_ = std::make_unique<wxTimer>();
    letturaValori_ = std::make_unique<wxTimer>();
    avvisoLettura_ = std::make_unique<wxTimer>();
    controls::travelByTab(*Finestra);
}

void FrmRicerca::creaBarra() {
    BarraBase = new controls::ToolBar(Finestra, static_cast<int>(altezzaBarra));
    for (const Pulsante& p : pulsantiBarra) {
        controls::Button pulsante;
        pulsante.Key = p.chiave;
        pulsante.Description = p.testo;
        pulsante.Shortcut = testoScorciatoie(p.chiave);
        pulsante.Style = stile(p.tipo);
        pulsante.Visible = p.visibile;
        BarraBase->Add(std::move(pulsante));
    }
}

void FrmRicerca::collegaEventi() {
    Finestra->Bind(wxEVT_CLOSE_WINDOW,
                   [this](wxCloseEvent&) { chiudi(ModoScarico::MenuDiControllo); });
    Finestra->Bind(wxEVT_SIZE, [this](wxSizeEvent&) { ridimensiona(); });
    CmdChiudi->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { chiudi(ModoScarico::Codice); });
    Finestra->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& tasto) {
        if (!suScorciatoia(tasto.GetKeyCode(), tasto.GetModifiers())) tasto.Skip();
    });
    Timer1->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { suTimer1(); });
    BarraBase->OnButtonClick = [this](const controls::Button& pulsante) { suClicBarra(pulsante); };
    BarraBase->OnButtonMenuClick = [this](const controls::Button&,
                                          const controls::ButtonMenu& voce) { suMenuViste(voce); };
    Griglia->OnDblClick = [this] { suDoppioClic(); };
    Griglia->OnKey = [this](int codice, int modificatori, grid::Area area) {
        return suTasto(codice, modificatori, area == grid::Area::Data);
    };
    Griglia->OnClick = [this] { aggiornaContatore(); };
    Griglia->OnFirstPaint = [](std::int64_t righe) {
        misureFinestra().primaPittura = std::chrono::steady_clock::now();
        misureFinestra().righePrimaPittura = righe;
    };
    collegaFiltri();
    collegaLista();
    collegaLettura();
    collegaModifica();
    Griglia->OnHeadClick = [this](int colonna) { suClicIntestazione(colonna); };
    Griglia->OnGroupColumnsChanged = [this] { RiordinaGriglia(); };
    DBRicerca.AddObserver(this);
}

// Form_Resize. The grid's edges are turned into pixels, not its size, so that rounding never adds
// up. The panel takes its room from the toolbar, whose last buttons go behind the chevron then: the
// grid's place never depends on it. An open list closes, since its cell moves.
void FrmRicerca::ridimensiona() {
    if (!List1) return; // a size event while the controls are being made
    List1->CloseUp();
    const double s = scala();
    const wxSize area = Finestra->GetClientSize();
    const auto altezzaStatus = static_cast<double>(StatusBar->HeightTwips());
    const int barra = twipsToPixels(altezzaBarra, s);
    const int status = twipsToPixels(altezzaStatus, s);
    const int bordo = Finestra->FromDIP(2);
    const int pannello = frameRicercaAvanzata->GetBestSize().x;
    const Riga riga = ripartisciRiga(area.x, barra, frameRicercaAvanzata->IsShown() ? pannello : 0,
                                     CmdChiudi->GetBestSize().x + 8 * bordo);

    BarraBase->SetSize(0, 0, riga.barra, barra);
    frameRicercaAvanzata->SetSize(riga.barra, 0, riga.pannello, barra);
    frameRicercaAvanzata->GetSizer()->SetDimension(wxPoint(), wxSize(pannello, barra));
    CmdChiudi->SetSize(riga.barra + riga.pannello, bordo, riga.chiudi - bordo, barra - 2 * bordo);
    StatusBar->SetSize(0, area.y - status, area.x, status);
    const auto misura =
        misuraGriglia({pixelsToTwips(area.x, s), pixelsToTwips(area.y, s)},
                      BarraBase->IsShown() ? std::optional<double>(altezzaBarra) : std::nullopt,
                      StatusBar->IsShown() ? std::optional<double>(altezzaStatus) : std::nullopt);
    if (misura)
        Griglia->SetSize(0, barra, area.x,
                         twipsToPixels(altezzaBarra + misura->altezza, s) - barra);
    else
        Griglia->SetSize(0, barra, Griglia->GetSize().x, Griglia->GetSize().y);
}

} // namespace norvel::search_window
