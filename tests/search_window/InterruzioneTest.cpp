// Esc while a query runs or rows are coming: what it ends, what comes before it, what is said.
#include "platform/controls/ValueList.h"
#include "search_window/Testi.h"
#include "tests/search_window/BancoQuery.h"

#include <wx/dialog.h>

namespace norvel::search_window {
namespace {

constexpr int inSottofondo =
    adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;

class InterruzioneTest : public Banco {
  protected:
    void SetUp() override {
        Banco::SetUp();
        connessione->Open("Provider=SQLite;Data Source=:memory:;Application Name=SQL Server");
        connessione->Execute("CREATE TABLE passi (fino INTEGER)");
        connessione->Execute("INSERT INTO passi VALUES (0)");
        connessione->Execute("CREATE TABLE clienti (codice INTEGER PRIMARY KEY, nome TEXT)");
        connessione->Execute("INSERT INTO clienti VALUES (1, 'Rossi'), (2, 'Verdi'), (3, 'Neri')");
    }
    void TearDown() override {
        Banco::TearDown();
        connessione->Close();
    }
    // Counts to passi.fino before the first row: no end of it with a large one.
    adodb::RecordsetRef elenco(int opzioni = adodb::adCmdText) const {
        auto rs = adodb::makeClientRecordset();
        rs->Open(
            "SELECT codice, nome FROM clienti WHERE codice > (WITH RECURSIVE n(i) AS (SELECT 0 "
            "UNION ALL SELECT i + 1 FROM n WHERE i < (SELECT fino FROM passi)) "
            "SELECT count(*) FROM n) - (SELECT fino FROM passi) - 1",
            Variant(std::static_pointer_cast<Object>(connessione)), adodb::adOpenStatic,
            adodb::adLockReadOnly, opzioni);
        return rs;
    }
    void senzaFine(bool si) const {
        connessione->Execute(std::string("UPDATE passi SET fino = ") +
                             (si ? "1000000000000" : "0"));
    }
    // Some milliseconds a row, without end.
    static adodb::RecordsetRef lenta() {
        return apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n), "
                    "m(j) AS (SELECT 1 UNION ALL SELECT j + 1 FROM m LIMIT 20000) "
                    "SELECT i AS codice, (SELECT count(*) FROM m WHERE j > i) AS nome FROM n",
                    inSottofondo);
    }
    static wxDialog* dialogo() {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* d = dynamic_cast<wxDialog*>(w); d && d->IsShown()) return d;
        return nullptr;
    }
    static std::string lettura() { return finestra().StatusBar->PanelText(2); }
    static bool inCorso(const adodb::RecordsetRef& rs) { return inLavoro(*rs); }
    void chiudi() { finestra().Scarica(ModoScarico::Codice); }

    adodb::ConnectionRef connessione = adodb::makeConnection();
};

TEST_F(InterruzioneTest, EscEndsARefreshWithoutEndAndTheOldRowsStay) {
    auto rs = elenco();
    pronta()
        .then("Aggiorna",
              [&] {
                  senzaFine(true);
                  robot.press(WXK_F5);
                  EXPECT_TRUE(inCorso(rs));
              })
        .waitFor("lo dice", [&] { return !lettura().empty(); })
        .then("intanto ci si muove, poi Esc",
              [&] {
                  EXPECT_EQ(lettura(), "Interrogazione in corso: Esc la interrompe");
                  tests::screenshotOfDisplay("interrogazione");
                  robot.press(WXK_DOWN);
                  EXPECT_EQ(stato(), "Record 2 di 3");
                  robot.press(WXK_ESCAPE);
              })
        .waitFor("è finita", [&] { return !inCorso(rs); })
        .then("le righe di prima, e Aggiorna",
              [&] {
                  EXPECT_EQ(lettura(), "Aggiornamento interrotto: restano i record di prima");
                  EXPECT_EQ(rs->RecordCount(), 3);
                  EXPECT_EQ(stato(), "Record 2 di 3");
                  tests::screenshotOfDisplay("interrogazione-interrotta");
                  senzaFine(false);
                  connessione->Execute("INSERT INTO clienti VALUES (4, 'Bianchi')");
                  robot.press(WXK_F5);
              })
        .waitFor("righe nuove", [&] { return rs->RecordCount() == 4 && !inCorso(rs); })
        .then("controlla", [&] {
            EXPECT_EQ(lettura(), "");
            chiudi();
        });
    cerca(rs);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(InterruzioneTest, WhereThereIsNoStatusBarABoxSaysIt) {
    ricerca.SetStatusBar("0");
    auto rs = elenco();
    pronta()
        .then("Aggiorna, Esc",
              [&] {
                  senzaFine(true);
                  robot.press(WXK_F5);
                  robot.press(WXK_ESCAPE);
              })
        .waitFor("lo dice", [&] { return !boxes.shown().empty(); })
        .then("chiude", [&] {
            EXPECT_EQ(boxes.lastText(), "Aggiornamento interrotto: restano i record di prima.\r\n"
                                        "3712 - Operazione annullata.");
            chiudi();
        });
    cerca(rs);
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_F(InterruzioneTest, EscEndsTheComingOfRowsAndThoseThatCameStay) {
    auto rs = lenta();
    pronta()
        .waitFor("lo dice", [&] { return !lettura().empty(); })
        .then("Esc",
              [&] {
                  EXPECT_EQ(lettura(), "Lettura in corso: Esc la interrompe");
                  robot.press(WXK_ESCAPE);
              })
        .waitFor("è finita", [&] { return !inCorso(rs) && lettura().starts_with("Lettura i"); })
        .then("si sceglie tra quelle venute", [&] {
            EXPECT_EQ(lettura(), "Lettura interrotta: l'elenco non è completo");
            EXPECT_EQ(stato(), "Totale record " + std::to_string(rs->RecordCount()));
            ASSERT_TRUE(rs->FetchError());
            tests::screenshotOfDisplay("lettura-interrotta");
            robot.press(WXK_DOWN);
            robot.press(WXK_RETURN);
        });
    cerca(rs);
    EXPECT_EQ(ricerca.Risposta(), "2");
    EXPECT_TRUE(boxes.shown().empty());
}

// The host has begun its statement with adAsyncExecute: there are no columns yet to show.
TEST_F(InterruzioneTest, AStatementWithoutRowsYetIsAwaitedAndEscEndsIt) {
    senzaFine(true);
    auto rs = elenco(inSottofondo | adodb::adAsyncExecute);
    script.waitFor("attende", [] { return dialogo() && dialogo()->IsActive(); }).then("Esc", [&] {
        tests::screenshotOfDisplay("attesa-apertura");
        robot.press(WXK_ESCAPE);
    });
    cerca(rs);
    EXPECT_EQ(boxes.lastText(),
              "Errore nella funzione NorvelRicerca.Ricerca\r3712 - Operazione annullata. "
              "L'interrogazione è stata interrotta prima dei primi record.");
    EXPECT_EQ(rs->State(), adodb::adStateClosed);
    chiudi();
    robot.pump();
}

TEST_F(InterruzioneTest, ASecondCallWhileTheFirstOneAwaitsItsRowsIsRefused) {
    senzaFine(true);
    auto rs = elenco(inSottofondo | adodb::adAsyncExecute);
    script.waitFor("attende", [] { return dialogo() && dialogo()->IsActive(); })
        .then("il programma chiama di nuovo",
              [&] {
                  EXPECT_TRUE(ricerca.Cerca().isEmpty());
                  ASSERT_EQ(boxes.shown().size(), 1U);
                  EXPECT_EQ(boxes.lastText(), "Errore nella funzione NorvelRicerca.Ricerca\r400 - "
                                              "La finestra di ricerca è già in apertura");
                  EXPECT_TRUE(dialogo()) << "the first call waits on";
              })
        .then("Esc", [&] { robot.press(WXK_ESCAPE); });
    cerca(rs);
    EXPECT_NE(boxes.lastText().find("3712"), std::string::npos) << boxes.lastText();
    chiudi();
    robot.pump();
}

TEST_F(InterruzioneTest, AStatementThatEndsWhileItIsAwaitedOpensTheWindow) {
    connessione->Execute("UPDATE passi SET fino = 3000000");
    auto rs = elenco(inSottofondo | adodb::adAsyncExecute);
    pronta().then("sceglie", [&] {
        EXPECT_EQ(stato(), "Totale record 3");
        robot.press(WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    cerca(rs);
    EXPECT_EQ(ricerca.Risposta(), "2");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(InterruzioneTest, AStatementRefusedWhileItIsAwaitedIsSaid) {
    auto rs = adodb::makeClientRecordset();
    rs->Open("SELECT * FROM manca", Variant(std::static_pointer_cast<Object>(connessione)),
             adodb::adOpenStatic, adodb::adLockReadOnly, inSottofondo | adodb::adAsyncExecute);
    cerca(rs);
    EXPECT_TRUE(boxes.lastText().starts_with("Errore nella funzione NorvelRicerca.Ricerca\r"));
    EXPECT_NE(boxes.lastText().find("manca"), std::string::npos) << boxes.lastText();
    chiudi();
    robot.pump();
}

// The nearest thing first: a list, a filter cell, a selection; then what runs.
TEST_F(InterruzioneTest, EscInAListACellOrASelectionKeepsItsMeaning) {
    auto rs = lenta();
    const auto& lista = []() -> controls::ValueList& { return *finestra().List1; };
    pronta().then("Esc dopo Esc", [&] {
        const wxRect cella = finestra().Griglia->FilterCellRect(0);
        robot.click(*finestra().Griglia, {cella.x + cella.width / 4, cella.y + cella.height / 2});
        robot.press(WXK_DOWN, wxMOD_ALT);
        EXPECT_TRUE(lista().IsShown());
        robot.press(WXK_ESCAPE);
        EXPECT_FALSE(lista().IsShown());
        EXPECT_TRUE(inCorso(rs)) << "the list had a use for it";
        robot.type("1");
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(finestra().Griglia->Columns().Item(0).FilterText, "");
        EXPECT_TRUE(inCorso(rs)) << "so had the cell's text";
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(finestra().Griglia->focusArea(), grid::Area::Data);
        EXPECT_TRUE(inCorso(rs)) << "and the cell";
        robot.press(WXK_SPACE, wxMOD_SHIFT);
        EXPECT_EQ(finestra().Griglia->SelBookmarks().Count(), 1);
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(finestra().Griglia->SelBookmarks().Count(), 0);
        EXPECT_TRUE(inCorso(rs)) << "and the selection";
        robot.press(WXK_ESCAPE);
        EXPECT_FALSE(inCorso(rs));
        chiudi();
    });
    cerca(rs);
}

// The host asks for its rows anew between Esc and the end of what it was for.
TEST_F(InterruzioneTest, ARefreshThatTheHostBeginsBehindEscIsNotEndedByIt) {
    auto rs = elenco();
    pronta()
        .then("Aggiorna, Esc, il programma rilegge",
              [&] {
                  senzaFine(true);
                  robot.press(WXK_F5);
                  wxKeyEvent esc(wxEVT_CHAR_HOOK); // at once: nothing else is told before
                  esc.m_keyCode = WXK_ESCAPE;
                  finestra().Griglia->HandleWindowEvent(esc);
                  senzaFine(false);
                  connessione->Execute("INSERT INTO clienti WITH RECURSIVE n(i) AS (SELECT 4 "
                                       "UNION ALL SELECT i + 1 FROM n LIMIT 999997) "
                                       "SELECT i, 'Cliente ' || i FROM n");
                  rs->Requery(adodb::adAsyncFetchNonBlocking);
              })
        .waitFor("righe nuove", [&] { return rs->RecordCount() > 3 && !inCorso(rs); })
        .then("controlla", [&] {
            EXPECT_EQ(rs->RecordCount(), 1000000);
            EXPECT_EQ(lettura(), "");
            chiudi();
        });
    cerca(rs);
}

TEST_F(InterruzioneTest, EscWithNothingRunningDoesNothing) {
    auto rs = elenco();
    pronta().then("Esc", [&] {
        robot.pressTimes(3, WXK_ESCAPE);
        EXPECT_EQ(stato(), "Totale record 3");
        EXPECT_EQ(lettura(), "");
        chiudi();
    });
    cerca(rs);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(InterruzioneTest, AQueryRefusedByARefreshLeavesTheOldRowsAndSaysSo) {
    auto rs = elenco();
    pronta()
        .then("Aggiorna",
              [&] {
                  connessione->Execute("DROP TABLE passi");
                  robot.press(WXK_F5);
              })
        .waitFor("lo dice", [&] { return !boxes.shown().empty(); })
        .then("controlla", [&] {
            EXPECT_TRUE(boxes.lastText().starts_with(
                "Aggiornamento non riuscito: restano i record di prima.\r\n"))
                << boxes.lastText();
            EXPECT_EQ(lettura(), "Aggiornamento non riuscito: restano i record di prima");
            EXPECT_EQ(rs->RecordCount(), 3);
            chiudi();
        });
    cerca(rs);
    EXPECT_EQ(boxes.shown().size(), 1U);
}

} // namespace
} // namespace norvel::search_window
