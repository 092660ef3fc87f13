// The window's life: loading, showing, unloading.
#include "views/FrmConfigura.h"

#include "component/VariabiliGlobali.h"
#include "platform/controls/ExplorerBar.h"
#include "platform/controls/Toolkit.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/Twips.h"
#include "views/PostiConfigura.h"

#include <wx/combobox.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <utility>

namespace norvel::views {

namespace {

constexpr const char* titoloDisegnato = "Configurazione ricerca";

FrmConfigura*& istanza() {
    static FrmConfigura* finestra = nullptr;
    return finestra;
}

} // namespace

FrmConfigura::FrmConfigura() {
    controls::avviaToolkit();
}

FrmConfigura::FrmConfigura(adodb::RecordsetRef righe, const grid::Layout& presente)
    : FrmConfigura() {
    carica(std::move(righe), presente);
}

void FrmConfigura::carica(adodb::RecordsetRef righe, const grid::Layout& presente) {
    righe_ = std::make_unique<RigheAnteprima>(std::move(righe), DBRicerca);
    creaControlli();
    collegaEventi();
    // Form_Load
    const VariabiliGlobali& sessione = variabiliGlobali();
    impostaMisure();
    Finestra->SetTitle(controls::toWx(titoloConfigura(titoloDisegnato, sessione)));
    txtNome->ChangeValue(controls::toWx(nomeIniziale(sessione)));
    for (const char* dimensione : {"8", "10", "12", "14", "16", "18"})
        CmbSize->Append(dimensione);
    DBRicerca.SetRecordset(righe_->Clone());
    Griglia->SetDataSource(&DBRicerca);
    Griglia->Layouts().Apply(presente);
    mostraPagina(0);
    istanza() = this;
}

FrmConfigura::~FrmConfigura() {
    if (istanza() == this) istanza() = nullptr;
    Timer1.reset();
    delete Finestra;
}

void FrmConfigura::Show() {
    Timer1->StartOnce(intervalloTimer1);
    MenuBar->SetFocus();
    controls::ModalLoop ciclo;
    modale_ = &ciclo;
    ciclo.Run(*Finestra);
    modale_ = nullptr;
    Scarica(); // of a loop that the toolkit itself ended
}

void FrmConfigura::Scarica() {
    if (scaricata_) return;
    scaricata_ = true;
    if (istanza() == this) istanza() = nullptr;
    Timer1->Stop();
    Griglia->SetDataSource(nullptr);
    DBRicerca.SetRecordset(nullptr);
    righe_.reset();
    if (modale_) modale_->End(); // Show goes on; whoever called it destroys this window
}

FrmConfigura* frmConfiguraReale() {
    return istanza();
}

void apriFrmConfigura(adodb::RecordsetRef righe, const grid::Layout& presente) {
    if (istanza()) istanza()->Scarica();
    FrmConfigura finestra(std::move(righe), presente);
    finestra.Show();
}

} // namespace norvel::views
