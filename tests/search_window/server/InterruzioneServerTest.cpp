// A query of ten minutes on a server, and the operator who ends it with Esc: it is gone from the
// server, the window keeps what it had, and works again.
#include "platform/adodb/fetch/FetchLimit.h"
#include "query/ListaValori.h"
#include "tests/search_window/server/BancoServer.h"

#include <wx/dialog.h>

namespace norvel::search_window {
namespace {

using namespace adodb;

class InterruzioneServer : public BancoServer {
  protected:
    void TearDown() override {
        setFetchLimit(0);
        BancoServer::TearDown();
    }
    RecordsetRef rigaPerRiga(const std::string& sql, int opzioni = 0) {
        auto rs = makeClientRecordset();
        rs->Open(sql, ObjectRef(connessione), adOpenStatic, adLockReadOnly,
                 adCmdText | adAsyncFetchNonBlocking | opzioni);
        return rs;
    }
    static std::string lettura() { return finestra().StatusBar->PanelText(2); }
    bool lavora() {
        return robot.waitUntil([this] { return inAttesa() > 0; }, 60000);
    }
    // Behind the first rows each takes a second.
    static constexpr const char* senzaFine =
        "SELECT n AS codice, CASE WHEN n > 2500 THEN pg_sleep(1)::text END AS nome FROM "
        "generate_series(1, 1000000) n";
    bool dice(const std::string& testo) {
        return robot.waitUntil([&] { return lettura() == testo; }, 60000);
    }
    // The server itself no longer runs a statement of ours.
    bool sparita() {
        return robot.waitUntil([this] { return inAttesa() == 0; }, 60000);
    }
};
SU_SERVER(InterruzioneServer);

TEST_P(InterruzioneServer, ARefreshOfTenMinutes) {
    cercaSu(
        clientiServer("lenti"),
        [&] {
            rallenta(true);
            robot.press(WXK_F5);
            ASSERT_TRUE(lavora());
            EXPECT_TRUE(dice("Interrogazione in corso: Esc la interrompe")) << lettura();
            robot.press(WXK_DOWN);
            EXPECT_EQ(stato(), "Record 2 di 30"); // the window answers
            foto("interrogazione-" + GetParam());
            robot.press(WXK_ESCAPE);
            ASSERT_TRUE(sparita());
            EXPECT_TRUE(dice("Aggiornamento interrotto: restano i record di prima")) << lettura();
            EXPECT_FALSE(inLavoro(righe()));
            EXPECT_EQ(stato(), "Record 2 di 30");
            rallenta(false);
            usaLeRighe();
            altrove("DELETE FROM clienti WHERE codice > 20");
            robot.press(WXK_F5);
            EXPECT_TRUE(righeArrivano(20));
            EXPECT_TRUE(dice("")) << lettura();
        },
        1);
    EXPECT_EQ(ricerca.Risposta(), "19"); // the sort stays
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(InterruzioneServer, AStatementWhoseRowsHaveNotCome) {
    rallenta(true);
    auto rs = rigaPerRiga("SELECT codice, nome FROM lenti", adAsyncExecute);
    script
        .waitFor(
            "attende",
            [] {
                for (wxWindow* w : wxTopLevelWindows)
                    if (auto* d = dynamic_cast<wxDialog*>(w)) return d->IsActive();
                return false;
            },
            60000)
        .then("Esc", [&] {
            EXPECT_TRUE(lavora());
            robot.press(WXK_ESCAPE);
        });
    apriViste();
    cerca(rs);
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_NE(boxes.lastText().find("interrotta prima dei primi record"), std::string::npos)
        << boxes.lastText();
    EXPECT_TRUE(sparita());
    finestra().Scarica(ModoScarico::Codice);
    robot.pump();
}

// Rows come one by one for hours. MariaDB's driver gives none before it has them all.
TEST_P(InterruzioneServer, RowsThatAreComing) {
    if (!postgres()) GTEST_SKIP() << "the driver has all rows before it gives the first";
    cercaSu(
        rigaPerRiga(senzaFine),
        [&] {
            EXPECT_TRUE(dice("Lettura in corso: Esc la interrompe")) << lettura();
            EXPECT_TRUE(lavora());
            robot.press(WXK_ESCAPE);
            ASSERT_TRUE(sparita());
            EXPECT_TRUE(dice("Lettura interrotta: l'elenco non è completo")) << lettura();
            EXPECT_FALSE(inLavoro(righe()));
            EXPECT_EQ(stato(), "Totale record " + std::to_string(righe().RecordCount()));
            EXPECT_GT(righe().RecordCount(), 0);
            robot.press(WXK_F5); // begins anew
            ASSERT_TRUE(
                robot.waitUntil([] { return lettura().find("corso") != std::string::npos; }));
            robot.press(WXK_ESCAPE);
            EXPECT_TRUE(sparita());
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "1");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(InterruzioneServer, AServerThatDoesNotAnswerToEscIsNotWaitedFor) {
    cercaSu(
        clientiServer("lenti"),
        [&] {
            rallenta(true);
            robot.press(WXK_F5);
            ASSERT_TRUE(lavora());
            server().freeze();
            robot.press(WXK_ESCAPE);
            EXPECT_TRUE(dice("Aggiornamento interrotto: restano i record di prima")) << lettura();
            robot.press(WXK_DOWN);
            EXPECT_EQ(stato(), "Record 2 di 30");
            server().thaw(); // and is told then
            EXPECT_TRUE(sparita());
            rallenta(false);
            robot.press(WXK_F5);
            EXPECT_TRUE(righeArrivano(30));
        },
        1);
    EXPECT_EQ(ricerca.Risposta(), "2");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(InterruzioneServer, AListOfValues) {
    cercaSu(
        clientiServer("lenti"),
        [&] {
            rallenta(true);
            apreLista(Citta);
            ASSERT_TRUE(lavora());
            EXPECT_EQ(voci().size(), query::vociFisse.size());
            robot.press(WXK_ESCAPE);
            EXPECT_FALSE(lista().IsShown());
            EXPECT_TRUE(sparita());
            rallenta(false);
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(query::vociFisse.size() + 2));
            robot.press(WXK_ESCAPE);
            EXPECT_EQ(righe().RecordCount(), righeTabella);
        },
        2);
    EXPECT_EQ(ricerca.Risposta(), "3");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(InterruzioneServer, MoreRowsThanMemory) {
    setFetchLimit(std::size_t{1024} * 1024);
    const std::string tante =
        pick("SELECT seq AS codice, concat('Cliente ', seq) AS nome, seq DIV 100001 AS citta FROM "
             "seq_1_to_1000000",
             "SELECT n AS codice, 'Cliente ' || n AS nome, n / 100001 AS citta FROM "
             "generate_series(1, 1000000) n");
    cercaSu(
        rigaPerRiga(tante),
        [&] {
            ASSERT_TRUE(dettoAlmeno(1));
            EXPECT_NE(boxes.lastText().find("265926 - I record sono più di quanti"),
                      std::string::npos)
                << boxes.lastText();
            EXPECT_LT(righe().RecordCount(), 1000000);
            EXPECT_EQ(lettura(), "Ci sono altri record oltre a quelli letti");
            foto("oltre-memoria-" + GetParam());
            scrivi(Codice, "77\n");
            EXPECT_EQ(lettura(),
                      "Ci sono altri record oltre a quelli letti; filtro solo tra quelli letti");
            EXPECT_TRUE(stato().starts_with("Record selezionati ")) << stato();
            robot.press(WXK_ESCAPE);
            apreLista(Citta); // of all zones, also those of rows that did not come
            EXPECT_TRUE(listaArriva(query::vociFisse.size() + 10));
            robot.press(WXK_ESCAPE);
            setFetchLimit(0);
            robot.press(WXK_F5);
            EXPECT_TRUE(righeArrivano(1000000));
            EXPECT_TRUE(dice("")) << lettura();
        },
        2);
    EXPECT_EQ(ricerca.Risposta(), "3");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

} // namespace
} // namespace norvel::search_window
