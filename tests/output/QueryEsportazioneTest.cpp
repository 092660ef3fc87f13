#include "output/QueryEsportazione.h"

#include "tests/output/Parte.h"

namespace norvel::output {
namespace {

constexpr const char* filtro = "citta LIKE 'ROM*'";

std::string conFiltro(const std::string& q) {
    return queryEsportazione(q, filtro);
}

TEST(QueryEsportazione, WithoutAFilterTheQueryStaysAsItIs) {
    for (const char* q : {"SELECT * FROM t", "SELECT * FROM t ORDER BY a;", " select 1 "})
        for (const Variant& nessuno : {Variant(0), Variant(""), Variant()})
            EXPECT_EQ(queryEsportazione(q, nessuno), q);
}

TEST(QueryEsportazione, AFilterJoinsBehindWhereOrAnd) {
    EXPECT_EQ(conFiltro("SELECT * FROM t"), "SELECT * FROM t where citta LIKE 'ROM%'");
    EXPECT_EQ(conFiltro("SELECT * FROM t WHERE a=1"),
              "SELECT * FROM t WHERE a=1 and citta LIKE 'ROM%'");
    EXPECT_EQ(conFiltro("select * from t wHeRe a=1"),
              "select * from t wHeRe a=1 and citta LIKE 'ROM%'");
}

TEST(QueryEsportazione, AnOrderIsDroppedExactlyWhenAFilterIsAppended) {
    EXPECT_EQ(conFiltro("SELECT * FROM t ORDER BY a"), "SELECT * FROM t  where citta LIKE 'ROM%'")
        << "the blank before it stays";
    EXPECT_EQ(conFiltro("SELECT * FROM t where a=1 ORDER BY a"),
              "SELECT * FROM t where a=1  and citta LIKE 'ROM%'");
    EXPECT_EQ(queryEsportazione("SELECT * FROM t ORDER BY a", 0), "SELECT * FROM t ORDER BY a");
}

TEST(QueryEsportazione, AnOrderInAnotherCaseCountsAndTheCutLooksForItWithoutTheBlank) {
    EXPECT_EQ(conFiltro("SELECT * FROM t order by a"), "SELECT * FROM t  where citta LIKE 'ROM%'");
    EXPECT_EQ(conFiltro("SELECT [border by] FROM t oRDER bY a"),
              "SELECT [b where citta LIKE 'ROM%'")
        << "the first one, whatever stands before it";
    EXPECT_EQ(conFiltro("SELECT * FROM t\nORDER BY a"),
              "SELECT * FROM t\nORDER BY a where citta LIKE 'ROM%'")
        << "a line end is no blank";
}

TEST(QueryEsportazione, AWhereBehindTheOrderIsCutWithIt) {
    EXPECT_EQ(conFiltro("SELECT * FROM t ORDER BY (SELECT 1 where 1=1)"),
              "SELECT * FROM t  where citta LIKE 'ROM%'");
}

TEST(QueryEsportazione, EveryAsteriskOfTheFilterBecomesAPercentSign) {
    EXPECT_EQ(queryEsportazione("SELECT * FROM t", "a LIKE '*x*' AND b LIKE 'y*' OR c='*'"),
              "SELECT * FROM t where a LIKE '%x%' AND b LIKE 'y%' OR c='%'");
}

TEST(QueryEsportazione, AFilterThatIsAListOfRowsCannotBeSaid) {
    try {
        queryEsportazione("SELECT 1", std::vector<Variant>{Variant(1.0)});
        FAIL();
    } catch (const Errore& errore) {
        EXPECT_EQ(errore.numero(), 13);
    }
}

class QueryDelRecordset : public BancoEsporta {};

TEST_F(QueryDelRecordset, IsThatOfItsCommandWithItsFilter) {
    EXPECT_EQ(queryEsportazione(*recordset), "SELECT * FROM clienti");
    recordset->SetFilter("nome = 'D''Amico'");
    EXPECT_EQ(queryEsportazione(*recordset), "SELECT * FROM clienti where nome = 'D''Amico'");
    recordset->SetFilter("data = #03/15/2011#");
    EXPECT_EQ(queryEsportazione(*recordset), "SELECT * FROM clienti where data = #03/15/2011#");
}

TEST_F(QueryDelRecordset, WithoutACommandIsAnError) {
    const auto senza = adodb::makeClientRecordset();
    senza->Fields().Append("a", adodb::adInteger);
    senza->Open();
    EXPECT_THROW(queryEsportazione(*senza), Errore);
}

} // namespace
} // namespace norvel::output
