#include "search_window/StatoLettura.h"

#include "platform/adodb/Errors.h"

namespace norvel::search_window {

using namespace adodb;

namespace {

constexpr int interrogazione = adStateConnecting | adStateExecuting;

StatoLettura::Elenco elencoDi(const Recordset& recordset) {
    const auto errore = recordset.FetchError();
    if (!errore) return StatoLettura::Elenco::Completo;
    return errore->numero() == dbStopLimit ? StatoLettura::Elenco::OltreMemoria
                                           : StatoLettura::Elenco::Interrotto;
}

bool filtrato(const Recordset& recordset) {
    const Variant filtro = recordset.Filter();
    return filtro.isText() && !filtro.text().empty();
}

std::string testoLavoro(const StatoLettura& stato) {
    if (stato.interruzione) return "Interruzione in corso";
    return stato.lavoro == StatoLettura::Lavoro::Interrogazione
               ? "Interrogazione in corso: Esc la interrompe"
               : "Lettura in corso: Esc la interrompe";
}

void aggiungi(std::string& testo, const std::string& parte) {
    if (!testo.empty() && !parte.empty()) testo += "; ";
    testo += parte;
}

std::string testoAggiornamento(Aggiornamento aggiornamento) {
    switch (aggiornamento) {
    case Aggiornamento::Interrotto:
        return "Aggiornamento interrotto: restano i record di prima";
    case Aggiornamento::NonRiuscito:
        return "Aggiornamento non riuscito: restano i record di prima";
    case Aggiornamento::Fatto:
        break;
    }
    return {};
}

std::string testoElenco(const StatoLettura& stato) {
    if (stato.elenco == StatoLettura::Elenco::Completo) return {};
    std::string testo = stato.elenco == StatoLettura::Elenco::OltreMemoria
                            ? "Ci sono altri record oltre a quelli letti"
                            : "Lettura interrotta: l'elenco non è completo";
    if (stato.filtrato && stato.ordinato)
        aggiungi(testo, "filtro e ordine solo tra quelli letti");
    else if (stato.filtrato)
        aggiungi(testo, "filtro solo tra quelli letti");
    else if (stato.ordinato)
        aggiungi(testo, "ordine solo tra quelli letti");
    return testo;
}

} // namespace

bool inLavoro(const Recordset& recordset) {
    return (recordset.State() & (interrogazione | adStateFetching)) != 0;
}

StatoLettura statoLettura(const Recordset& recordset) {
    StatoLettura stato;
    const int stati = recordset.State();
    if ((stati & interrogazione) != 0)
        stato.lavoro = StatoLettura::Lavoro::Interrogazione;
    else if ((stati & adStateFetching) != 0)
        stato.lavoro = StatoLettura::Lavoro::Lettura;
    if ((stati & adStateOpen) == 0 || stato.lavoro != StatoLettura::Lavoro::Nessuno) return stato;
    stato.elenco = elencoDi(recordset);
    if (stato.elenco == StatoLettura::Elenco::Completo) return stato;
    stato.filtrato = filtrato(recordset);
    stato.ordinato = !recordset.Sort().empty();
    return stato;
}

std::string testoLettura(const StatoLettura& stato) {
    if (stato.lavoro != StatoLettura::Lavoro::Nessuno) return testoLavoro(stato);
    std::string testo = testoAggiornamento(stato.aggiornamento);
    aggiungi(testo, testoElenco(stato));
    return testo;
}

} // namespace norvel::search_window
