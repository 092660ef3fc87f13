// The selected cells as a text for the clipboard.
#pragma once

#include "output/Lavoro.h"
#include "platform/adodb/Recordset.h"
#include "platform/grid/model/Model.h"

#include <functional>
#include <string>
#include <vector>

namespace norvel::output {

// What is selected: rows by their bookmarks, in the order of the selection, and of them the columns
// from prima to ultima (indexes in the collection).
struct AreaSelezionata {
    bool presente = false;
    int prima = -1, ultima = -1;
    std::function<adodb::RowCount()> righe;
    std::function<Variant(adodb::RowCount indice)> bookmark; // indice from 0
};

enum class FormaTesto {
    Semplice, // an empty line, then values with a blank behind each
    Excel,    // a heading of field names, values with a TAB behind each
};

// Builds the text row by row from a clone, so that values are the database's and the host's current
// record stays. A column is taken where its Visible is False, and passed over where it is True.
// Values become text as an automation host joins a value to a text: by Italian conventions, Null
// "", a value that has no text (bytes) raises 13.
class TestoArea : public Lavoro {
  public:
    // Raises 6 past 32,767 columns (FormaTesto::Excel, which counts them), 3265 on a field that the
    // recordset does not have, and what the recordset raises.
    TestoArea(const grid::Columns& colonne, const AreaSelezionata& area,
              adodb::Recordset& recordset, FormaTesto forma);

    bool passo() override;
    double fatto() const override;
    const std::string& testo() const { return testo_; }
    std::int16_t colonne() const { return contate_; }

  private:
    void scegliColonne(const grid::Columns& colonne);
    void riga(adodb::RowCount indice);

    AreaSelezionata area_;
    FormaTesto forma_;
    adodb::RecordsetRef clone_;
    std::vector<std::string> mappa_; // the DataField of each column of the grid
    std::vector<int> scelte_;
    std::vector<adodb::Field*> campi_; // of the chosen columns
    std::int16_t contate_ = 0;
    std::string testo_;
    adodb::RowCount righe_ = 0, prossima_ = 0;
};

// The value in a text of the host's: "" for Null, else as Variant::toText.
std::string testoValore(const Variant& valore);

} // namespace norvel::output
