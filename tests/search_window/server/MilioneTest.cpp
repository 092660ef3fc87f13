// The window over a million rows of a server's table: opened while they come, then filtered, put in
// order, gone through to the end, refreshed.
#include "query/ListaValori.h"
#include "tests/search_window/server/BancoServer.h"

namespace norvel::search_window {
namespace {

using namespace adodb;

constexpr RowCount milione = 1000000;

class MilioneServer : public BancoServer {
  protected:
    void SetUp() override {
        BancoServer::SetUp();
        altrove("CREATE TABLE tanti (codice integer PRIMARY KEY, nome varchar(40), citta "
                "varchar(40))");
        altrove(pick("INSERT INTO tanti SELECT seq, concat('Cliente ', seq), concat('Città ', seq "
                     "MOD 50) FROM seq_1_to_1000000",
                     "INSERT INTO tanti SELECT n, 'Cliente ' || n, 'Città ' || (n % 50) FROM "
                     "generate_series(1, 1000000) n"));
    }
    void TearDown() override {
        altrove("DROP TABLE tanti");
        BancoServer::TearDown();
    }
    bool dice(const std::string& testo) {
        return robot.waitUntil([&] { return stato() == testo; }, 60000);
    }
};
SU_SERVER(MilioneServer);

TEST_P(MilioneServer, AMillionRowsAreSearchedAsAFewAre) {
    auto rs = makeClientRecordset();
    rs->Open("SELECT codice, nome, citta FROM tanti ORDER BY codice", ObjectRef(connessione),
             adOpenStatic, adLockReadOnly, adCmdText | adAsyncFetchNonBlocking);
    cercaSu(
        rs,
        [&] {
            EXPECT_TRUE(righeArrivano(milione));
            EXPECT_TRUE(dice("Totale record 1000000")) << stato();
            robot.press(WXK_END, wxMOD_CONTROL);
            EXPECT_EQ(stato(), "Record 1000000 di 1000000");
            scrivi(Citta, "città 7\n");
            EXPECT_TRUE(dice("Record selezionati 20000")) << stato();
            clicIntestazione(Codice);
            clicIntestazione(Codice);
            EXPECT_EQ(griglia().CellText(0, Codice), "999957");
            foto("milione-" + GetParam());
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(query::vociFisse.size() + 1));
            robot.press(WXK_ESCAPE);
            altrove("DELETE FROM tanti WHERE codice = 999907");
            robot.press(WXK_F5);
            EXPECT_TRUE(robot.waitUntil(
                [&] { return righe().State() == adStateOpen && righe().RecordCount() == 19999; },
                60000));
            EXPECT_EQ(griglia().CellText(0, Codice), "999957");
            EXPECT_EQ(griglia().CellText(1, Codice), "999857");
        },
        1);
    EXPECT_EQ(ricerca.Risposta(), "999857");
    EXPECT_TRUE(boxes.shown().empty());
}

} // namespace
} // namespace norvel::search_window
