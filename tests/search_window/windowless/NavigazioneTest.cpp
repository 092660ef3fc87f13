// The toolbar's moves, and the refresh, over a recordset.
#include "search_window/Navigazione.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace norvel::search_window {
namespace {

using namespace adodb;

RecordsetRef righe(int quante, const std::string& connessione = "Provider=SQLite;Data Source="
                                                                ":memory:") {
    auto rs = makeClientRecordset();
    rs->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                 std::to_string(quante) + ") SELECT i AS codice FROM n" +
                 (quante == 0 ? " WHERE 0" : ""),
             connessione);
    return rs;
}

TEST(Navigazione, AvantiOnTheLastRecordGoesToEofAndThenBackToTheLast) {
    const auto rs = righe(3);
    vaiAllUltimo(*rs);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    vaiAvanti(*rs);
    EXPECT_TRUE(rs->EOF_());
    vaiAvanti(*rs);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    EXPECT_FALSE(rs->EOF_());
}

TEST(Navigazione, IndietroOnTheFirstRecordGoesToBofAndThenBackToTheFirst) {
    const auto rs = righe(3);
    vaiIndietro(*rs);
    EXPECT_TRUE(rs->BOF());
    vaiIndietro(*rs);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    vaiAvanti(*rs);
    vaiAvanti(*rs);
    vaiIndietro(*rs);
    EXPECT_EQ(rs->AbsolutePosition(), 2);
    vaiAlPrimo(*rs);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
}

TEST(Navigazione, OnAnEmptyResultNothingMovesAndNothingIsRaised) {
    const auto rs = righe(0);
    vaiAlPrimo(*rs);
    vaiAllUltimo(*rs);
    vaiIndietro(*rs);
    vaiAvanti(*rs);
    EXPECT_TRUE(rs->BOF() && rs->EOF_());
}

// Counts the requeries that it hears of.
struct Orecchio : RecordsetEvents {
    void WillChangeRecordset(EventReasonEnum motivo, EventStatusEnum&, Recordset&) override {
        requery += motivo == adRsnRequery ? 1 : 0;
    }
    int requery = 0;
};

TEST(Navigazione, AggiornaRunsTheQueryAgainForSqlServerOnly) {
    for (const auto& [connessione, volte] :
         {std::pair{"Provider=SQLite;Data Source=:memory:", 0},
          {"Provider=SQLite;Data Source=:memory:;Extended Properties=Access .mdb MySQL", 0},
          {"Provider=SQLite;Data Source=:memory:;Extended Properties=SQLOLEDB", 1},
          {"Provider=SQLite;Data Source=:memory:;Extended Properties='driver sql server'", 1}}) {
        const auto rs = righe(3, connessione);
        Orecchio orecchio;
        rs->Subscribe(&orecchio);
        aggiornaElenco(*rs);
        EXPECT_EQ(orecchio.requery, volte) << connessione;
        ASSERT_TRUE(rs->WaitFetch(10'000));
        EXPECT_EQ(rs->RecordCount(), 3);
        rs->Unsubscribe(&orecchio);
    }
}

} // namespace
} // namespace norvel::search_window
