// Statements cut into tokens by each database's rules.
#include "query/Lessico.h"

#include "query/LessicoFiltro.h"

#include <gtest/gtest.h>

namespace norvel::query {
namespace {

// The tokens as one text: a letter for the kind, a colon, the token.
std::string tagliati(std::string_view sql, Regole regole) {
    constexpr std::string_view lettere = "TNDPnscR";
    std::string tutti;
    for (const Simbolo& simbolo : simboliDi(sql, regole)) {
        if (!tutti.empty()) tutti += ' ';
        tutti += lettere[static_cast<std::size_t>(simbolo.genere)];
        tutti.append(":").append(simbolo.testo);
    }
    return tutti;
}

constexpr Regole tutte[] = {Regole::SqlServer, Regole::Access, Regole::MySql, Regole::Sqlite};

TEST(Lessico, CioCheTuttiLeggonoUguale) {
    for (const Regole regole : tutte) {
        EXPECT_EQ(tagliati("", regole), "");
        EXPECT_EQ(tagliati(" \t\r\n ", regole), "");
        EXPECT_EQ(tagliati("SELECT a.b, 12.5e3 FROM tàb WHERE x<>''", regole),
                  "P:SELECT P:a s:. P:b s:, n:12.5e3 P:FROM P:tàb P:WHERE P:x s:< s:> T:''");
        EXPECT_EQ(tagliati("'l''altro' 'x'", regole), "T:'l''altro' T:'x'");
        EXPECT_EQ(tagliati("'aperto", regole), "R:'aperto");
        EXPECT_EQ(tagliati("''''", regole), "T:''''");
        EXPECT_EQ(tagliati("'''", regole), "R:'''");
        EXPECT_EQ(tagliati(std::string_view("a\0b", 3), regole),
                  std::string("P:a R:") + '\0' + " P:b");
        EXPECT_EQ(tagliati(std::string_view("'a\0b'", 5), regole),
                  std::string("R:'a") + '\0' + "b'");
    }
}

TEST(Lessico, SoloInMySqlLaBarraProteggeLApice) {
    EXPECT_EQ(tagliati(R"('a\' OR 1)", Regole::MySql), R"(R:'a\' OR 1)");
    EXPECT_EQ(tagliati(R"('a\'' OR 1)", Regole::MySql), R"(T:'a\'' P:OR n:1)");
    EXPECT_EQ(tagliati(R"('a\\' OR 1)", Regole::MySql), R"(T:'a\\' P:OR n:1)");
    EXPECT_EQ(tagliati(R"("a\" b")", Regole::MySql), R"(T:"a\" b")");
    EXPECT_EQ(tagliati(R"(`a\` b)", Regole::MySql), R"(N:`a\` P:b)");
    for (const Regole regole : {Regole::SqlServer, Regole::Access, Regole::Sqlite})
        EXPECT_EQ(tagliati(R"('a\' OR 1)", regole), R"(T:'a\' P:OR n:1)");
}

TEST(Lessico, LeVirgoletteDoppieSonoTestiONomi) {
    for (const Regole regole : {Regole::Access, Regole::MySql})
        EXPECT_EQ(tagliati(R"("a ""b""" x)", regole), R"(T:"a ""b""" P:x)");
    for (const Regole regole : {Regole::SqlServer, Regole::Sqlite})
        EXPECT_EQ(tagliati(R"("a ""b""" x)", regole), R"(N:"a ""b""" P:x)");
}

TEST(Lessico, LeParentesiQuadre) {
    EXPECT_EQ(tagliati("[a'b] x", Regole::SqlServer), "N:[a'b] P:x");
    EXPECT_EQ(tagliati("[a]]b] x", Regole::SqlServer), "N:[a]]b] P:x");
    for (const Regole regole : {Regole::Access, Regole::Sqlite})
        EXPECT_EQ(tagliati("[a]]b] x", regole), "N:[a] s:] P:b s:] P:x");
    EXPECT_EQ(tagliati("[a", Regole::Access), "R:[a");
    EXPECT_EQ(tagliati("[a'b']", Regole::MySql), "s:[ P:a T:'b' s:]");
}

TEST(Lessico, ICommenti) {
    EXPECT_EQ(tagliati("a--b 'c\nd", Regole::SqlServer), "P:a c:--b 'c P:d");
    EXPECT_EQ(tagliati("a--b 'c\nd", Regole::Sqlite), "P:a c:--b 'c P:d");
    EXPECT_EQ(tagliati("a--b", Regole::MySql), "P:a s:- s:- P:b");
    EXPECT_EQ(tagliati("a-- b", Regole::MySql), "P:a c:-- b");
    EXPECT_EQ(tagliati("a--", Regole::MySql), "P:a c:--");
    EXPECT_EQ(tagliati("a--b /*c*/", Regole::Access), "P:a s:- s:- P:b s:/ s:* P:c s:* s:/");
    EXPECT_EQ(tagliati("a # b ' c\nd", Regole::MySql), "P:a c:# b ' c P:d");
    for (const Regole regole : {Regole::MySql, Regole::Sqlite})
        EXPECT_EQ(tagliati("a/*'/*x*/b", regole), "P:a c:/*'/*x*/ P:b");
    EXPECT_EQ(tagliati("a/*'/*x*/*/b", Regole::SqlServer), "P:a c:/*'/*x*/*/ P:b");
    EXPECT_EQ(tagliati("a/*'/*x*/b", Regole::SqlServer), "P:a R:/*'/*x*/b");
    EXPECT_EQ(tagliati("/*/", Regole::Sqlite), "R:/*/");
}

TEST(Lessico, ICancelletti) {
    EXPECT_EQ(tagliati("a=#03/15/2011#", Regole::Access), "P:a s:= D:#03/15/2011#");
    EXPECT_EQ(tagliati("a=#15-03-2011#", Regole::Sqlite), "P:a s:= D:#15-03-2011#");
    EXPECT_EQ(tagliati("#a' b# c'", Regole::Sqlite), "R:# P:a T:' b# c'");
    EXPECT_EQ(tagliati("#a\n#", Regole::Access), "R:# P:a R:#");
    EXPECT_EQ(tagliati("FROM #tmp, ##tutti", Regole::SqlServer), "P:FROM P:#tmp s:, P:##tutti");
}

TEST(LessicoFiltro, SeparaIValoriDalResto) {
    const auto pezzi = pezziDiFiltro("a = 'l''altro' AND [b'#]=#1-2-2003# OR c=1.5");
    ASSERT_TRUE(pezzi);
    std::string tutti;
    for (const PezzoFiltro& pezzo : *pezzi)
        tutti.append(std::to_string(static_cast<int>(pezzo.genere)))
            .append(pezzo.testo)
            .append("|");
    EXPECT_EQ(tutti, "0a = |1'l''altro'|0 AND [b'#]=|2#1-2-2003#|0 OR c=1.5|");
    EXPECT_EQ(valoreDi("'l''altro'"), "l'altro");
    EXPECT_EQ(valoreDi("''"), "");
    EXPECT_EQ(valoreDi("''''"), "'");
}

TEST(LessicoFiltro, CioCheNonPuoEssereUnFiltroAccettato) {
    for (const char* testo : {"a = 'x", "a = #x", "[a = 1", "a=1; DROP TABLE t", "a=1 -- b",
                              "a=1 /* b", "a=\"x\"", "a=`x`", "a=1 \\ 2", "a=\x01", "a=~1"})
        EXPECT_FALSE(pezziDiFiltro(testo)) << testo;
    for (const char* testo : {"", "a=-1", "a='x; -- /* \" \\'", "[a;b]=1", "à€=1", "a=$1"})
        EXPECT_TRUE(pezziDiFiltro(testo)) << testo;
}

} // namespace
} // namespace norvel::query
