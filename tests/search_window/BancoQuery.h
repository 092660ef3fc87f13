// The bench of filters, value lists and sorting: a table with a column of every kind.
#pragma once

#include "platform/controls/ValueList.h"
#include "tests/search_window/Banco.h"

#include <wx/panel.h>
#include <wx/radiobut.h>

#include <string>
#include <vector>

namespace norvel::search_window {

// The columns of the table, by their numbers in the grid.
enum ColonnaBanco : int { Codice, Nome, Citta, Prezzo, Attivo, Data, Annullato, Note, Ragione };

class BancoQuery : public Banco {
  protected:
    void SetUp() override {
        Banco::SetUp();
        ricerca.SetWidth("16500");
        ricerca.SetHeight("7000");
        connessione = adodb::makeConnection();
        connessione->Open("Provider=SQLite;Data Source=:memory:");
        esegui("CREATE TABLE clienti (codice INTEGER, nome TEXT, citta TEXT, prezzo REAL, "
               "attivo BOOLEAN, data DATE, annullato TEXT, note TEXT, \"ragione sociale\" TEXT)");
        for (const char* riga : {
                 "1, 'Rossi Anna', 'ROMA', 12.5, 1, '2011-03-15', 'no', NULL, 'Zeta'",
                 "2, 'Rossini Ugo', 'Roma', 12.5, 0, '2011-03-16', 'si', '', 'Alfa'",
                 "3, 'd''Amico Pia', 'Milano', 3, 1, '2011-03-15', 'no', 'x', 'Beta'",
                 "4, 'Verdi', 'MILANO MARITTIMA', 100, 0, NULL, 'si', NULL, 'Gamma'",
                 "5, 'Bianchi', NULL, -7.25, 1, '2012-12-31', 'no', NULL, 'Delta'",
                 "6, 'Neri', '', 0, 0, '2012-12-31', 'NULL', 'y', 'Eta'",
                 "7, 'Rossi', 'Torino', NULL, 1, '2020-02-29', 'no', NULL, 'Iota'",
             })
            esegui(std::string("INSERT INTO clienti VALUES (") + riga + ")");
    }
    void TearDown() override {
        Banco::TearDown();
        connessione->Close();
    }
    void esegui(const std::string& sql) { connessione->Execute(sql); }
    adodb::RecordsetRef tabella(const std::string& sql = "SELECT * FROM clienti") {
        auto rs = adodb::makeClientRecordset();
        rs->Open(sql, Variant(std::static_pointer_cast<Object>(connessione)), adodb::adOpenStatic,
                 adodb::adLockReadOnly, adodb::adCmdText);
        return rs;
    }

    static grid::Grid& griglia() { return *finestra().Griglia; }
    static controls::ValueList& lista() { return *finestra().List1; }
    static adodb::Recordset& righe() { return *finestra().DBRicerca.Recordset(); }
    static std::string filtro() {
        const Variant testo = righe().Filter();
        return testo.isText() ? testo.text() : "";
    }
    // The codes of the rows on show, "1 2 7".
    static std::string codici() {
        std::string testo;
        for (adodb::RowCount i = 0; i < righe().RecordCount(); ++i)
            testo += (i == 0 ? "" : " ") + griglia().CellText(i, Codice);
        return testo;
    }
    static const std::string& cellaDi(int colonna) {
        return griglia().Columns().Item(colonna).FilterText;
    }
    static const std::string& motivoDi(int colonna) {
        return griglia().Columns().Item(colonna).FilterError;
    }

    // A picture for people to look at. Events that came while it was taken are handled after it.
    void foto(std::string_view nome) {
        tests::screenshotOfDisplay(nome);
        robot.pump();
    }

    // --- what the operator does ---
    void entra(int colonna) {
        const wxRect r = griglia().FilterCellRect(colonna);
        robot.click(griglia(), {r.x + r.width / 4, r.y + r.height / 2});
    }
    void scrivi(int colonna, std::string_view testo) {
        entra(colonna);
        robot.type(testo);
    }
    void premiPulsante(int colonna) {
        const wxRect r = griglia().FilterButtonRect(colonna);
        robot.click(griglia(), {r.x + r.width / 2, r.y + r.height / 2});
    }
    static int voce(std::string_view testo) {
        for (std::size_t i = 0; i < lista().ListCount(); ++i)
            if (lista().List(i) == testo) return static_cast<int>(i);
        return -1;
    }
    void clicVoce(std::string_view testo) {
        const int indice = voce(testo);
        ASSERT_GE(indice, 0) << testo;
        const wxRect r = lista().ItemRect(static_cast<std::size_t>(indice));
        ASSERT_FALSE(r.IsEmpty()) << testo << " is not in view";
        robot.click(lista(), {r.x + r.width / 3, r.y + r.height / 2});
    }
    static std::vector<std::string> voci() {
        std::vector<std::string> tutte;
        for (std::size_t i = 0; i < lista().ListCount(); ++i)
            tutte.push_back(lista().List(i));
        return tutte;
    }
    void premiDrop() { robot.click(*finestra().BarraBase, pulsante("Drop")); }
    void scegliModo(wxRadioButton* opzione) { robot.click(*opzione, {8, 8}); }
    void clicIntestazione(int colonna) {
        const wxRect r = griglia().HeadingRect(colonna);
        robot.click(griglia(), {r.x + r.width / 3, r.y + r.height / 2});
    }
    tests::Script& chiude(tests::Script& passi) {
        return passi.then("chiude", [] { finestra().Scarica(ModoScarico::Codice); });
    }
    // A step that opens nothing modal: the next one waits for its end, however slow one of its
    // events is on a busy machine.
    tests::Script& intero(const std::string& nome, const std::function<void()>& passo) {
        const auto fatto = std::make_shared<bool>(false);
        return script
            .then(nome,
                  [passo, fatto] {
                      passo();
                      *fatto = true;
                  })
            .waitFor(
                nome + " (fino in fondo)", [fatto] { return *fatto; }, 90000);
    }
    // One search over the table, in which the operator does this.
    void prova(const std::function<void()>& passo, adodb::RecordsetRef rs = nullptr) {
        pronta();
        intero("prova", passo);
        chiude(script);
        cerca(rs ? std::move(rs) : tabella());
    }

    adodb::ConnectionRef connessione;
};

} // namespace norvel::search_window
