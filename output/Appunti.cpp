// The two commands that put the selected cells on the clipboard.
#include "output/Cartella.h"
#include "output/Esportazioni.h"
#include "output/Messaggi.h"
#include "output/Righe.h"
#include "platform/runtime/ErroreInCorso.h"

namespace norvel::output {

namespace {

// nullptr where the operator stopped it.
std::unique_ptr<TestoArea> testoArea(const ParteEsportazione& parte, FormaTesto forma) {
    if (!tutteLeRighe(parte)) return nullptr;
    auto testo = std::make_unique<TestoArea>(parte.colonne, parte.area, recordsetDi(parte), forma);
    if (!parte.esegui(*testo)) return nullptr;
    parte.svuotaAppunti();
    parte.scriviAppunti(testo->testo());
    return testo;
}

void esportaArea(const ParteEsportazione& parte) {
    if (const auto testo = testoArea(parte, FormaTesto::Excel))
        mostraMessaggio(messaggioAreaCopiata(testo->colonne(), parte.area.righe()));
}

} // namespace

void copiaAppunti(const ParteEsportazione& parte) {
    try {
        if (parte.area.presente)
            testoArea(parte, FormaTesto::Semplice);
        else
            mostraMessaggio(messaggioNessunaArea());
    } catch (...) {
        mostraMessaggio(messaggioEsportazioneFallita(erroreInCorso()));
    }
}

void esportaExcel(const ParteEsportazione& parte) {
    try {
        if (parte.area.presente)
            esportaArea(parte);
        else if (mostraMessaggio(domandaInteroRecordset()) == BoxAnswer::Yes)
            esportaCartella(parte);
    } catch (...) {
        mostraMessaggio(messaggioEsportazioneFallita(erroreInCorso()));
    }
}

} // namespace norvel::output
