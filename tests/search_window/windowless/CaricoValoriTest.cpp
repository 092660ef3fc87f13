// The value query on the embedded database, without the list.
#include "search_window/CaricoValori.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <thread>

namespace norvel::search_window {
namespace {

using namespace std::chrono_literals;
using Voci = std::vector<std::string>;

class CaricoValoriTest : public testing::Test {
  protected:
    void SetUp() override {
        connessione = adodb::makeConnection();
        connessione->Open("Provider=SQLite;Data Source=:memory:");
        connessione->Execute("CREATE TABLE t (nome TEXT, attivo BOOLEAN, prezzo REAL, data DATE)");
        connessione->Execute(
            "INSERT INTO t VALUES ('b', 1, 2.5, '2020-01-31'), ('a', 0, 10, NULL), "
            "('b', 1, NULL, '2020-01-31'), ('', NULL, 2.5, NULL), (NULL, 0, 3, NULL)");
    }
    adodb::RecordsetRef apri(const std::string& sql) {
        auto rs = adodb::makeClientRecordset();
        rs->Open(sql, Variant(std::static_pointer_cast<Object>(connessione)), adodb::adOpenStatic,
                 adodb::adLockReadOnly, adodb::adCmdText);
        return rs;
    }
    // Reads until nothing is under way.
    static Voci tutte(CaricoValori& carico) {
        Voci voci;
        const auto limite = std::chrono::steady_clock::now() + 60s;
        while (carico.inCorso() && std::chrono::steady_clock::now() < limite) {
            carico.leggi(5ms, [&](std::string_view voce) { voci.emplace_back(voce); });
            std::this_thread::sleep_for(1ms);
        }
        EXPECT_FALSE(carico.inCorso());
        return voci;
    }
    Voci elenco(adodb::Recordset& rs, const std::string& campo) {
        CaricoValori carico;
        carico.avvia(rs, campo, "");
        return tutte(carico);
    }
    adodb::ConnectionRef connessione;
};

TEST_F(CaricoValoriTest, OgniValoreUnaVoltaNellOrdineDelDatabase) {
    auto rs = apri("SELECT * FROM t");
    EXPECT_EQ(elenco(*rs, "nome"), (Voci{"a", "b"}));
    EXPECT_EQ(elenco(*rs, "prezzo"), (Voci{"2,5", "3", "10"}));
    EXPECT_EQ(elenco(*rs, "data"), (Voci{"31/01/2020"}));
    EXPECT_EQ(elenco(*rs, "attivo").size(), 2U);
}

TEST_F(CaricoValoriTest, IlFiltroDelRecordsetVale) {
    auto rs = apri("SELECT * FROM t");
    rs->SetFilter("prezzo=2.5");
    EXPECT_EQ(elenco(*rs, "nome"), (Voci{"b"}));
    EXPECT_EQ(rs->RecordCount(), 2) << "the host's rows are left alone";
}

TEST_F(CaricoValoriTest, UnaQueryRifiutataNonHaRigheENonSolleva) {
    auto rs = apri("SELECT * FROM t");
    CaricoValori carico;
    carico.avvia(*rs, "manca", "");
    EXPECT_FALSE(carico.inCorso());
    EXPECT_TRUE(carico.fallito());
    carico.avvia(*rs, "nome", "");
    EXPECT_EQ(tutte(carico).size(), 2U);
    EXPECT_FALSE(carico.fallito());
    rs->Close();
    carico.avvia(*rs, "nome", "");
    EXPECT_FALSE(carico.inCorso());
    EXPECT_TRUE(carico.fallito());
}

TEST_F(CaricoValoriTest, UnaQueryCheSiRompeFinisceLElencoSenzaSollevare) {
    auto rs = adodb::makeClientRecordset();
    rs->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 300000) SELECT "
             "CASE WHEN i = 200000 THEN abs(-9223372036854775807 - 1) ELSE i END AS codice FROM n",
             Variant(std::static_pointer_cast<Object>(connessione)), adodb::adOpenStatic,
             adodb::adLockReadOnly,
             adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking);
    rs->WaitFetch(60000);
    ASSERT_TRUE(rs->FetchError());
    CaricoValori carico;
    carico.avvia(*rs, "codice", "");
    EXPECT_EQ(tutte(carico), Voci{});
    EXPECT_TRUE(carico.fallito());
}

TEST_F(CaricoValoriTest, UnaConnessioneChiusaNonHaVoci) {
    auto rs = apri("SELECT * FROM t");
    connessione->Close();
    EXPECT_EQ(elenco(*rs, "nome"), Voci{});
}

TEST_F(CaricoValoriTest, LoStessoRecordsetPrivatoServePiuVolteEUnaNuovaRichiestaEsautoraLaVecchia) {
    auto molti = apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 50000) "
                      "SELECT i AS codice FROM n");
    auto rs = apri("SELECT * FROM t");
    CaricoValori carico;
    for (int volta = 0; volta < 20; ++volta) {
        carico.avvia(*molti, "codice", "");
        if (volta % 2 == 0) carico.leggi(1ms, [](std::string_view) {});
        carico.avvia(*rs, "nome", "");
        EXPECT_EQ(tutte(carico), (Voci{"a", "b"}));
    }
    carico.avvia(*molti, "codice", "");
    EXPECT_EQ(tutte(carico).size(), 50000U);
}

TEST_F(CaricoValoriTest, AnnullataNonDaPiuVoci) {
    auto molti = apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 50000) "
                      "SELECT i AS codice FROM n");
    CaricoValori carico;
    carico.avvia(*molti, "codice", "");
    carico.annulla();
    EXPECT_FALSE(carico.inCorso());
    carico.leggi(5ms, [](std::string_view voce) { ADD_FAILURE() << voce; });
    carico.annulla();
}

} // namespace
} // namespace norvel::search_window
