#include "search_window/Attesa.h"

#include "platform/adodb/Errors.h"
#include "search_window/DialogoAttesa.h"

#include <string>

namespace norvel::search_window {

namespace {

constexpr int primaDelDialogo = 250; // milliseconds
constexpr int battito = 100;         // milliseconds between two looks at the fetch

constexpr int primeOcchiate = 25; // at a statement, of ten milliseconds each

bool inInterrogazione(adodb::Recordset& recordset, int attesa) {
    constexpr int stati = adodb::adStateConnecting | adodb::adStateExecuting;
    if ((recordset.State() & stati) == 0) return false;
    recordset.WaitFetch(attesa);
    return (recordset.State() & stati) != 0;
}

} // namespace

bool attendiLettura(wxWindow& parent, adodb::Recordset& recordset) {
    if (recordset.WaitFetch(primaDelDialogo)) return true;
    const auto stato = [&recordset] {
        return StatoAttesa{"Record letti finora: " + std::to_string(recordset.RecordCount())};
    };
    return attendiConDialogo(parent, {"Lettura dei record in corso", battito,
                                      [&recordset] { return !recordset.WaitFetch(0); }, stato});
}

void attendiApertura(wxWindow& parent, adodb::Recordset& recordset) {
    if ((recordset.State() & adodb::adStateOpen) != 0) return;
    bool ancora = true;
    for (int i = 0; ancora && i < primeOcchiate; ++i)
        ancora = inInterrogazione(recordset, 10);
    const auto stato = [] { return StatoAttesa{"Si attendono i primi record"}; };
    const auto passo = [&recordset] { return inInterrogazione(recordset, 0); };
    if (ancora && !attendiConDialogo(parent, {"Interrogazione in corso", battito, passo, stato})) {
        recordset.Cancel();
        throw adodb::adoError(adodb::adErrOperationCancelled,
                              "L'interrogazione è stata interrotta prima dei primi record.");
    }
    if ((recordset.State() & adodb::adStateOpen) != 0) return; // what came is shown
    if (const auto errore = recordset.FetchError()) throw Errore(*errore);
}

} // namespace norvel::search_window
