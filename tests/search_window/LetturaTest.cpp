// Rows that are still coming while the window is open: counts, waiting, breaking off.
#include "search_window/Misure.h"
#include "search_window/Testi.h"
#include "tests/search_window/Banco.h"

#include <wx/dialog.h>

namespace norvel::search_window {
namespace {

constexpr int inSottofondo =
    adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;

class LetturaTest : public Banco {
  protected:
    // Some milliseconds a row: thousands of rows take longer than any test waits.
    static adodb::RecordsetRef lenta(int righe) {
        return apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                        std::to_string(righe) +
                        "), m(j) AS (SELECT 1 UNION ALL SELECT j + 1 FROM m LIMIT 20000) "
                        "SELECT i AS codice, (SELECT count(*) FROM m WHERE j > i) AS nome FROM n",
                    inSottofondo);
    }
    // Breaks off at the 200,000th row of 300,000.
    static adodb::RecordsetRef interrotta() {
        return apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 300000) "
                    "SELECT i AS codice, CASE WHEN i = 200000 THEN abs(-9223372036854775807 - 1) "
                    "ELSE i END AS nome FROM n",
                    inSottofondo);
    }
    static wxDialog* dialogo() {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* d = dynamic_cast<wxDialog*>(w); d && d->IsShown()) return d;
        return nullptr;
    }
    static bool inLettura(const adodb::RecordsetRef& rs) {
        return (rs->State() & adodb::adStateFetching) != 0;
    }
};

TEST_F(LetturaTest, TheTotalIsWrittenAgainWhenTheLastRowHasCome) {
    auto rs = clienti(1000000, inSottofondo);
    aperta()
        .waitFor("tutte lette", [&] { return !inLettura(rs) && stato().ends_with("1000000"); })
        .then("controlla", [&] {
            EXPECT_EQ(stato(), "Totale record 1000000");
            EXPECT_EQ(misureFinestra().righeLette, 1000000);
            EXPECT_GT(misureFinestra().righePrimaPittura, 0);
            finestra().Scarica(ModoScarico::Codice);
        });
    cerca(rs);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(LetturaTest, TheWindowIsUsableWhileRowsAreComing) {
    auto rs = lenta(20000);
    pronta().then("sceglie la terza", [&] {
        EXPECT_TRUE(inLettura(rs));
        robot.pressTimes(2, WXK_DOWN);
        EXPECT_TRUE(stato().starts_with("Record 3 di ")) << stato();
        robot.press(WXK_RETURN);
    });
    cerca(rs);
    EXPECT_EQ(ricerca.Risposta(), "3");
}

TEST_F(LetturaTest, TheCounterIsWrittenAgainAsRowsArrive) {
    auto rs = lenta(20000);
    std::string prima;
    pronta()
        .then("giù",
              [&] {
                  robot.press(WXK_DOWN);
                  prima = stato();
              })
        .waitFor("il conto cresce", [&] { return stato() != prima; })
        .then("controlla", [&] {
            EXPECT_TRUE(stato().starts_with("Record 2 di ")) << stato();
            finestra().Scarica(ModoScarico::Codice);
        });
    cerca(rs);
}

TEST_F(LetturaTest, AFetchThatBreaksOffIsSaidAndItsRowsStay) {
    auto rs = interrotta();
    aperta()
        .waitFor("lo dice", [&] { return !boxes.shown().empty(); })
        .then("controlla",
              [&] {
                  EXPECT_TRUE(boxes.lastText().starts_with(
                      "La lettura dei record si è interrotta: l'elenco non è completo.\r\n"))
                      << boxes.lastText();
                  ASSERT_TRUE(rs->FetchError());
                  EXPECT_GT(rs->RecordCount(), 0);
                  EXPECT_LT(rs->RecordCount(), 200000);
                  EXPECT_TRUE(stato().ends_with(std::to_string(rs->RecordCount()))) << stato();
              })
        .waitFor("è pronta", [] { return variabiliGlobali().gFinestraPronta; })
        .then("una riga letta si sceglie", [&] {
            robot.press(WXK_DOWN);
            robot.press(WXK_RETURN);
        });
    cerca(rs);
    EXPECT_EQ(ricerca.Risposta(), "2");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_F(LetturaTest, AllRowsOfAFetchThatBrokeOffAreNotHandedBackAsIfTheyWereAll) {
    ricerca.SetSelezioneMultipla(true);
    variabiliGlobali().gRisposta = "prima";
    auto rs = interrotta();
    boxes.answer(BoxAnswer::Yes);
    aperta()
        .waitFor("lo dice", [&] { return !boxes.shown().empty(); })
        .then("Apri senza selezione", [&] { robot.click(*finestra().BarraBase, pulsante("Apri")); })
        .then("errore, e ancora aperta", [&] {
            ASSERT_EQ(boxes.shown().size(), 3U) << "broken off, the question, the error";
            EXPECT_TRUE(boxes.lastText().starts_with(
                "Si è verificato un errore nel modulo DllRicercaNorvel.Toolbar1\r"));
            EXPECT_TRUE(variabiliGlobali().gSelezioneMultipla);
            EXPECT_EQ(ricerca.Risposta(), "prima");
            finestra().Scarica(ModoScarico::Codice);
        });
    cerca(rs);
}

TEST_F(LetturaTest, HandingAllRowsBackWaitsForThemAndCanBeCancelled) {
    ricerca.SetSelezioneMultipla(true);
    variabiliGlobali().gRisposta = "prima";
    auto rs = lenta(20000);
    boxes.answer(BoxAnswer::Yes);
    pronta()
        .then("Invio senza selezione", [&] { robot.press(WXK_RETURN); })
        .waitFor("l'attesa si vede", [&] { return dialogo() != nullptr; })
        .then("Esc",
              [&] {
                  tests::screenshotOfDisplay("attesa");
                  robot.press(WXK_ESCAPE);
              })
        .then("ancora aperta, niente restituito", [&] {
            EXPECT_EQ(dialogo(), nullptr);
            EXPECT_TRUE(inLettura(rs)) << "the fetch itself goes on";
            EXPECT_TRUE(variabiliGlobali().gSelezioneMultipla);
            EXPECT_EQ(ricerca.Risposta(), "prima");
            finestra().Scarica(ModoScarico::Codice);
        });
    cerca(rs);
}

TEST_F(LetturaTest, HandingAllRowsBackGivesEveryOneOnceTheyHaveCome) {
    ricerca.SetSelezioneMultipla(true);
    auto rs = lenta(1500);
    boxes.answer(BoxAnswer::Yes);
    pronta().then("Invio senza selezione", [&] { robot.press(WXK_RETURN); });
    cerca(rs);
    std::string attesa;
    for (int i = 1; i <= 1500; ++i)
        attesa += std::to_string(i) + "|";
    EXPECT_EQ(ricerca.Risposta(), attesa);
}

TEST_F(LetturaTest, ClosingWhileRowsAreComingLeavesTheHostsFetchAlone) {
    auto rs = lenta(20000);
    pronta().then("Chiudi", [&] { robot.click(*finestra().BarraBase, pulsante("Chiudi")); });
    cerca(rs);
    EXPECT_TRUE(inLettura(rs)) << "the recordset is the host's";
    rs->Cancel();
}

} // namespace
} // namespace norvel::search_window
