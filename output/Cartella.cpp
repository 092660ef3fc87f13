#include "output/Cartella.h"

#include "output/Messaggi.h"
#include "output/QueryEsportazione.h"
#include "output/Righe.h"
#include "platform/spreadsheet/Application.h"

namespace norvel::output {

using namespace adodb;

namespace {

constexpr int attesa = 50; // milliseconds

// Opens the export recordset and runs it again. In the background where the recordset can: then the
// second run takes over as soon as the first has begun to answer, and its rows are awaited.
class Lettura : public Lavoro {
  public:
    Lettura(Recordset& recordset, int opzioni) : recordset_(recordset), opzioni_(opzioni) {}

    bool passo() override {
        if (opzioni_ == -1) {
            recordset_.Requery();
            return false;
        }
        const bool finita = recordset_.WaitFetch(attesa);
        if (const auto errore = recordset_.FetchError()) throw *errore;
        if (rifatta_) return !finita;
        if (!finita && (recordset_.State() & adStateOpen) == 0) return true; // no answer yet
        recordset_.Requery(opzioni_ & ~adCmdText);
        rifatta_ = true;
        return true;
    }
    double fatto() const override { return -1; }

  private:
    Recordset& recordset_;
    int opzioni_;
    bool rifatta_ = false;
};

class Salvataggio : public Lavoro {
  public:
    explicit Salvataggio(spreadsheet::Saving& salva) : salva_(salva) {}
    bool passo() override { return salva_.Step(); }
    double fatto() const override { return salva_.Done(); }

  private:
    spreadsheet::Saving& salva_;
};

void chiudi(Recordset& recordset) {
    if (recordset.State() == adStateClosed) return;
    if (recordset.State() != adStateOpen) recordset.Cancel();
    if (recordset.State() != adStateClosed) recordset.Close();
}

// The export recordset, open while this lives: its rows go when the workbook is written.
class Righe {
  public:
    explicit Righe(const ParteEsportazione& parte)
        : recordset_(parte.recordsetEsportazione(opzioni_)) {
        chiudi(*recordset_);
    }
    ~Righe() {
        try {
            chiudi(*recordset_);
        } catch (const Errore&) { // it is closed anew before its next use
            return;
        }
    }
    Righe(const Righe&) = delete;
    Righe& operator=(const Righe&) = delete;

    // False where the operator stopped it.
    bool apri(const ParteEsportazione& parte) {
        const Recordset& griglia = recordsetDi(parte);
        recordset_->Open(queryEsportazione(griglia), griglia.ActiveConnection(), adOpenUnspecified,
                         adLockUnspecified, opzioni_);
        Lettura lettura(*recordset_, opzioni_);
        return parte.esegui(lettura);
    }
    Recordset& recordset() { return *recordset_; }

  private:
    int opzioni_ = -1;
    RecordsetRef recordset_;
};

struct Salvata {
    bool intera = false; // the operator did not stop it
    spreadsheet::WorkbookLosses perse;
};

Salvata scriviCartella(const ParteEsportazione& parte, Recordset& righe,
                       const std::string& percorso) {
    const auto excel = spreadsheet::createApplication(righe);
    const auto cartella = excel->Workbooks()->Add();
    cartella->Worksheets(1)->Range("A1")->CopyFromRecordset(righe);
    creaCartella(percorso);
    creaCartella(percorso + "export");
    const auto salva = cartella->SaveAs(percorso + "export\\export.xls");
    Salvataggio lavoro(*salva);
    const bool intera = parte.esegui(lavoro);
    excel->Quit();
    return {intera, salva->Losses()};
}

// The pointer is the ordinary one again before a box is shown.
Salvata esporta(const ParteEsportazione& parte, const std::string& percorso) {
    const Clessidra clessidra(parte);
    Righe righe(parte);
    if (!righe.apri(parte)) return {};
    return scriviCartella(parte, righe.recordset(), percorso);
}

} // namespace

void esportaCartella(const ParteEsportazione& parte) {
    if (!tutteLeRighe(parte)) return;
    const std::string percorso = testoPercorso(parte.sessione.gPercorso);
    const Salvata salvata = esporta(parte, percorso);
    if (!salvata.intera) return;
    mostraMessaggio(messaggioCartellaCreata(percorso + "export\\export.xls"));
    if (salvata.perse.any()) mostraMessaggio(messaggioCartellaIncompleta(salvata.perse));
}

} // namespace norvel::output
