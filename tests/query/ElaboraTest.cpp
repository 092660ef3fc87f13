// Rendering of the neutral notation, from the tables of cases and beyond them.
#include "platform/runtime/Errore.h"
#include "query/ElaboraQuery.h"
#include "tests/query/Archivio.h"
#include "tests/query/Casi.h"

namespace norvel::query {
namespace {

class ElaboraCasi : public testing::TestWithParam<Caso> {};

TEST_P(ElaboraCasi, Rende) {
    const Caso& caso = GetParam();
    ASSERT_NE(caso.nome, "Illeggibile") << caso.luogo;
    const std::string connessione = caso.testoO("connessione");
    Messaggi messaggi;
    Variant query(caso.testoO("query"));
    EXPECT_EQ(ElaboraQuery(query, connessione), caso.testoO("resa"));
    if (const auto pulita = caso.testo("pulita")) {
        EXPECT_EQ(query, Variant(*pulita));
    }
    if (const auto errore = caso.testo("errore")) {
        EXPECT_EQ(*errore, "5");
        ASSERT_EQ(messaggi.visti.size(), 1U);
        EXPECT_EQ(messaggi.visti[0], messaggioModulo(erroreArgomento().descrizione()));
    } else {
        EXPECT_TRUE(caso.testo("resa"));
        EXPECT_TRUE(messaggi.visti.empty());
    }
    if (const auto righe = caso.testo("righe")) {
        EXPECT_EQ(Archivio().righe(caso.testoO("resa")), *righe);
    }
}

INSTANTIATE_TEST_SUITE_P(DaFile, ElaboraCasi, testing::ValuesIn(leggiCasi("elabora.casi")),
                         NomeDelCaso());

class OptionFastCasi : public testing::TestWithParam<Caso> {};

TEST_P(OptionFastCasi, Toglie) {
    const Caso& caso = GetParam();
    ASSERT_NE(caso.nome, "Illeggibile") << caso.luogo;
    ASSERT_TRUE(caso.testo("resta"));
    Messaggi messaggi;
    std::string query = caso.testoO("query");
    EXPECT_EQ(togliOptionFast(query), caso.testoO("resta"));
    EXPECT_EQ(query, caso.testoO("resta"));
    EXPECT_TRUE(messaggi.visti.empty());
}

INSTANTIATE_TEST_SUITE_P(DaFile, OptionFastCasi, testing::ValuesIn(leggiCasi("option_fast.casi")),
                         NomeDelCaso());

TEST(OptionFast, UnSuggerimentoAllUltimaPosizioneSiToglie) {
    Messaggi messaggi;
    std::string query = std::string(32766, 'a') + " OPTION (FAST 1)";
    EXPECT_EQ(togliOptionFast(query), std::string(32766, 'a') + " ");
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(OptionFast, UnSuggerimentoOltreLaPosizione32767MostraOverflow) {
    Messaggi messaggi;
    const std::string prima = std::string(32767, 'a') + " OPTION (FAST 1)";
    std::string query = prima;
    EXPECT_EQ(togliOptionFast(query), "");
    EXPECT_EQ(query, prima);
    ASSERT_EQ(messaggi.visti.size(), 1U);
    EXPECT_EQ(messaggi.visti[0], messaggioModulo("Overflow"));
}

TEST(OptionFast, LaPosizioneContaCaratteriNonByte) {
    Messaggi messaggi;
    std::string accenti;
    for (int i = 0; i < 20'000; ++i)
        accenti += "à"; // 40,000 bytes, 20,000 characters
    std::string query = accenti + " OPTION (FAST 1)";
    EXPECT_EQ(togliOptionFast(query), accenti + " ");
    std::string faccine;
    for (int i = 0; i < 20'000; ++i)
        faccine += "\U0001F600"; // two units each
    query = faccine + " OPTION (FAST 1)";
    EXPECT_EQ(togliOptionFast(query), "");
    EXPECT_EQ(messaggi.visti.size(), 1U);
}

TEST(OptionFast, UnaQueryLungaSenzaSuggerimentoPassa) {
    Messaggi messaggi;
    std::string query(100'000, 'a');
    EXPECT_EQ(togliOptionFast(query), std::string(100'000, 'a'));
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Elabora, LArgomentoDelChiamanteEPulitoAncheDopoUnErrore) {
    Messaggi messaggi;
    Variant query("  SELECT iif(a;b;c) FROM t; ");
    EXPECT_EQ(ElaboraQuery(query, "sqloledb"), "");
    EXPECT_EQ(query, Variant("SELECT iif(a;b;c) FROM t"));
    EXPECT_EQ(messaggi.visti.size(), 1U);
}

TEST(Elabora, UnaQueryNullaMostraLErrore) {
    Messaggi messaggi;
    Variant query = Variant::null();
    EXPECT_EQ(ElaboraQuery(query, "access"), "");
    EXPECT_TRUE(query.isNull());
    ASSERT_EQ(messaggi.visti.size(), 1U);
    EXPECT_EQ(messaggi.visti[0], messaggioModulo(erroreNull().descrizione()));
}

TEST(Elabora, UnaQueryEmptyEUnTestoVuoto) {
    Messaggi messaggi;
    Variant query;
    EXPECT_EQ(ElaboraQuery(query, "access"), "");
    EXPECT_EQ(query, Variant(""));
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Elabora, UnTestoCheNonEUtf8RestaComE) {
    Variant query("SELECT '\xE0\xFF' FROM t WHERE a=#03/15/2011#");
    EXPECT_EQ(
        ElaboraQuery(query, "MySQL"),
        "SELECT '\xE0\xFF' FROM t WHERE a= DATE_FORMAT('2011-03-15 00:00:00','%Y-%m-%d %T') ");
}

TEST(Elabora, RendiQuerySollevaSenzaMostrare) {
    Messaggi messaggi;
    Variant query("x iif(a;b;c)");
    try {
        rendiQuery(query, Dialetto::Sql);
        FAIL();
    } catch (const Errore& errore) {
        EXPECT_EQ(errore.numero(), 5);
    }
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Nullo, SoloNullDiventaTestoVuoto) {
    EXPECT_EQ(Nullo(Variant::null()), Variant(""));
    EXPECT_TRUE(Nullo(Variant()).isEmpty());
    EXPECT_EQ(Nullo(Variant(std::int16_t{7})), Variant(std::int16_t{7}));
    EXPECT_EQ(Nullo(Variant(Date{40617})), Variant(Date{40617}));
    EXPECT_EQ(Nullo(Variant("a")), Variant("a"));
}

} // namespace
} // namespace norvel::query
