#include "output/Messaggi.h"

namespace norvel::output {

Messaggio messaggioNessunaArea() {
    return {"Non è stata selezionata un area?", "Copia Fallita", BoxIcon::Exclamation};
}

Messaggio domandaInteroRecordset() {
    return {"Non è stata selezionata un area, esportare l'intero recordset?", "Selezione!",
            BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::No};
}

Messaggio messaggioEsportazioneFallita(const Errore& errore) {
    return {"Si è verificato un errore durante l'operazione di esportazione\r" +
                std::to_string(errore.numero()) + " - " + errore.descrizione(),
            "Errore esportazione!", BoxIcon::Critical};
}

Messaggio messaggioAreaCopiata(int colonne, adodb::RowCount righe) {
    return {"La selezione di " + std::to_string(colonne) + " x " + std::to_string(righe) +
                " celle è stata copiata nella clipboard nel formato compatibile xls (TAB delimited "
                "format)",
            "Esportazione Tamborin", BoxIcon::Information};
}

Messaggio messaggioCartellaCreata(const std::string& percorso) {
    return {"Esportazione effettuata con successo \r\rIl file è stato creato in " + percorso,
            "Esportazione XLS Tamborin", BoxIcon::Information};
}

Messaggio messaggioCartellaIncompleta(const spreadsheet::WorkbookLosses& perse) {
    std::string testo = "Il file non contiene tutto quello che è stato esportato.";
    if (perse.textsCut > 0)
        testo += "\rTesti più lunghi di una cella (32.767 caratteri), tagliati: " +
                 std::to_string(perse.textsCut);
    if (perse.columnsLeftOut > 0)
        testo += "\rColonne oltre la 256ª, lasciate fuori: " + std::to_string(perse.columnsLeftOut);
    return {testo, "Esportazione XLS Tamborin", BoxIcon::Exclamation};
}

} // namespace norvel::output
