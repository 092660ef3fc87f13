// Sorting by a click on a heading: the grid and the recordset as the rules see them.
#include "component/VariabiliGlobali.h"
#include "platform/grid/Grid.h"
#include "platform/grid/HeadingPicture.h"
#include "platform/runtime/HostPath.h"
#include "query/Ordinamento.h"
#include "search_window/FrmRicerca.h"

namespace norvel::search_window {

namespace {

class IntestazioniGriglia final : public query::Intestazioni {
  public:
    IntestazioniGriglia(grid::Grid& griglia, adodb::RecordsetRef recordset)
        : griglia_(griglia), recordset_(std::move(recordset)) {}

    int numero() const override { return griglia_.Columns().Count(); }
    std::string campo(int colonna) const override {
        return griglia_.Columns().Item(colonna).DataField;
    }
    int posizioneImmagine(int colonna) const override {
        return stile(colonna).ForegroundPicturePosition;
    }
    void impostaPosizioneImmagine(int colonna, int posizione) override {
        stile(colonna).ForegroundPicturePosition = posizione;
    }
    void impostaImmagine(int colonna, const std::string& percorso) override {
        stile(colonna).ForegroundPicture = grid::loadPicture(percorsoSistema(percorso));
    }
    void impostaTrasparente(int colonna, bool trasparente) override {
        stile(colonna).TransparentForegroundPicture = trasparente;
    }
    void ridisegna() override { griglia_.Refresh(); }
    void impostaOrdine(const std::string& testo) override {
        if (!recordset_) throw erroreOggettoNonImpostato();
        recordset_->SetSort(testo);
    }

  private:
    grid::HeadingStyle& stile(int colonna) const {
        return griglia_.Columns().Item(colonna).Heading;
    }
    grid::Grid& griglia_;
    adodb::RecordsetRef recordset_;
};

} // namespace

void FrmRicerca::togliFrecce() {
    IntestazioniGriglia intestazioni(*Griglia, DBRicerca.Recordset());
    query::togliFrecce(intestazioni);
    intestazioni.ridisegna();
}

void FrmRicerca::suClicIntestazione(int colonna) {
    const Variant& percorso = variabiliGlobali().gPercorso;
    IntestazioniGriglia intestazioni(*Griglia, DBRicerca.Recordset());
    query::ordinaPerColonna(intestazioni, colonna, crescente_,
                            percorso.isNull() ? std::string() : percorso.toText());
}

} // namespace norvel::search_window
