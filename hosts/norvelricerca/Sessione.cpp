#include "hosts/norvelricerca/Sessione.h"

#include "component/Ricerca.h"
#include "component/TabellaMembri.h"
#include "hosts/norvelricerca/Dati.h"
#include "hosts/norvelricerca/Tempi.h"
#include "platform/controls/Toolkit.h"
#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Text.h"
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

// Hears the message box with which the component ends a search whose window could not be prepared:
// the call itself tells nothing. The box is shown all the same.
class AscoltoApertura {
  public:
    AscoltoApertura()
        : mostra_(impostaGestoreMessaggi([this](const Messaggio& box) { return ascolta(box); })) {}
    ~AscoltoApertura() { impostaGestoreMessaggi(mostra_); }
    AscoltoApertura(const AscoltoApertura&) = delete;
    AscoltoApertura& operator=(const AscoltoApertura&) = delete;

    void verifica() const {
        if (fallita_) throw Errore(erroreInterno, replaceText(*fallita_, "\r", ": "));
    }

  private:
    BoxAnswer ascolta(const Messaggio& box) {
        if (box.testo.starts_with("Errore nella funzione NorvelRicerca.Ricerca"))
            fallita_ = box.testo;
        return mostra_(box);
    }
    BoxHandler mostra_; // the toolkit's, which has been started
    std::optional<std::string> fallita_;
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

    const AscoltoApertura ascolto;
    assegna(ricerca, argomenti);
    ricerca.Cerca();
    ascolto.verifica();
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
