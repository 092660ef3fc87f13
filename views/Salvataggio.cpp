#include "views/Salvataggio.h"

#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Text.h"
#include "views/ArchivioViste.h"
#include "views/Disposizioni.h"

#include <vector>

namespace norvel::views {

using namespace adodb;

namespace {

bool conferma(const char* domanda, const char* titolo) {
    return mostraMessaggio({domanda, titolo, BoxIcon::Question, BoxButtons::YesNo}) ==
           BoxAnswer::Yes;
}

void informa(const char* testo, const char* titolo) {
    mostraMessaggio({testo, titolo, BoxIcon::Information, BoxButtons::Ok});
}

Recordset& viste(const VariabiliGlobali& sessione) {
    if (!sessione.gRecordsetViste) throw erroreOggettoNonImpostato();
    return *sessione.gRecordsetViste;
}

Proprietario proprietario(const VariabiliGlobali& sessione) {
    return {testoSessione(sessione.gUser), testoSessione(sessione.gModulo)};
}

bool preferita(Recordset& recordset) {
    const Variant valore = recordset.Fields()("preferito").Value();
    return !valore.isNull() && !valore.isEmpty() && valore.toBoolean();
}

bool inElenco(const ListaVoci& lista, const std::string& nome) {
    for (int i = 0; i < lista.ListCount(); ++i)
        if (equalsText(lista.List(i), nome)) return true;
    return false;
}

// A list box without a selection has an empty text.
std::string testoScelto(const ListaVoci& lista) {
    return lista.ListIndex() < 0 ? std::string() : lista.List(lista.ListIndex());
}

// What Update refuses is taken back.
void aggiorna(Recordset& recordset, const std::function<void()>& scrivi) {
    try {
        scrivi();
        recordset.Update();
    } catch (const Errore&) {
        try {
            recordset.CancelUpdate();
        } catch (const Errore&) { // there was nothing to take back; the first error is told
        }
        throw;
    }
}

// The flag moves: no other view of the operator and the search keeps it. The rows are found first,
// since one that is written may change its place in the host's order.
void togliPreferite(Recordset& recordset) {
    if (recordset.RecordCount() <= 0) return;
    std::vector<Variant> righe;
    for (; !recordset.EOF_(); recordset.MoveNext())
        if (preferita(recordset)) righe.push_back(recordset.Bookmark());
    for (const Variant& riga : righe) {
        recordset.SetBookmark(riga);
        aggiorna(recordset, [&] { recordset.Fields()("preferito").SetValue(false); });
    }
}

void scriviRiga(Recordset& recordset, const Proprietario& di, const std::string& nome,
                bool predefinito) {
    recordset.SetFilter(filtroVista(di, nome));
    const bool nuova = recordset.RecordCount() == 0;
    aggiorna(recordset, [&] {
        if (nuova) recordset.AddNew();
        Fields& campi = recordset.Fields();
        campi("codiceoperatore").SetValue(di.utente);
        campi("codicericerca").SetValue(di.modulo);
        campi("preferito").SetValue(predefinito);
        campi("NomeVista").SetValue(nome);
    });
}

void salvaTutto(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    const std::string nome = parti.nome();
    if (!inElenco(parti.lista, nome) && esisteDisposizionePersonale(sessione, nome))
        return informa("Impossibile salvare la vista con questo nome, è già presente un'altra "
                       "vista salvata nello stesso modo.",
                       titoloModulo);
    salvaDisposizionePersonale(parti.griglia, sessione, nome);
    const Proprietario di = proprietario(sessione);
    const bool predefinito = parti.predefinito();
    Recordset& recordset = viste(sessione);
    recordset.SetFilter(filtroVistePerSalvare(di));
    if (predefinito) togliPreferite(recordset);
    scriviRiga(recordset, di, nome, predefinito);
    CaricaElencoViste(sessione, parti.lista);
    informa("Salvataggio Completato", "Salvataggio");
}

void attivaScelta(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    const std::string nome = testoScelto(parti.lista);
    parti.scriviNome(nome);
    Recordset& recordset = viste(sessione);
    recordset.SetFilter(filtroVista(proprietario(sessione), nome));
    if (recordset.RecordCount() > 0) parti.scriviPredefinito(preferita(recordset));
    ApplicaVista(parti.griglia, sessione, nome);
    parti.caricaColonne();
    parti.riapplicaStile();
}

void eliminaScelta(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    const std::string nome = testoScelto(parti.lista);
    parti.lista.RemoveItem(parti.lista.ListIndex());
    Recordset& recordset = viste(sessione);
    recordset.SetFilter(filtroVista(proprietario(sessione), nome));
    if (recordset.RecordCount() > 0) recordset.Delete();
    informa("Cancellazione effettuata", "Personalizza Ricerche");
    ApplicaVista(parti.griglia, sessione, parti.nome());
    parti.caricaColonne();
}

void caricaBase(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    const FileDisposizione file = disposizioneBase(sessione, testoSessione(sessione.gModulo));
    parti.griglia.LayoutName = file.nome;
    parti.griglia.LayoutFileName = file.percorso;
    parti.griglia.LoadLayout();
    parti.caricaColonne();
    parti.riapplicaStile();
}

void scriviBase(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    parti.togliBarraFiltri();
    salvaDisposizioneBase(parti.griglia, sessione);
    viste(sessione).SetFilter(filtroVistePerSalvare(proprietario(sessione)));
}

void protetto(const std::function<void()>& comando) {
    try {
        comando();
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
}

} // namespace

void CaricaElencoViste(const VariabiliGlobali& sessione, ListaVoci& lista) {
    lista.Clear();
    for (const std::string& nome : nomiVisteElenco(viste(sessione), proprietario(sessione)))
        lista.AddItem(nome, 0);
}

void salvaVista(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    if (conferma("Salvo la vista corrente?", "Conferma salvataggio"))
        protetto([&] { salvaTutto(sessione, parti); });
}

void attivaVista(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    if (conferma("Vuoi modificare la vista selezionata", "Conferma modifica"))
        protetto([&] { attivaScelta(sessione, parti); });
}

void eliminaVista(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    if (conferma("Vuoi eliminare la vista selezionata", "Conferma eliminazione"))
        protetto([&] { eliminaScelta(sessione, parti); });
}

void caricoBase(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    if (conferma("Carico la vista base?", "Conferma Lettura"))
        protetto([&] { caricaBase(sessione, parti); });
}

void salvaComeBase(const VariabiliGlobali& sessione, const PartiSalvataggio& parti) {
    protetto([&] {
        if (conferma("Salvo la vista come vista base?", "Conferma salvataggio"))
            scriviBase(sessione, parti);
        mostraMessaggio({.testo = "Salvataggio effettuato"});
        parti.scarica();
    });
}

} // namespace norvel::views
