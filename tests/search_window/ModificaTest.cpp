// Editing in the search window: the button "Modifica", saving, refusals, over a database file that
// is read back.
#include "tests/search_window/Banco.h"

#include <wx/textctrl.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace norvel::search_window {
namespace {

using namespace adodb;

class ModificaTest : public Banco {
  protected:
    void SetUp() override {
        Banco::SetUp();
        std::random_device caso;
        file_ =
            std::filesystem::temp_directory_path() / ("modifica" + std::to_string(caso()) + ".db");
        std::ofstream(file_).flush(); // an empty file is an empty database
        esegui("CREATE TABLE clienti(codice INTEGER PRIMARY KEY, nome TEXT, sconto INTEGER "
               "CHECK(sconto <= 50), attivo INTEGER)");
        esegui("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 30) INSERT INTO "
               "clienti SELECT i, 'Cliente ' || i, i, -(i % 2) FROM n");
        ricerca.SetToolbar("0");
        ricerca.SetAbilitaModificaCampi("NOME ; sconto;attivo");
    }
    void TearDown() override {
        Banco::TearDown();
        std::filesystem::remove(file_);
    }
    std::string connessione() const { return "Provider=SQLite;Data Source=" + file_.string(); }
    // By another program.
    void esegui(const std::string& sql) const {
        const auto su = makeConnection();
        su->Open(connessione());
        su->Execute(sql);
        su->Close();
    }
    // What another program reads in the file.
    std::string scritto(int codice, const char* campo) const {
        const auto righe = makeClientRecordset();
        righe->Open("SELECT " + std::string(campo) +
                        " FROM clienti WHERE codice = " + std::to_string(codice),
                    connessione(), adOpenStatic, adLockReadOnly, adCmdText);
        std::string valore = righe->Fields()(0).Value().toDisplay();
        righe->Close();
        return valore;
    }
    RecordsetRef clientiModificabili(LockTypeEnum blocco = adLockOptimistic) const {
        auto righe = makeClientRecordset();
        righe->Open("SELECT codice, nome, sconto, attivo FROM clienti ORDER BY codice",
                    connessione(), adOpenStatic, blocco, adCmdText);
        return righe;
    }
    void premi(const char* chiave) { robot.click(*finestra().BarraBase, pulsante(chiave)); }
    static bool premuto() { return finestra().BarraBase->Item("Modifica").Value == 1; }
    // Into the cell, and something typed behind its text.
    void scrivi(int riga, int colonna, const char* testo) {
        robot.click(*finestra().Griglia, cella(riga, colonna));
        robot.press(WXK_F2);
        EXPECT_TRUE(inCella());
        robot.type(testo);
    }
    static bool inCella() { return finestra().Griglia->focusArea() == grid::Area::CellEdit; }
    static std::string nellaCella() {
        const auto* campo = dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus());
        return campo ? campo->GetValue().utf8_string() : "-";
    }
    void chiudi() { finestra().Scarica(ModoScarico::Codice); }

    std::filesystem::path file_;
};

TEST_F(ModificaTest, TheButtonSwitchesEditingOfTheListedFieldsOnAndOff) {
    pronta().then("modifica, poi no", [&] {
        EXPECT_FALSE(finestra().Griglia->AllowUpdate());
        premi("Modifica");
        EXPECT_TRUE(premuto());
        EXPECT_TRUE(finestra().Griglia->AllowUpdate());
        scrivi(2, 1, " S.r.l.");
        tests::screenshot(*finestra().Finestra, "ricerca_modifica");
        robot.press(WXK_RETURN);
        EXPECT_TRUE(frmRicercaCaricata()) << "Enter saved, and chose nothing";
        EXPECT_EQ(scritto(3, "nome"), "Cliente 3 S.r.l.");
        robot.click(*finestra().Griglia, cella(2, 0));
        robot.type("9");
        EXPECT_FALSE(inCella()) << "codice is not in the list";
        premi("Modifica");
        EXPECT_FALSE(premuto());
        robot.click(*finestra().Griglia, cella(4, 1));
        robot.type("x");
        EXPECT_FALSE(inCella());
        robot.press(WXK_RETURN);
    });
    cerca(clientiModificabili());
    EXPECT_EQ(ricerca.Risposta(), "5") << "Enter chooses as before";
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(ModificaTest, ThePressedButtonHoldsForTheFieldsOfRowsThatAreOpenedAnew) {
    const RecordsetRef righe = clientiModificabili();
    pronta().then("altri campi", [&] {
        premi("Modifica");
        righe->Close();
        righe->Open("SELECT codice, sconto, nome AS ragione, nome FROM clienti ORDER BY codice",
                    connessione(), adOpenStatic, adLockOptimistic, adCmdText);
        robot.pump();
        ASSERT_EQ(finestra().Griglia->Columns().Count(), 4);
        robot.click(*finestra().Griglia, cella(2, 2));
        robot.type("x");
        EXPECT_FALSE(inCella()) << "ragione is not in the list";
        scrivi(2, 3, "!");
        robot.press(WXK_RETURN);
        EXPECT_EQ(scritto(3, "nome"), "Cliente 3!");
        premi("Modifica");
        chiudi();
    });
    cerca(righe);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(ModificaTest, ReleasingTheButtonSavesTheCellOrStaysWhereItIsRefused) {
    pronta().then("rilascia", [&] {
        premi("Modifica");
        scrivi(2, 1, "!");
        premi("Modifica");
        EXPECT_FALSE(premuto());
        EXPECT_EQ(scritto(3, "nome"), "Cliente 3!");
        premi("Modifica");
        scrivi(2, 2, "00");
        premi("Modifica");
        EXPECT_EQ(boxes.shown().size(), 1U);
        EXPECT_TRUE(premuto()) << "refused by the database: still editing";
        EXPECT_EQ(nellaCella(), "300");
        tests::screenshot(*finestra().Finestra, "ricerca_modifica_rifiutata");
        robot.press(WXK_BACK);
        premi("Modifica");
        EXPECT_FALSE(premuto());
        EXPECT_EQ(scritto(3, "sconto"), "30");
        chiudi();
    });
    cerca(clientiModificabili());
}

TEST_F(ModificaTest, CommandsSaveWhatIsHalfTypedBeforeTheyRun) {
    pronta().then("comandi", [&] {
        premi("Modifica");
        scrivi(2, 1, "!");
        premi("avanti");
        EXPECT_EQ(scritto(3, "nome"), "Cliente 3!");
        EXPECT_EQ(finestra().Griglia->CurrentRow(), 3);
        scrivi(3, 2, "x");
        premi("primo");
        EXPECT_EQ(boxes.lastText(), "«4x» non è un numero.");
        EXPECT_EQ(finestra().Griglia->CurrentRow(), 3);
        EXPECT_EQ(nellaCella(), "4x");
        robot.press(WXK_ESCAPE);
        premi("primo");
        EXPECT_EQ(finestra().Griglia->CurrentRow(), 0);
        chiudi();
    });
    cerca(clientiModificabili());
}

TEST_F(ModificaTest, ClosingTheWindowSavesOrStays) {
    pronta().then("chiude due volte", [&] {
        premi("Modifica");
        scrivi(2, 2, "00");
        finestra().Finestra->Close();
        EXPECT_TRUE(frmRicercaCaricata());
        EXPECT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(nellaCella(), "300");
        robot.press(WXK_BACK);
        robot.click(*finestra().CmdChiudi, wxPoint(8, 8));
    });
    cerca(clientiModificabili());
    EXPECT_EQ(scritto(3, "sconto"), "30");
}

TEST_F(ModificaTest, ACheckBoxIsSwitchedAndTheRowHandedBackOnceItIsSaved) {
    pronta().then("spunta", [&] {
        auto& griglia = *finestra().Griglia;
        EXPECT_EQ(griglia.DataTypeCode(3), 10);
        griglia.Columns().Item(3).ValueItems = {.Translate = true, .Presentation = 4};
        griglia.Changed();
        premi("Modifica");
        const wxRect r = griglia.CellRect(1, 3);
        robot.click(griglia, {r.x + r.width / 2, r.y + r.height / 2});
        tests::screenshot(*finestra().Finestra, "ricerca_spunta");
        EXPECT_EQ(scritto(2, "attivo"), "0");
        robot.press(WXK_RETURN);
        EXPECT_TRUE(frmRicercaCaricata());
        EXPECT_EQ(scritto(2, "attivo"), "-1");
        robot.press(WXK_RETURN);
    });
    cerca(clientiModificabili());
    EXPECT_EQ(ricerca.Risposta(), "2");
}

TEST_F(ModificaTest, RowsThatNobodyCanChangeSayWhyAndTheButtonComesUp) {
    pronta().then("sola lettura", [&] {
        premi("Modifica");
        EXPECT_FALSE(premuto());
        EXPECT_EQ(boxes.lastText(),
                  "I record di questo elenco sono di sola lettura: non si possono modificare.");
        EXPECT_FALSE(finestra().Griglia->AllowUpdate());
        chiudi();
    });
    cerca(clientiModificabili(adLockReadOnly));
}

TEST_F(ModificaTest, ARowIsSavedOnceTheRowsStillArrivingHaveCome) {
    esegui(
        "WITH RECURSIVE n(i) AS (SELECT 31 UNION ALL SELECT i+1 FROM n LIMIT 300000) INSERT INTO "
        "clienti SELECT i, 'Cliente ' || i, 1, 0 FROM n");
    pronta()
        .then("modifica mentre arrivano",
              [&] {
                  premi("Modifica");
                  scrivi(2, 1, "!");
                  robot.press(WXK_RETURN);
              })
        .waitFor(
            "salvata", [&] { return !inCella() && scritto(3, "nome") == "Cliente 3!"; }, 20000)
        .then("chiude", [&] {
            EXPECT_TRUE(finestra().DBRicerca.Recordset()->WaitFetch(0));
            chiudi();
        });
    auto righe = makeClientRecordset();
    righe->Open("SELECT codice, nome, sconto, attivo FROM clienti ORDER BY codice", connessione(),
                adOpenStatic, adLockOptimistic, adCmdText | adAsyncFetch);
    cerca(righe);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(ModificaTest, OfTwoOperatorsTheSecondOneIsToldAndNothingIsOverwritten) {
    pronta().then("insieme", [&] {
        premi("Modifica");
        scrivi(2, 1, "!");
        esegui("UPDATE clienti SET nome = 'Neri' WHERE codice = 3");
        robot.press(WXK_DOWN);
        EXPECT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(nellaCella(), "Cliente 3!");
        robot.press(WXK_ESCAPE);
        robot.press(WXK_DOWN);
        EXPECT_EQ(finestra().Griglia->CurrentRow(), 3);
        chiudi();
    });
    cerca(clientiModificabili());
    EXPECT_EQ(scritto(3, "nome"), "Neri");
}

} // namespace
} // namespace norvel::search_window
