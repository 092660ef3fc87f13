#include "hosts/norvelricerca/Dati.h"

#include "component/DatiHost.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"

#include <string>
#include <string_view>

namespace norvel::hosts {

using namespace adodb;

namespace {

constexpr int erroreUso = 5; // "Chiamata di routine o argomento non validi"

Errore conFrase(const std::string& frase, const Errore& errore) {
    return {errore.numero(), frase + ": " + errore.descrizione()};
}

bool haCampo(Recordset& recordset, std::string_view nome) {
    Fields& campi = recordset.Fields();
    for (int i = 0; i < campi.Count(); ++i)
        if (equalsText(campi.Item(i).Name(), nome)) return true;
    return false;
}

// "codice, citta, …": at most the first twelve.
std::string elencoCampi(Recordset& recordset) {
    constexpr int massimo = 12;
    Fields& campi = recordset.Fields();
    std::string testo;
    for (int i = 0; i < campi.Count() && i < massimo; ++i)
        testo += (i > 0 ? ", " : "") + campi.Item(i).Name();
    return campi.Count() > massimo ? testo + ", …" : testo;
}

Errore senzaCampo(const std::string& query, const std::string& campo, Recordset& recordset) {
    return {erroreUso,
            query + " non ha il campo «" + campo + "» (ha: " + elencoCampi(recordset) + ")"};
}

RecordsetRef apri(const std::string& opzione, const std::string& sql,
                  const ConnectionRef& connessione, LockTypeEnum blocco, int modo = -1) {
    RecordsetRef recordset;
    try {
        recordset = apriRecordset(ObjectRef(connessione), sql, blocco, modo);
    } catch (const Errore& errore) {
        throw conFrase("La query di --" + opzione + " non è riuscita", errore);
    }
    if ((recordset->State() & adStateOpen) == 0)
        throw Errore(erroreUso, "La query di --" + opzione + " non dà righe: non è una ricerca");
    return recordset;
}

// What the statement gives, which must have the fields of the empty recordset; that one itself
// where there is no statement.
RecordsetRef apriOVuoto(const std::string& opzione, const std::string& sql,
                        const ConnectionRef& connessione, LockTypeEnum blocco, RecordsetRef vuoto) {
    if (sql.empty()) return vuoto;
    RecordsetRef recordset = apri(opzione, sql, connessione, blocco);
    for (int i = 0; i < vuoto->Fields().Count(); ++i) {
        const std::string campo = vuoto->Fields().Item(i).Name();
        if (!haCampo(*recordset, campo))
            throw senzaCampo("La query di --" + opzione, campo, *recordset);
    }
    return recordset;
}

// A row can be edited only where the command line names fields for it.
LockTypeEnum bloccoRighe(const Argomenti& argomenti) {
    const std::string* campi = argomenti.valore("AbilitaModificaCampi");
    return campi && !campi->empty() ? adLockOptimistic : adLockReadOnly;
}

RecordsetRef apriRighe(const Argomenti& argomenti, const ConnectionRef& connessione) {
    RecordsetRef righe = apri("QueryBase", *argomenti.valore("QueryBase"), connessione,
                              bloccoRighe(argomenti), adAsyncFetch | adAsyncFetchNonBlocking);
    // The window would tell only when a row is chosen; at a shell a mistyped name is told at once.
    const std::string& campo = *argomenti.valore("CampoRicerca");
    if (!haCampo(*righe, campo)) {
        const Errore errore = senzaCampo("--CampoRicerca: la query", campo, *righe);
        righe->Cancel();
        throw errore;
    }
    return righe;
}

void chiudi(const RecordsetRef& recordset) {
    if (!recordset || recordset->State() == adStateClosed) return;
    if ((recordset->State() & adStateFetching) != 0) recordset->Cancel();
    recordset->Close();
}

} // namespace

Dati apriDati(const Argomenti& argomenti) {
    Dati dati;
    dati.connessione = makeConnection();
    try {
        dati.connessione->Open(argomenti.connessione);
    } catch (const Errore& errore) {
        throw conFrase("La connessione non è riuscita", errore);
    }
    dati.operatori = apriOVuoto("operatori", argomenti.operatori, dati.connessione, adLockReadOnly,
                                operatoriVuoti());
    dati.viste =
        apriOVuoto("viste", argomenti.viste, dati.connessione, adLockOptimistic, visteVuote());
    dati.righe = apriRighe(argomenti, dati.connessione);
    return dati;
}

void chiudiDati(Dati& dati) noexcept {
    try {
        chiudi(dati.righe);
        chiudi(dati.viste);
        chiudi(dati.operatori);
        if (dati.connessione && dati.connessione->State() != adStateClosed)
            dati.connessione->Close();
    } catch (const Errore&) {
        // The answer is known and the process ends: what does not close goes with it.
    }
    dati = {};
}

} // namespace norvel::hosts
