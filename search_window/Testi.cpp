#include "search_window/Testi.h"

namespace norvel::search_window {

std::string testoTotale(adodb::RowCount record) {
    return "Totale record " + std::to_string(record);
}

std::string testoContatore(adodb::RowCount posizione, adodb::RowCount n) {
    return "Record " + std::to_string(posizione) + " di " + std::to_string(n);
}

std::string testoSelezionati(adodb::RowCount record) {
    return "Selezionati " + std::to_string(record);
}

std::string testoRecordSelezionati(adodb::RowCount record) {
    return "Record selezionati " + std::to_string(record);
}

Messaggio messaggioRoutine(const std::string& routine, const Errore& errore,
                           const std::string& titolo) {
    return {routine + "\r" + std::to_string(errore.numero()) + " - " + errore.descrizione(), titolo,
            BoxIcon::Critical, BoxButtons::Ok};
}

Messaggio messaggioDblClick(const Errore& errore) {
    return messaggioRoutine("Errore nella libreria NorvelRicerche.Griglia_DblClick", errore,
                            "Errore");
}

Messaggio messaggioToolbar(const Errore& errore) {
    return messaggioRoutine("Si è verificato un errore nel modulo DllRicercaNorvel.Toolbar1",
                            errore);
}

Messaggio messaggioRiordino(const Errore& errore) {
    Messaggio messaggio = messaggioRoutine(
        "Attenzione! Si è verificato un errore nella funzione RiordinaGriglia. Disattivare dalla "
        "vista personalizzata la visualizzazione Raggruppata o modificare la query di selezione.",
        errore);
    messaggio.icona = BoxIcon::Exclamation;
    return messaggio;
}

Messaggio domandaTuttiRecord() {
    return {"Inserisco tutti i record?", "Inserimento", BoxIcon::Question, BoxButtons::YesNo};
}

Messaggio messaggioRifiuto(const std::string& rifiuto) {
    return {rifiuto, titoloPredefinito, BoxIcon::Exclamation, BoxButtons::Ok};
}

Messaggio messaggioLetturaInterrotta(const Errore& errore, adodb::RowCount lette) {
    return {"La lettura dei record si è interrotta: l'elenco non è completo.\r\nRecord letti: " +
                std::to_string(lette) + "\r\n" + std::to_string(errore.numero()) + " - " +
                errore.descrizione(),
            titoloPredefinito, BoxIcon::Exclamation, BoxButtons::Ok};
}

Messaggio messaggioAggiornamento(const Errore& errore, Aggiornamento esito) {
    StatoLettura stato;
    stato.aggiornamento = esito;
    return {testoLettura(stato) + ".\r\n" + std::to_string(errore.numero()) + " - " +
                errore.descrizione(),
            titoloPredefinito, BoxIcon::Exclamation, BoxButtons::Ok};
}

} // namespace norvel::search_window
