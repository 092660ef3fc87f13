// More rows than memory: what the window says of those that it does not have.
#include "platform/adodb/fetch/FetchLimit.h"
#include "platform/controls/ValueList.h"
#include "query/ListaValori.h"
#include "tests/search_window/BancoQuery.h"

namespace norvel::search_window {
namespace {

constexpr int inSottofondo =
    adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;
constexpr const char* altri = "Ci sono altri record oltre a quelli letti";

class OltreMemoriaTest : public BancoQuery {
  protected:
    void SetUp() override {
        BancoQuery::SetUp();
        adodb::setFetchLimit(std::size_t{1024} * 1024);
    }
    void TearDown() override {
        adodb::setFetchLimit(0);
        BancoQuery::TearDown();
    }
    static constexpr int tutte = 1000000;
    // The last rows alone are of zone 9.
    static adodb::RecordsetRef troppe(const std::string& altro = "") {
        auto rs = adodb::makeClientRecordset();
        rs->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                     std::to_string(tutte) +
                     ") SELECT i AS codice, 'Cliente ' || i AS nome, i / 100001 AS zona FROM n",
                 "Provider=SQLite;Data Source=:memory:" + altro, adodb::adOpenStatic,
                 adodb::adLockReadOnly, inSottofondo);
        return rs;
    }
    static std::string lettura() { return finestra().StatusBar->PanelText(2); }
    // The window over too many rows, once it has said so.
    tests::Script& letta() {
        pronta();
        return script.waitFor("lo dice", [&] { return !boxes.shown().empty(); });
    }
    static void chiudi() { finestra().Scarica(ModoScarico::Codice); }
};

// The limit is met while the window still waits for the first rows.
TEST_F(OltreMemoriaTest, AnOpeningInTheBackgroundThatMeetsTheLimitShowsWhatCame) {
    adodb::setFetchLimit(1); // at the first block
    auto rs = adodb::makeClientRecordset();
    rs->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                 std::to_string(tutte) + ") SELECT i AS codice, 'Cliente ' || i AS nome FROM n",
             "Provider=SQLite;Data Source=:memory:", adodb::adOpenStatic, adodb::adLockReadOnly,
             inSottofondo | adodb::adAsyncExecute);
    pronta().waitFor("lo dice", [] { return lettura() == altri; }).then("chiude", [] { chiudi(); });
    cerca(rs);
    for (const auto& box : boxes.shown())
        EXPECT_EQ(box.testo.find("Errore nella funzione"), std::string::npos) << box.testo;
}

TEST_F(OltreMemoriaTest, TheCounterSaysThatThereAreMoreAndFilterAndSortThatTheySawOnlyPart) {
    auto rs = troppe();
    letta().then("si muove, filtra, ordina", [&] {
        const std::string lette = std::to_string(rs->RecordCount());
        EXPECT_LT(rs->RecordCount(), tutte);
        EXPECT_TRUE(boxes.lastText().starts_with(
            "La lettura dei record si è interrotta: l'elenco non è completo.\r\nRecord letti: " +
            lette + "\r\n265926 - "))
            << boxes.lastText();
        EXPECT_EQ(stato(), "Totale record " + lette);
        EXPECT_EQ(lettura(), altri);
        tests::screenshotOfDisplay("oltre-memoria");
        robot.press(WXK_DOWN);
        EXPECT_EQ(stato(), "Record 2 di " + lette);
        EXPECT_EQ(lettura(), altri);
        entra(0);
        robot.type("77");
        EXPECT_EQ(stato(), "Record selezionati 1");
        EXPECT_EQ(lettura(), std::string(altri) + "; filtro solo tra quelli letti");
        clicIntestazione(0);
        EXPECT_EQ(lettura(), std::string(altri) + "; filtro e ordine solo tra quelli letti");
        tests::screenshotOfDisplay("oltre-memoria-filtro-ordine");
        entra(0);
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(lettura(), std::string(altri) + "; ordine solo tra quelli letti");
        chiudi();
    });
    cerca(rs);
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_F(OltreMemoriaTest, TheListOfValuesComesFromTheDatabaseAndIsComplete) {
    auto rs = troppe();
    letta()
        .then("apre l'elenco delle zone", [&] { premiPulsante(2); })
        .waitFor(
            "tutte le zone", [&] { return voci().size() == query::vociFisse.size() + 10; }, 20000)
        .then("l'ultima, che tra le righe lette non c'è", [&] {
            EXPECT_EQ(voci().back(), "9");
            robot.press(WXK_ESCAPE);
            chiudi();
        });
    cerca(rs);
}

TEST_F(OltreMemoriaTest, WhatNeedsEveryRowFailsWithTheSameError) {
    ricerca.SetSelezioneMultipla(true);
    variabiliGlobali().gRisposta = "prima";
    auto rs = troppe();
    boxes.answer(BoxAnswer::Yes).answer(BoxAnswer::Yes);
    const auto rifiutato = [&] {
        EXPECT_NE(boxes.lastText().find("265926 - I record sono più di quanti"), std::string::npos)
            << boxes.lastText();
    };
    letta().then("restituisce, esporta, stampa", [&] {
        robot.press(WXK_RETURN, wxMOD_CONTROL);
        rifiutato();
        robot.press('E', wxMOD_CONTROL);
        rifiutato();
        robot.press('S', wxMOD_CONTROL);
        rifiutato();
        robot.press('P', wxMOD_CONTROL);
        rifiutato();
        EXPECT_EQ(ricerca.Risposta(), "prima");
        chiudi();
    });
    cerca(rs);
}

TEST_F(OltreMemoriaTest, ARefreshTriesAgain) {
    auto rs = troppe(";Application Name=SQL Server");
    letta()
        .then("ora ci stanno",
              [&] {
                  adodb::setFetchLimit(0);
                  robot.press(WXK_F5);
              })
        .waitFor(
            "tutte", [&] { return rs->RecordCount() == tutte && !inLavoro(*rs); }, 20000)
        .then("non ce ne sono altri", [&] {
            EXPECT_EQ(lettura(), "");
            EXPECT_TRUE(stato().ends_with(std::to_string(tutte))) << stato();
            chiudi();
        });
    cerca(rs);
    EXPECT_EQ(boxes.shown().size(), 1U);
}

} // namespace
} // namespace norvel::search_window
