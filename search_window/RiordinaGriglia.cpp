#include "search_window/RiordinaGriglia.h"

#include "platform/runtime/ErroreInCorso.h"
#include "search_window/Testi.h"

namespace norvel::search_window {

namespace {

// What a recordset may have lost by a sort that it refused.
void rimetti(adodb::Recordset& recordset, const std::string& ordine) {
    try {
        if (recordset.Sort() != ordine) recordset.SetSort(ordine);
    } catch (const Errore&) {
        return; // the warning about the sort itself is the one to show
    }
}

void imposta(adodb::Recordset& recordset, const std::string& ordine) {
    const std::string prima = recordset.Sort();
    try {
        recordset.SetSort(ordine);
    } catch (const Errore&) {
        rimetti(recordset, prima);
        throw;
    }
}

} // namespace

std::string testoRiordino(const std::vector<std::string>& campi) {
    std::string testo;
    for (const std::string& campo : campi) {
        if (!testo.empty()) testo += ", ";
        testo += "[" + campo + "]";
    }
    return testo;
}

bool riordinaGriglia(const PartiRiordino& parti) {
    try {
        const std::string ordine = testoRiordino(parti.campi);
        parti.ridisegna();
        if (!parti.recordset) throw erroreOggettoNonImpostato();
        imposta(*parti.recordset, ordine);
        return true;
    } catch (...) {
        mostraMessaggio(messaggioRiordino(erroreInCorso()));
        return false;
    }
}

} // namespace norvel::search_window
