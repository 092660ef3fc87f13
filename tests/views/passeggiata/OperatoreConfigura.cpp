// What the operator does to the configuration window.
#include "tests/views/passeggiata/Operatore.h"

namespace norvel::views {

namespace {

FrmConfigura& su() {
    return *frmConfiguraReale();
}

} // namespace

void Operatore::menu() {
    static const char* const chiavi[] = {"POSIZIONE", "VISUALIZZA", "STILE",    "SALVA",
                                         "MULTI1",    "MULTI2",     "NEWFOLDER"};
    su().MenuBar->OnItemClick(chiavi[A_caso(7)]);
}

void Operatore::spunta() {
    wxCheckBox* const tutte[] = {su().ChkChekBox,        su().ChkColonne,    su().ChkEvidenzia,
                                 su().ChkFacilitato,     su().chkRighe,      su().ChkSposta,
                                 su().ChkRaggruppamento, su().ChkPredefinito};
    wxCheckBox* scatola = tutte[A_caso(8)];
    scatola->SetValue(!scatola->GetValue());
    wxCommandEvent evento(wxEVT_CHECKBOX, scatola->GetId());
    evento.SetEventObject(scatola);
    evento.SetInt(scatola->GetValue() ? 1 : 0);
    scatola->GetEventHandler()->ProcessEvent(evento);
}

// Selects an entry of one of the lists, then a double click or the button.
void Operatore::sposta() {
    const bool nasconde = forse(60);
    wxListBox* lista = nasconde ? su().List1 : su().List2;
    if (lista->IsEmpty()) return;
    lista->SetSelection(A_caso(static_cast<int>(lista->GetCount())));
    wxCommandEvent scelta(forse(50) ? wxEVT_LISTBOX_DCLICK : wxEVT_LISTBOX, lista->GetId());
    scelta.SetEventObject(lista);
    lista->GetEventHandler()->ProcessEvent(scelta);
    clic(nasconde ? su().CmdSportaI : su().Command3);
}

void Operatore::spostaTutte() {
    clic(su().CmdRimuoviTutti);
}

void Operatore::dimensione() {
    static const char* const testi[] = {"8", "10", "12", "18", "abc", "", "-3", "1e9", "11,5"};
    su().CmbSize->SetValue(testi[A_caso(9)]);
    wxCommandEvent evento(forse(50) ? wxEVT_COMBOBOX : wxEVT_TEXT_ENTER, su().CmbSize->GetId());
    evento.SetEventObject(su().CmbSize);
    su().CmbSize->GetEventHandler()->ProcessEvent(evento);
}

void Operatore::colore() {
    clic(forse(50) ? su().Command1 : su().Command2);
}

void Operatore::carattere() {
    clic(su().CmdCarattere);
}

void Operatore::salva() {
    const std::string vista = nome();
    su().txtNome->ChangeValue(wxString::FromUTF8(vista.data(), vista.size()));
    su().ChkPredefinito->SetValue(forse(50));
    clic(su().CmdSalva);
}

void Operatore::scegliVista() {
    wxListBox* lista = su().Lista;
    if (lista->IsEmpty()) return;
    lista->SetSelection(A_caso(static_cast<int>(lista->GetCount())));
    wxCommandEvent evento(forse(30) ? wxEVT_LISTBOX_DCLICK : wxEVT_LISTBOX, lista->GetId());
    evento.SetEventObject(lista);
    lista->GetEventHandler()->ProcessEvent(evento);
}

void Operatore::attiva() {
    clic(su().CmdAttiva);
}

void Operatore::elimina() {
    clic(su().CmdEliminaVista);
}

void Operatore::base() {
    clic(su().CmdCaricoBase);
}

void Operatore::gesto() {
    wxWindow* etichetta = su().l1[static_cast<std::size_t>(A_caso(2))];
    wxMouseEvent doppio(wxEVT_LEFT_DCLICK);
    doppio.SetPosition(etichetta->GetPosition() + wxPoint(4, 4));
    wxWindow* pagina = etichetta->GetParent();
    doppio.SetEventObject(pagina);
    pagina->GetEventHandler()->ProcessEvent(doppio);
}

void Operatore::chiudeConfigura() {
    switch (A_caso(3)) {
    case 0:
        return clic(su().CmdChiudi);
    case 1:
        return su().MenuBar->OnItemClick("CHIUDI");
    default:
        su().Finestra->Close();
    }
}

} // namespace norvel::views
