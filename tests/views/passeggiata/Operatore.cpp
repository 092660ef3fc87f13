#include "tests/views/passeggiata/Operatore.h"

#include "platform/controls/ToolBar.h"

namespace norvel::views {

using search_window::frmRicercaReale;

namespace {

struct Voce {
    const char* nome;
    int peso;
    Operatore::Azione azione;
};

} // namespace

Operatore::Operatore(unsigned seme, int passi, std::function<void(const std::string&)> dopo)
    : caso_(seme), passi_(passi), dopo_(std::move(dopo)) {
    orologio_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { tic(); });
    dialoghi_ = impostaDialoghi(
        {[this](wxWindow&, std::uint32_t) -> std::optional<std::uint32_t> {
             if (forse(30)) return std::nullopt;
             return static_cast<std::uint32_t>(A_caso(0x1000000));
         },
         [this](wxWindow&, const grid::FontStyle&) -> std::optional<grid::FontStyle> {
             if (forse(30)) return std::nullopt;
             return grid::FontStyle{forse(50) ? "DejaVu Serif" : "DejaVu Sans",
                                    static_cast<double>(6 + A_caso(14)), forse(50), forse(50)};
         }});
    scatole_ = impostaGestoreMessaggi([this](const Messaggio& m) { return Risponde(m); });
}

Operatore::~Operatore() {
    impostaGestoreMessaggi(scatole_);
    impostaDialoghi(dialoghi_);
}

int Operatore::A_caso(int quanti) {
    return static_cast<int>(caso_() % static_cast<unsigned>(quanti));
}

BoxAnswer Operatore::Risponde(const Messaggio& messaggio) {
    if (messaggio.pulsanti == BoxButtons::YesNo) return forse(75) ? BoxAnswer::Yes : BoxAnswer::No;
    if (messaggio.titolo == titoloModulo) ++errori_;
    return BoxAnswer::Ok;
}

void Operatore::Inizia() {
    orologio_.StartOnce(1);
}

// The next tick is ordered first: the action may open a window and return when that has closed.
void Operatore::tic() {
    orologio_.StartOnce(1);
    if (!frmRicercaReale() || !variabiliGlobali().gFinestraPronta) return;
    const bool configura = frmConfiguraReale() != nullptr;
    if (configura && frmConfiguraReale()->MenuBar->Groups().empty()) return; // still opening
    if (!Finito()) return passo();
    if (configura)
        frmConfiguraReale()->Scarica();
    else
        frmRicercaReale()->Scarica(search_window::ModoScarico::Codice);
}

void Operatore::passo() {
    static constexpr Voce sullaRicerca[] = {
        {"barra", 20, &Operatore::barra},
        {"menuViste", 10, &Operatore::menuViste},
        {"filtro", 10, &Operatore::filtro},
        {"intestazione", 8, &Operatore::intestazione},
        {"tasto", 15, &Operatore::tasto},
        {"trascina", 8, &Operatore::trascina},
        {"misura", 2, &Operatore::misura},
        {"apreConfigura", 20, &Operatore::apreConfigura},
        {"chiudeRicerca", 2, &Operatore::chiudeRicerca},
    };
    static constexpr Voce sullaConfigurazione[] = {
        {"menu", 15, &Operatore::menu},
        {"spunta", 15, &Operatore::spunta},
        {"sposta", 15, &Operatore::sposta},
        {"spostaTutte", 1, &Operatore::spostaTutte},
        {"dimensione", 4, &Operatore::dimensione},
        {"colore", 4, &Operatore::colore},
        {"carattere", 3, &Operatore::carattere},
        {"salva", 20, &Operatore::salva},
        {"scegliVista", 15, &Operatore::scegliVista},
        {"attiva", 10, &Operatore::attiva},
        {"elimina", 4, &Operatore::elimina},
        {"base", 4, &Operatore::base},
        {"gesto", 1, &Operatore::gesto},
        {"tasto", 10, &Operatore::tasto},
        {"trascina", 10, &Operatore::trascina},
        {"misura", 2, &Operatore::misura},
        {"guasto", 2, &Operatore::guasto},
        {"chiudeConfigura", 4, &Operatore::chiudeConfigura},
    };
    const bool configura = frmConfiguraReale() != nullptr;
    const std::span<const Voce> voci = configura ? std::span<const Voce>(sullaConfigurazione)
                                                 : std::span<const Voce>(sullaRicerca);
    int tutti = 0;
    for (const Voce& voce : voci)
        tutti += voce.peso;
    int quale = A_caso(tutti);
    for (const Voce& voce : voci) {
        quale -= voce.peso;
        if (quale >= 0) continue;
        ++fatti_;
        ultima_ = voce.nome;
        const std::string azione = voce.nome;
        (this->*voce.azione)();
        return dopo_(azione);
    }
}

std::string Operatore::nome() {
    static const char* const nomi[] = {"Mia",     "mia",      "Altra",       "",
                                       "D'Amico", "Base:CLI", "con spazio ", "a\\b"};
    const int quale = A_caso(24);
    return quale < 8 ? nomi[quale] : "Vista " + std::to_string(A_caso(2000));
}

void Operatore::clic(wxWindow* pulsante) {
    if (!pulsante->IsEnabled()) return;
    wxCommandEvent evento(wxEVT_BUTTON, pulsante->GetId());
    evento.SetEventObject(pulsante);
    pulsante->GetEventHandler()->ProcessEvent(evento);
}

grid::Grid& Operatore::griglia() {
    return frmConfiguraReale() ? *frmConfiguraReale()->Griglia : *frmRicercaReale()->Griglia;
}

wxTopLevelWindow& Operatore::finestra() {
    return frmConfiguraReale() ? *frmConfiguraReale()->Finestra : *frmRicercaReale()->Finestra;
}

// --- on both windows ---

// Not Enter: it chooses a row and ends the search.
void Operatore::tasto() {
    static constexpr int tasti[] = {WXK_LEFT,   WXK_RIGHT,    WXK_UP, WXK_DOWN,   WXK_HOME, WXK_END,
                                    WXK_PAGEUP, WXK_PAGEDOWN, WXK_F2, WXK_ESCAPE, WXK_SPACE};
    static constexpr int modi[] = {wxMOD_NONE, wxMOD_NONE, wxMOD_SHIFT, wxMOD_CONTROL,
                                   wxMOD_CONTROL | wxMOD_SHIFT};
    wxKeyEvent evento(wxEVT_KEY_DOWN);
    evento.m_keyCode = tasti[A_caso(11)];
    const int modo = modi[A_caso(5)];
    evento.SetShiftDown((modo & wxMOD_SHIFT) != 0);
    evento.SetControlDown((modo & wxMOD_CONTROL) != 0);
    wxWindow* dove = &griglia();
    if (frmConfiguraReale() && forse(30)) dove = frmConfiguraReale()->MenuBar;
    evento.SetEventObject(dove);
    dove->GetEventHandler()->ProcessEvent(evento);
}

// Presses somewhere in the grid, moves, lets go: headings, edges, rows, corners.
void Operatore::trascina() {
    grid::Grid& dove = griglia();
    const wxSize area = dove.GetClientSize();
    const auto evento = [&](wxEventType tipo, wxPoint at, bool giu) {
        wxMouseEvent mouse(tipo);
        mouse.SetPosition(at);
        mouse.SetLeftDown(giu);
        mouse.SetEventObject(&dove);
        dove.GetEventHandler()->ProcessEvent(mouse);
    };
    const auto punto = [&] {
        const int y = forse(60) ? A_caso(24) : A_caso(std::max(1, area.y));
        return wxPoint(A_caso(std::max(1, area.x)), y);
    };
    wxPoint at = punto();
    evento(wxEVT_MOTION, at, false);
    evento(wxEVT_LEFT_DOWN, at, true);
    for (int volte = A_caso(4); volte > 0; --volte)
        evento(wxEVT_MOTION, at = punto(), true);
    evento(wxEVT_LEFT_UP, at, false);
    if (!frmConfiguraReale() && !frmRicercaReale()) return;
}

void Operatore::misura() {
    finestra().SetSize(200 + A_caso(1200), 120 + A_caso(800));
}

// Something refuses for a while, then works again.
void Operatore::guasto() {
    if (forse(50))
        database(forse(50));
    else
        cartella(forse(50));
}

} // namespace norvel::views
