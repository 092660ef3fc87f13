// The window's controls: making them, placing them, wiring them.
#include "platform/controls/ExplorerBar.h"
#include "platform/controls/Keyboard.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/Twips.h"
#include "views/FrmConfigura.h"
#include "views/PostiConfigura.h"
#include "views/VociExplorer.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/settings.h>
#include <wx/timer.h>

#include <algorithm>

namespace norvel::views {

namespace {

constexpr double larghezzaDisegnata = 12600; // twips, of the inner area
constexpr double altezzaDisegnata = 8400;    // likewise
constexpr int larghezzaMenu = 3600;          // likewise; more where the font needs it
constexpr int minimoPagina = 120;            // logical pixels that are left of a page
constexpr double margine = 75;               // likewise, around CmdChiudi

} // namespace

double FrmConfigura::scala() const {
    return Finestra->FromDIP(1000) / 1000.0;
}

// In the order in which Tab goes round where the toolkit follows the order of creation.
void FrmConfigura::creaControlli() {
    Finestra = new wxFrame(nullptr, wxID_ANY, wxEmptyString);
    Finestra->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    Griglia = new grid::Grid(Finestra);
    MenuBar = new controls::ExplorerBar(Finestra, larghezzaMenu);
    creaPagine();
    CmdChiudi = new wxButton(Finestra, wxID_ANY, "&Chiudi");
    Timer1 = std::make_unique<wxTimer>();
    controls::travelByTab(*Finestra);
}

void FrmConfigura::creaPagine() {
    creaPosizione();
    creaVisualizza();
    creaStile();
    creaSalva();
    visibili_ = std::make_unique<ListaFinestra>(*List1);
    nascoste_ = std::make_unique<ListaFinestra>(*List2);
    viste_ = std::make_unique<ListaFinestra>(*Lista);
}

void FrmConfigura::collegaEventi() {
    Finestra->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Scarica(); });
    Finestra->Bind(wxEVT_SIZE, [this](wxSizeEvent&) { ridimensiona(); });
    CmdChiudi->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Scarica(); });
    Timer1->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { suTimer1(); });
    MenuBar->OnItemClick = [this](const std::string& chiave) { suVoce(chiave); };
    collegaColonne();
    collegaStile();
    collegaViste();
}

// As designed, or as the font and the pages need, as far as the screen has room; what does not fit
// scrolls. Centred.
void FrmConfigura::impostaMisure() {
    const double s = scala();
    const wxSize menu = MenuBar->SizeFor(gruppiExplorer());
    largoMenu_ = menu.x;
    wxSize pagina(0, 0);
    for (wxWindow* frame : FrmDimensioni)
        pagina.IncTo(frame->GetBestVirtualSize());
    const int sinistra = menu.x + twipsToPixels(sinistraPagine, s);
    const int piede = CmdChiudi->GetBestSize().y + 3 * twipsToPixels(margine, s);
    const wxSize interna(std::max(twipsToPixels(larghezzaDisegnata, s),
                                  sinistra + pagina.x + 2 * twipsToPixels(margine, s)),
                         std::max({twipsToPixels(altezzaDisegnata, s), menu.y,
                                   twipsToPixels(altoPagine, s) + pagina.y + piede}));
    const wxRect schermo = wxDisplay(Finestra).GetClientArea();
    Finestra->SetMinClientSize(wxSize(sinistra, twipsToPixels(altoPagine, s) + piede) +
                               Finestra->FromDIP(wxSize(minimoPagina, minimoPagina)));
    Finestra->SetClientSize(std::min(interna.x, schermo.width),
                            std::min(interna.y, schermo.height));
    const wxSize intera = Finestra->GetSize();
    const wxRect tutto = wxDisplay(Finestra).GetGeometry();
    const Riquadro dove = centrata(pixelsToTwips(tutto.width, s), pixelsToTwips(tutto.height, s),
                                   pixelsToTwips(intera.x, s), pixelsToTwips(intera.y, s));
    Finestra->Move(tutto.x + twipsToPixels(dove.left, s), tutto.y + twipsToPixels(dove.top, s));
}

// Form_Resize.
void FrmConfigura::ridimensiona() {
    if (!CmdChiudi) return; // a size event while the controls are being made
    const double s = scala();
    const wxSize area = Finestra->GetClientSize();
    const wxSize chiudi = CmdChiudi->GetBestSize();
    const int bordo = twipsToPixels(margine, s);
    const int piede = chiudi.y + 2 * bordo;
    const PostiConfigura posti =
        postiConfigura(pixelsToTwips(area.x, s), pixelsToTwips(std::max(0, area.y - piede), s),
                       pixelsToTwips(largoMenu_, s));
    const auto metti = [s](wxWindow* parte, const Riquadro& dove) {
        parte->SetSize(twipsToPixels(dove.left, s), twipsToPixels(dove.top, s),
                       twipsToPixels(dove.width, s), twipsToPixels(dove.height, s));
    };
    MenuBar->SetSize(0, 0, largoMenu_, area.y);
    metti(Griglia, posti.griglia);
    for (wxWindow* pagina : FrmDimensioni)
        metti(pagina, posti.pagina);
    CmdChiudi->SetSize(area.x - chiudi.x - bordo, area.y - chiudi.y - bordo, chiudi.x, chiudi.y);
}

} // namespace norvel::views
