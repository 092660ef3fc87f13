#include "search_window/CaricoValori.h"

#include "platform/runtime/Errore.h"
#include "query/ListaValori.h"
#include "search_window/RecordsetPrivato.h"

#include <algorithm>
#include <utility>

namespace norvel::search_window {

using namespace adodb;

namespace {

constexpr RowCount righePerBlocco = 500;

} // namespace

void CaricoValori::avvia(Recordset& dellaGriglia, const std::string& campo,
                         const std::string& queryBase) {
    annulla();
    campo_ = campo;
    lette_ = 0;
    fallito_ = false;
    try {
        tipo_ = dellaGriglia.Fields()(campo).Type();
        apri(dellaGriglia, queryBase);
        inCorso_ = true;
    } catch (const Errore&) { // refused: the list keeps the entries that it has
        fallito_ = true;
        annulla();
    }
}

void CaricoValori::apri(Recordset& dellaGriglia, const std::string& queryBase) {
    const std::string query =
        query::queryListaValori(query::richiestaValori(dellaGriglia, campo_, queryBase));
    if (!privato_) {
        RecordsetPrivato nuovo = creaRecordsetPrivato(dellaGriglia);
        privato_ = std::move(nuovo.recordset);
        opzioni_ = nuovo.opzioni;
    }
    privato_->Open(query, dellaGriglia.ActiveConnection(), adOpenUnspecified, adLockUnspecified,
                   opzioni_);
}

void CaricoValori::leggi(std::chrono::milliseconds entro, const Aggiungi& aggiungi) {
    const auto fine = std::chrono::steady_clock::now() + entro;
    try {
        while (inCorso_ && leggiBlocco(aggiungi) && std::chrono::steady_clock::now() < fine) {
        }
    } catch (const Errore&) { // what has come stays
        fallito_ = true;
        annulla();
    }
}

// How many rows can be read without waiting; -1: nobody knows, but each can.
RowCount CaricoValori::pronte() const {
    return opzioni_ == -1 ? -1 : privato_->RecordCount();
}

// False where there was nothing to read (yet).
bool CaricoValori::leggiBlocco(const Aggiungi& aggiungi) {
    // Asked first, since rows may come meanwhile; it also takes over a query that has just begun to
    // answer. One that was refused leaves the recordset closed: reading it raises.
    const bool ancora = opzioni_ != -1 && !privato_->WaitFetch(0);
    if (ancora && !(privato_->State() & adStateOpen)) return false;
    const RowCount disponibili = pronte();
    RowCount quante = righePerBlocco;
    if (disponibili >= 0) {
        quante = std::min(quante, disponibili - lette_);
        if (quante <= 0) {
            if (ancora) return false;
            fallito_ = privato_->FetchError().has_value();
            annulla();
            return false;
        }
        privato_->SetAbsolutePosition(lette_ + 1);
    } else if (privato_->EOF_()) {
        annulla();
        return false;
    }
    const RowBlock blocco = privato_->GetRows(quante, {}, {Variant(campo_)});
    lette_ += blocco.rows;
    for (const Variant& valore : blocco.values.at(0)) {
        std::string voce;
        try {
            voce = query::testoVoce(valore, tipo_);
        } catch (const Errore&) {
            continue; // a value that cannot be read has no entry
        }
        aggiungi(voce);
    }
    return true;
}

void CaricoValori::annulla() {
    inCorso_ = false;
    if (!privato_) return;
    try {
        if (opzioni_ != -1 && privato_->State() != adStateClosed) privato_->Cancel();
    } catch (const Errore&) { // it had ended by itself
        inCorso_ = false;
    }
    try {
        if (privato_->State() != adStateClosed) privato_->Close();
    } catch (const Errore&) { // one that does not close is replaced
        privato_.reset();
    }
}

} // namespace norvel::search_window
