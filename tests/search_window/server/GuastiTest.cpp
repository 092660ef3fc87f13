// A server that stops, or cuts its connections, under an open window: what is said, what stays, and
// that the refresh and the value lists work again afterwards.
#include "tests/search_window/server/BancoServer.h"

namespace norvel::search_window {
namespace {

using namespace adodb;

class GuastiServer : public BancoServer {
  protected:
    // Rows that come for a minute, from PostgreSQL in portions. MariaDB's driver has all of them
    // before it gives the first.
    RecordsetRef righeInArrivo() {
        auto rs = makeClientRecordset();
        rs->Open(pick("SELECT codice, nome FROM clienti ORDER BY codice",
                      "SELECT n AS codice, 'Cliente ' || n AS nome FROM "
                      "generate_series(1, 1000000) n WHERE n % 2000 <> 0 OR pg_sleep(0.1) IS NOT "
                      "NULL"),
                 ObjectRef(connessione), adOpenStatic, adLockReadOnly,
                 adCmdText | adAsyncFetchNonBlocking);
        return rs;
    }
    static bool sta(const std::string& testo, const char* parole) {
        return testo.find(parole) != std::string::npos;
    }
    static constexpr const char* nonRiuscita = "Lettura dei valori non riuscita";
    static const Messaggio& ultimo(const tests::Boxes& boxes) { return boxes.shown().back(); }
};
SU_SERVER(GuastiServer);

TEST_P(GuastiServer, TheServerStopsWhileRowsCome) {
    auto rs = righeInArrivo();
    std::size_t detti = 0;
    cercaSu(
        rs,
        [&] {
            robot.press(WXK_DOWN);
            EXPECT_TRUE(stato().starts_with("Record 2 di ")) << stato();
            const RowCount note = righe().RecordCount();
            server().stop();
            if (postgres()) {
                ASSERT_TRUE(dettoAlmeno(++detti));
                const std::string& testo = ultimo(boxes).testo;
                EXPECT_TRUE(testo.starts_with("La lettura dei record si è interrotta")) << testo;
                EXPECT_TRUE(sta(testo, "La connessione con «127.0.0.1/azienda»")) << testo;
                EXPECT_NE(righe().State() & adStateFetchBroken, 0);
            }
            EXPECT_GE(righe().RecordCount(), note);
            EXPECT_EQ(griglia().CellText(0, Codice), "1");
            robot.press(WXK_DOWN);
            EXPECT_TRUE(stato().starts_with("Record 3 di ")) << stato();
            foto("server-fermo-" + GetParam());
            clicIntestazione(Codice);
            clicIntestazione(Codice);
            EXPECT_NE(griglia().CellText(0, Codice), "1");
            scrivi(Codice, "12\n");
            EXPECT_TRUE(robot.waitUntil([] { return stato() == "Record selezionati 1"; }))
                << stato();
            EXPECT_EQ(boxes.shown().size(), detti) << ultimo(boxes).testo;
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "12");
}

TEST_P(GuastiServer, TheServerStopsWhileARefreshRunsAndAnotherRefreshWorksOnceItIsBack) {
    auto rs = clientiServer("lenti", adLockReadOnly);
    cercaSu(
        rs,
        [&] {
            rallenta(true);
            aggiorna();
            EXPECT_TRUE(robot.waitUntil([&] { return inAttesa() > 0; }, 60000));
            robot.pressTimes(2, WXK_DOWN);
            EXPECT_EQ(stato(), "Record 3 di 30") << "the window answers meanwhile";
            EXPECT_TRUE(boxes.shown().empty());
            server().stop();
            ASSERT_TRUE(dettoAlmeno(1));
            EXPECT_TRUE(sta(ultimo(boxes).testo, "La connessione con «127.0.0.1/azienda»"))
                << ultimo(boxes).testo;
            EXPECT_EQ(stato(), "Record 3 di 30");
            EXPECT_EQ(griglia().CellText(29, Nome), "Cliente 30");
            usaLeRighe();

            aggiorna(); // nobody is there
            ASSERT_TRUE(dettoAlmeno(2));
            EXPECT_TRUE(sta(ultimo(boxes).testo, "La connessione con «127.0.0.1/azienda»"))
                << ultimo(boxes).testo;
            EXPECT_EQ(righe().RecordCount(), 30);

            server().start();
            amministra = makeConnection(server().connection());
            rallenta(false);
            aggiornaConUnaInPiu();
            EXPECT_EQ(boxes.shown().size(), 2U) << ultimo(boxes).testo;
            EXPECT_EQ(griglia().CellText(0, Codice), "31") << "the order holds for the new rows";
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(7)) << voci().size();
            robot.press(WXK_ESCAPE);
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "31");
}

TEST_P(GuastiServer, TheServerStopsWhileAListFills) {
    const std::vector<std::string> fisse{"[Tutti]", "[Nulli]", "[Vuoti]", "[Non vuoti]"};
    cercaSu(
        clientiServer("lenti", adLockReadOnly),
        [&] {
            rallenta(true);
            apreLista(Citta);
            EXPECT_TRUE(robot.waitUntil([&] { return inAttesa() > 0; }, 60000));
            EXPECT_TRUE(
                robot.waitUntil([] { return lista().Note() == "Lettura dei valori in corso"; }));
            server().stop();
            EXPECT_TRUE(robot.waitUntil([] { return lista().Note() == nonRiuscita; }, 60000));
            EXPECT_TRUE(lista().IsShown());
            EXPECT_EQ(voci(), fisse);
            foto("server-fermo-lista-" + GetParam());
            clicVoce("[Non vuoti]");
            EXPECT_FALSE(lista().IsShown());
            EXPECT_EQ(stato(), "Record selezionati 30");
            premiPulsante(Citta); // nobody is there
            EXPECT_TRUE(robot.waitUntil([] { return lista().Note() == nonRiuscita; }, 60000));
            EXPECT_EQ(voci(), fisse);
            clicVoce("[Tutti]");
            EXPECT_TRUE(boxes.shown().empty()) << "a list says nothing of its own";
            usaLeRighe();

            server().start();
            amministra = makeConnection(server().connection());
            rallenta(false);
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(6)) << voci().size();
            clicVoce("Roma");
            EXPECT_EQ(stato(), "Record selezionati 10");
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "30") << "sorted downwards";
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(GuastiServer, ConnectionsThatWereCutMeanwhileAreNoticedByNobody) {
    cercaSu(
        clientiServer(),
        [&] {
            apreLista(Citta); // leaves an idle connection
            EXPECT_TRUE(listaArriva(6));
            robot.press(WXK_ESCAPE);
            tagliaConnessioni();
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(6)) << voci().size();
            robot.press(WXK_ESCAPE);
            tagliaConnessioni();
            aggiornaConUnaInPiu();
            server().stop();
            server().start();
            amministra = makeConnection(server().connection());
            altrove("INSERT INTO clienti VALUES (32, 'Cliente 32', 'Bari')");
            aggiorna();
            EXPECT_TRUE(righeArrivano(32));
        },
        1);
    EXPECT_EQ(ricerca.Risposta(), "2");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(GuastiServer, AConnectionIsCutWhileARefreshRuns) {
    cercaSu(
        clientiServer("lenti", adLockReadOnly),
        [&] {
            rallenta(true);
            aggiorna();
            EXPECT_TRUE(robot.waitUntil([&] { return inAttesa() > 0; }, 60000));
            tagliaConnessioni();
            ASSERT_TRUE(dettoAlmeno(1));
            EXPECT_TRUE(sta(ultimo(boxes).testo, "La connessione con «127.0.0.1/azienda»"))
                << ultimo(boxes).testo;
            EXPECT_EQ(righe().RecordCount(), 30);
            rallenta(false);
            aggiornaConUnaInPiu();
            usaLeRighe();
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "31");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

} // namespace
} // namespace norvel::search_window
