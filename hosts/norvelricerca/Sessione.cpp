#include "hosts/norvelricerca/Sessione.h"

#include "component/Ricerca.h"
#include "component/TabellaMembri.h"
#include "hosts/norvelricerca/Dati.h"
#include "hosts/norvelricerca/Tempi.h"
#include "platform/controls/Toolkit.h"
#include "search_window/FinestraRicerca.h"
#include "search_window/Misure.h"

#include <ostream>
#include <span>
#include <string>

namespace norvel::hosts {

namespace {

constexpr int erroreNull = 94;    // "Utilizzo non valido di Null"
constexpr int erroreInterno = 51; // "Errore interno"

// Hands the data to the component and takes them back, whatever happens meanwhile: no fetch runs
// and no recordset is held by the session when the program's end comes.
class DatiInUso {
  public:
    DatiInUso(Ricerca& ricerca, Dati dati) : ricerca_(ricerca), dati_(std::move(dati)) {
        ricerca_.SetRecordset(dati_.righe);
        ricerca_.SetRecordsetOperatori(dati_.operatori);
        ricerca_.SetRecordsetViste(dati_.viste);
    }
    ~DatiInUso() {
        ricerca_.SetRecordset(nullptr);
        ricerca_.SetRecordsetOperatori(nullptr);
        ricerca_.SetRecordsetViste(nullptr);
        chiudiDati(dati_);
    }
    DatiInUso(const DatiInUso&) = delete;
    DatiInUso& operator=(const DatiInUso&) = delete;

    adodb::Recordset& righe() { return *dati_.righe; }

  private:
    Ricerca& ricerca_;
    Dati dati_;
};

void assegna(Ricerca& ricerca, const Argomenti& argomenti) {
    for (const auto& [nome, testo] : argomenti.proprieta) {
        const Variant valore(testo);
        Invoke(ricerca, nome, modoLet, std::span(&valore, 1));
    }
}

// The instant and the number of rows when the last one came; a fetch that fitted in the first block
// was over when the recordset opened.
void misuraLettura(Misure& misure, adodb::Recordset& righe, bool completaAllApertura,
                   Istante apertura) {
    const auto& finestra = search_window::misureFinestra();
    misure.primaPittura = finestra.primaPittura;
    misure.fineLettura = completaAllApertura ? apertura : finestra.fineLettura;
    misure.righeLette = righe.Clone()->RecordCount(); // a clone has no filter
}

// Shows the window until it is closed.
Misure cerca(Ricerca& ricerca, const Argomenti& argomenti) {
    Misure misure;
    misure.inizio = inizioProcesso();
    misure.inizioLettura = std::chrono::steady_clock::now();
    DatiInUso dati(ricerca, apriDati(argomenti));
    const Istante apertura = std::chrono::steady_clock::now();
    const bool completa = (dati.righe().State() & adodb::adStateFetching) == 0;

    assegna(ricerca, argomenti);
    ricerca.Cerca();
    if (search_window::frmRicercaCaricata())
        throw Errore(erroreInterno, "La finestra di ricerca non si è aperta");
    misuraLettura(misure, dati.righe(), completa, apertura);
    return misure;
}

std::string leggiRisposta(const Ricerca& ricerca, const Argomenti& argomenti,
                          std::ostream& errori) {
    try {
        return ricerca.Risposta();
    } catch (const Errore& errore) {
        const std::string campo = "il campo «" + *argomenti.valore("CampoRicerca") + "»";
        if (errore.numero() != erroreNull)
            throw Errore(errore.numero(), "Il valore scelto non si può scrivere come testo (" +
                                              campo + "): " + errore.descrizione());
        errori << "norvelricerca: la riga scelta non ha un valore per " << campo << '\n';
        return {};
    }
}

} // namespace

std::optional<std::string> cercaRisposta(const Argomenti& argomenti, std::ostream& errori) {
    controls::avviaToolkit(); // first: without a display no query runs
    Ricerca ricerca;
    Misure misure = cerca(ricerca, argomenti);
    std::string risposta = leggiRisposta(ricerca, argomenti, errori);
    if (argomenti.tempi) {
        misure.memoriaMassimaKB = memoriaMassimaKB();
        errori << testoTempi(misure) << std::flush;
    }
    if (risposta.empty()) return std::nullopt;
    return risposta;
}

} // namespace norvel::hosts
