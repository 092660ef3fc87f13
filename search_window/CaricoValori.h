// The rows of a value list on their way into the list.
#pragma once

#include "platform/adodb/Recordset.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace norvel::search_window {

// Runs one value query at a time on a private recordset, made on first use and kept. Nothing is
// raised or shown: a query that is refused has no rows, a fetch that breaks off ends the list, a
// row whose value cannot be read is skipped.
class CaricoValori {
  public:
    CaricoValori() = default;
    ~CaricoValori() { annulla(); }
    CaricoValori(const CaricoValori&) = delete;
    CaricoValori& operator=(const CaricoValori&) = delete;

    // Begins the query for the values of a field among the rows that the recordset's filter lets
    // through; one that runs is cancelled. queryBase: for a recordset without an active command.
    void avvia(adodb::Recordset& dellaGriglia, const std::string& campo,
               const std::string& queryBase);
    // True until the last row has been read.
    bool inCorso() const { return inCorso_; }
    // True once the query that was begun last was refused, or broke off: values may be missing.
    bool fallito() const { return fallito_; }
    // Gives the texts of rows that have come, reading for about so long; waits for none.
    void leggi(std::chrono::milliseconds entro,
               const std::function<void(std::string_view voce)>& aggiungi);
    // Ends the query, if one runs, and closes the private recordset.
    void annulla();

  private:
    using Aggiungi = std::function<void(std::string_view)>;
    void apri(adodb::Recordset& dellaGriglia, const std::string& queryBase);
    bool leggiBlocco(const Aggiungi& aggiungi);
    adodb::RowCount pronte() const;

    adodb::RecordsetRef privato_;
    int opzioni_ = -1;
    std::string campo_;
    adodb::DataTypeEnum tipo_ = adodb::adEmpty; // of the field, in the grid's recordset
    adodb::RowCount lette_ = 0;
    bool inCorso_ = false;
    bool fallito_ = false;
};

} // namespace norvel::search_window
