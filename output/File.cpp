// The commands that write the grid's rows as a file and open it.
#include "output/Esportazioni.h"
#include "output/Righe.h"
#include "platform/grid/export/ExportFile.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/OpenDocument.h"
#include "platform/runtime/RandomNumbers.h"

namespace norvel::output {

namespace {

class Scrittura : public Lavoro {
  public:
    explicit Scrittura(grid::ExportFile& file) : file_(file) {}
    bool passo() override { return file_.Step(); }
    double fatto() const override { return file_.Done(); }

  private:
    grid::ExportFile& file_;
};

// In the folder the name is in small letters: where case counts, what there is of that name in any
// case is used.
std::string nomeFile(const VariabiliGlobali& sessione, FormatoFile formato) {
    const int n = static_cast<int>(processRandomNumbers().next() * 1000);
    return testoPercorso(sessione.gPercorso) + "export\\" + testoPercorso(sessione.gModulo) +
           std::to_string(n) + (formato == FormatoFile::Html ? ".HTM" : ".csv");
}

grid::ExportSpec forma(const ParteEsportazione& parte, FormatoFile formato) {
    grid::ExportSpec spec;
    spec.format =
        formato == FormatoFile::Html ? grid::ExportFormat::Html : grid::ExportFormat::Delimited;
    spec.title = parte.titolo;
    spec.delimiter = ";";
    spec.headings = true;
    return spec;
}

// False where the operator stopped it.
bool scrivi(const ParteEsportazione& parte, FormatoFile formato, const std::string& nome) {
    if (!tutteLeRighe(parte)) return false;
    const Clessidra clessidra(parte);
    adodb::Recordset& recordset = recordsetDi(parte);
    grid::ExportFile file(recordset,
                          grid::exportTable(parte.colonne, parte.stile, recordset.Sort()),
                          forma(parte, formato), percorsoSistema(nome));
    Scrittura lavoro(file);
    return parte.esegui(lavoro);
}

} // namespace

void esportaFile(const ParteEsportazione& parte, FormatoFile formato) {
    try {
        creaCartella(testoPercorso(parte.sessione.gPercorso) + "Export");
        const std::string nome = nomeFile(parte.sessione, formato);
        if (scrivi(parte, formato, nome)) openDocument(percorsoSistema(nome), parte.finestra);
    } catch (...) { // by design: the command ends without a word
        // But for rows that never came: who waits for them says so, and nobody else does.
        if (!parte.recordset) return;
        if (const auto interrotta = parte.recordset->FetchError()) throw *interrotta;
    }
}

} // namespace norvel::output
