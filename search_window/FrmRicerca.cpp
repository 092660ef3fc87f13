// The window's life: loading, what the public class sets, showing, unloading.
#include "search_window/FrmRicerca.h"

#include "component/VariabiliGlobali.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/Toolkit.h"
#include "platform/controls/ToolkitThread.h"
#include "platform/controls/ValueList.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/Twips.h"
#include "query/PausaDigitazione.h"
#include "search_window/Attesa.h"
#include "search_window/Disposizione.h"
#include "search_window/Misure.h"
#include "search_window/Testi.h"
#include "views/Avvio.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <utility>

namespace norvel::search_window {

namespace {

// Never destroyed: a window left loaded at the end of the process goes with it, not after the
// toolkit.
std::unique_ptr<FrmRicerca>& istanza() {
    static auto* finestra = new std::unique_ptr<FrmRicerca>;
    return *finestra;
}

} // namespace

FrmRicerca::FrmRicerca()
    : pausaDigitazione(query::pausaDigitazioneMs), separatore_(separatoreValori) {
    controls::avviaToolkit();
    misureFinestra() = {};
    creaControlli();
    collegaEventi();
}

FrmRicerca::~FrmRicerca() {
    DBRicerca.RemoveObserver(this);
    Timer1.reset();
    attesaFiltro_.reset();
    letturaValori_.reset();
    avvisoLettura_.reset();
    delete Finestra;
}

void FrmRicerca::SetStatusBarVisible(bool visible) {
    StatusBar->wxControl::Show(visible);
    ridimensiona();
}

void FrmRicerca::SetBarraBaseVisible(bool visible) {
    BarraBase->wxControl::Show(visible);
    CmdChiudi->Show(visible);
    ridimensiona();
}

void FrmRicerca::SetCaption(const std::string& caption) {
    Finestra->SetTitle(controls::toWx(caption));
}

void FrmRicerca::SetHeight(float twips) {
    altezza_ = twips;
    Finestra->SetSize(wxDefaultCoord, twipsToPixels(twips, scala()));
}

void FrmRicerca::SetWidth(float twips) {
    larghezza_ = twips;
    Finestra->SetSize(twipsToPixels(twips, scala()), wxDefaultCoord);
}

void FrmRicerca::SetTop(float twips) {
    Finestra->Move(Finestra->GetPosition().x, twipsToPixels(twips, scala()));
}

void FrmRicerca::SetLeft(float twips) {
    Finestra->Move(twipsToPixels(twips, scala()), Finestra->GetPosition().y);
}

void FrmRicerca::SetWindowState(int state) {
    Finestra->Maximize(state == 2);
}

void FrmRicerca::centraForm() {
    const wxRect schermo = wxDisplay(Finestra).GetGeometry();
    const Posizione dove = posizioneCentrata(
        {pixelsToTwips(schermo.width, scala()), pixelsToTwips(schermo.height, scala())},
        {larghezza_, altezza_});
    Finestra->Move(schermo.x + twipsToPixels(dove.left, scala()),
                   schermo.y + twipsToPixels(dove.top, scala()));
}

void FrmRicerca::SetRecordset(adodb::RecordsetRef recordset) {
    if (!recordset) throw erroreOggettoNonImpostato();
    // Another call would show this window, and destroy it, under the one that waits here.
    if (inApertura_)
        throw Errore(erroreFormGiaVisualizzato, "La finestra di ricerca è già in apertura");
    inApertura_ = true;
    try {
        attendiApertura(*Finestra, *recordset);
    } catch (...) {
        inApertura_ = false;
        throw;
    }
    inApertura_ = false;
    DBRicerca.SetRecordset(std::move(recordset));
}

void FrmRicerca::ImpostaStileGriglia() {
    const auto voce = [this](const std::string& chiave, const std::string& testo) {
        BarraBase->Change("Apri", [&](controls::Button& apri) {
            apri.ButtonMenus.push_back({chiave, testo});
        });
    };
    views::impostaStileGriglia(
        variabiliGlobali(),
        {Griglia->Layouts(),
         [this](bool si) {
             BarraBase->Change("ultimo", [&](controls::Button& ultimo) { ultimo.Enabled = si; });
         },
         voce,
         [this](adodb::RowCount righe) { scriviStato(testoTotale(righe), Conteggio::Totale); },
         [this] { togliBarraFiltri(); }, [this] { Timer1->StartOnce(intervalloTimer1); }});
    mostraFacilitata();
}

void FrmRicerca::togliBarraFiltri() {
    Griglia->SplitAt(0).FilterBar = false;
    Griglia->Changed();
}

void FrmRicerca::CollegaGriglia() {
    Griglia->SetDataSource(&DBRicerca);
}

int FrmRicerca::NumeroColonne() const {
    return Griglia->Columns().Count();
}

bool FrmRicerca::FilterCombo(int colonna) const {
    return Griglia->Columns().Item(colonna).FilterCombo;
}

void FrmRicerca::SetFilterCombo(int colonna, bool value) {
    Griglia->Columns().Item(colonna).FilterCombo = value;
    Griglia->Changed();
}

void FrmRicerca::SetButtonVisible(std::string_view key, bool visible) {
    BarraBase->Change(key, [&](controls::Button& pulsante) { pulsante.Visible = visible; });
}

void FrmRicerca::Show(bool modale) {
    if (!modale) {
        mostrata_ = true;
        Finestra->Show();
        Finestra->Raise();
        return;
    }
    if (mostrata_)
        throw Errore(
            erroreFormGiaVisualizzato,
            "Form già visualizzato; impossibile visualizzarlo come form a scelta obbligatoria");
    mostrata_ = true;
    Griglia->SetFocus();
    std::unique_ptr<FrmRicerca> questa; // keeps the object until nothing of it runs any more
    {
        controls::ModalLoop ciclo;
        modale_ = &ciclo;
        ciclo.Run(*Finestra);
        modale_ = nullptr;
        if (!scaricata_) Scarica(ModoScarico::Codice); // the loop was ended by the toolkit itself
        questa = std::move(istanza());
    }
    questa.reset();
    controls::finishPendingWork();
    controls::leaveThread();
}

void FrmRicerca::Scarica(ModoScarico modo) {
    if (scaricata_) return;
    scaricata_ = true;
    if (modo == ModoScarico::MenuDiControllo) variabiliGlobali().gRisposta = "";
    Timer1->Stop();
    attesaFiltro_->Stop();
    avvisoLettura_->Stop();
    List1->CloseUp();
    Griglia->SetDataSource(nullptr);
    DBRicerca.SetRecordset(nullptr);
    if (modale_) {
        modale_->End(); // Show goes on, and destroys this window
    } else {
        Finestra->Hide();
        // Handlers of the window may be running: it is destroyed from the event loop.
        auto morente = std::make_shared<std::unique_ptr<FrmRicerca>>(std::move(istanza()));
        wxTheApp->CallAfter([morente] {
            morente->reset();
            controls::leaveThread();
        });
    }
}

FrmRicerca* frmRicercaReale() {
    return istanza().get();
}

void installaFrmRicerca() {
    impostaFinestraRicerca({[]() -> FinestraRicerca* {
                                controls::avviaToolkit(); // the right thread, or an error
                                if (!istanza()) istanza() = std::make_unique<FrmRicerca>();
                                return istanza().get();
                            },
                            [] { return istanza() != nullptr; }});
}

namespace {

// The library that holds the window makes it known as soon as it is loaded.
[[maybe_unused]] const bool installata = (installaFrmRicerca(), true);

} // namespace

} // namespace norvel::search_window
