// The search window as the export commands see it, without a window: a bench for their tests.
#pragma once

#include "output/Esportazioni.h"
#include "platform/runtime/OpenDocument.h"
#include "tests/support/Boxes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace norvel::output {

// A session whose Percorso is a folder of the test's own, a clipboard and a pointer that are
// written down, boxes answered, documents not opened but noted.
class BancoEsporta : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // A table «clienti» in memory: codice, nome, citta, importo, data, attivo, foto (a BLOB).
    adodb::RecordsetRef tabella(const std::string& sql = "SELECT * FROM clienti");
    // Rows whose fetch, in the background, breaks off at the 2000th: one field, codice.
    adodb::RecordsetRef tabellaInterrotta();
    // A column for each field, shown or not.
    void colonneDa(adodb::Recordset& recordset, bool visibili);
    // Rows by their places, columns by their indexes.
    void seleziona(const std::vector<adodb::RowCount>& righe, int prima, int ultima);
    ParteEsportazione parte();
    std::string file(const std::string& nome) const; // its contents; "" where there is none
    long quantiFile() const;                         // in the folder, and in those in it

    adodb::ConnectionRef connessione;
    adodb::RecordsetRef recordset;
    grid::Columns colonne;
    grid::GridStyle stile;
    AreaSelezionata area;
    VariabiliGlobali sessione;
    std::filesystem::path cartella;

    // What happened, in order: "svuota", "scrivi", "clessidra si", "clessidra no".
    std::vector<std::string> fatti;
    std::string appunti = "quello di prima";
    bool attende = true; // the operator waits for the rows
    bool finisce = true; // and for the work
    std::vector<std::filesystem::path> aperti;
    tests::Boxes boxes;

  private:
    adodb::RecordsetRef aperta(const std::string& sql, int opzioni);

    DocumentOpener prima_;
    adodb::RecordsetRef esportazione_;
};

} // namespace norvel::output
