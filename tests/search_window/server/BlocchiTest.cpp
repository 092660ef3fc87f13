// Tables and rows that another program holds: the window waits for a moment only, says so, keeps
// what it had, and does it once they are free.
#include "tests/search_window/server/BancoServer.h"

namespace norvel::search_window {
namespace {

using namespace adodb;

class BlocchiServer : public BancoServer {
  protected:
    void SetUp() override {
        BancoServer::SetUp();
        ricerca.SetToolbar("0");
        ricerca.SetAbilitaModificaCampi("nome");
    }
    static void bloccato(const Messaggio& box) {
        EXPECT_NE(box.testo.find("Il database «127.0.0.1/azienda» ha i dati bloccati da altri. "
                                 "Riprovare tra poco."),
                  std::string::npos)
            << box.testo;
    }
};
SU_SERVER(BlocchiServer);

TEST_P(BlocchiServer, ARefreshAndAListOverALockedTable) {
    cercaSu(
        clientiServer(),
        [&] {
            blocca("clienti");
            aggiorna();
            EXPECT_TRUE(robot.waitUntil([&] { return inAttesa() > 0; }, 60000));
            robot.press(WXK_DOWN);
            EXPECT_EQ(stato(), "Record 2 di 30") << "the window answers meanwhile";
            EXPECT_TRUE(boxes.shown().empty());
            ASSERT_TRUE(dettoAlmeno(1));
            bloccato(boxes.shown()[0]);
            EXPECT_EQ(stato(), "Record 2 di 30");
            apreLista(Citta);
            EXPECT_EQ(voci().size(), 4U);
            EXPECT_TRUE(robot.waitUntil([] { return listaNonRiuscita(); }, 60000));
            robot.press(WXK_ESCAPE);
            usaLeRighe();
            libera();
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(6));
            robot.press(WXK_ESCAPE);
            aggiornaConUnaInPiu();
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "31");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_P(BlocchiServer, AListThatIsLeftWhileTheTableIsLockedClosesAtOnce) {
    cercaSu(
        clientiServer(),
        [&] {
            blocca("clienti");
            apreLista(Citta);
            EXPECT_TRUE(robot.waitUntil([&] { return inAttesa() > 0; }, 60000));
            robot.press(WXK_ESCAPE);
            EXPECT_FALSE(lista().IsShown());
            EXPECT_TRUE(robot.waitUntil([&] { return inAttesa() == 0; }, 60000))
                << "the server is told";
            libera();
        },
        4);
    EXPECT_EQ(ricerca.Risposta(), "5");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_P(BlocchiServer, AnEditedCellOfALockedRowStaysWithWhatWasTyped) {
    cercaSu(
        clientiServer(),
        [&] {
            robot.click(*finestra().BarraBase, pulsante("Modifica"));
            altro = makeConnection(server().connection());
            altro->BeginTrans();
            altro->Execute("SELECT * FROM clienti WHERE codice = 3 FOR UPDATE");
            robot.click(griglia(), cella(2));
            robot.press(WXK_F2);
            robot.type("!");
            robot.press(WXK_RETURN);
            ASSERT_TRUE(dettoAlmeno(1));
            bloccato(boxes.shown()[0]);
            EXPECT_EQ(griglia().focusArea(), grid::Area::CellEdit);
            foto("server-riga-bloccata-" + GetParam());
            altro->RollbackTrans();
            robot.press(WXK_RETURN);
            EXPECT_EQ(griglia().focusArea(), grid::Area::Data);
            EXPECT_EQ(letto("SELECT nome FROM clienti WHERE codice = 3"), "Cliente 3!");
            EXPECT_EQ(griglia().CellText(2, Nome), "Cliente 3!");
            robot.click(*finestra().BarraBase, pulsante("Modifica"));
            usaLeRighe();
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "30");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_P(BlocchiServer, AnEditedCellWhoseServerStoppedIsSavedOnceItIsBack) {
    cercaSu(
        clientiServer(),
        [&] {
            robot.click(*finestra().BarraBase, pulsante("Modifica"));
            robot.click(griglia(), cella(2));
            robot.press(WXK_F2);
            robot.type("!");
            server().stop();
            robot.press(WXK_RETURN);
            ASSERT_TRUE(dettoAlmeno(1));
            EXPECT_NE(boxes.shown()[0].testo.find("La connessione con «127.0.0.1/azienda»"),
                      std::string::npos)
                << boxes.shown()[0].testo;
            EXPECT_EQ(griglia().focusArea(), grid::Area::CellEdit);
            server().start();
            amministra = makeConnection(server().connection());
            robot.press(WXK_RETURN);
            EXPECT_EQ(griglia().focusArea(), grid::Area::Data);
            EXPECT_EQ(letto("SELECT nome FROM clienti WHERE codice = 3"), "Cliente 3!");
            robot.click(*finestra().BarraBase, pulsante("Modifica"));
        },
        2);
    EXPECT_EQ(ricerca.Risposta(), "3");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

} // namespace
} // namespace norvel::search_window
