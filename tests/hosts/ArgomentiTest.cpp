// The command line as an operator types it, mistakes included.
#include "hosts/norvelricerca/Argomenti.h"

#include "hosts/norvelricerca/Aiuto.h"
#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel::hosts {
namespace {

using Parole = std::vector<std::string>;

const std::vector<Proprieta> proprieta = {
    {"PercorsoPers", TipoProprieta::Testo},   {"Risposta", TipoProprieta::SolaLettura},
    {"SoloRicerca", TipoProprieta::Booleano}, {"Caption", TipoProprieta::Testo},
    {"Width", TipoProprieta::Numero},         {"CampoRicerca", TipoProprieta::Testo},
    {"QueryBase", TipoProprieta::Testo},      {"Recordset", TipoProprieta::Oggetto},
};

// What the smallest search needs, then more.
Parole ricerca(Parole altre = {}) {
    Parole parole = {"--connessione",  "Provider=SQLite;Data Source=a.db",
                     "--QueryBase",    "SELECT 1 AS x",
                     "--CampoRicerca", "x"};
    parole.insert(parole.end(), altre.begin(), altre.end());
    return parole;
}

Argomenti leggi(const Parole& parole) {
    return leggiArgomenti(parole, proprieta);
}

// The sentence with which the command line is refused; fails when it is not.
std::string rifiuto(const Parole& parole) {
    try {
        leggi(parole);
    } catch (const Errore& errore) {
        EXPECT_EQ(errore.numero(), 5);
        return errore.descrizione();
    }
    ADD_FAILURE() << "the command line was taken";
    return {};
}

TEST(Argomenti, TheSmallestSearchIsReadWithItsDefaults) {
    const Argomenti a = leggi(ricerca());
    EXPECT_EQ(a.azione, Azione::Ricerca);
    EXPECT_EQ(a.connessione, "Provider=SQLite;Data Source=a.db");
    EXPECT_EQ(a.operatori, "");
    EXPECT_EQ(a.viste, "");
    EXPECT_FALSE(a.tempi);
    ASSERT_TRUE(a.valore("QueryBase"));
    EXPECT_EQ(*a.valore("QueryBase"), "SELECT 1 AS x");
    EXPECT_EQ(a.valore("Caption"), nullptr);
}

TEST(Argomenti, NamesAreCaseBlindAndComeOutAsTheComponentSpellsThem) {
    const Argomenti a = leggi({"--CONNESSIONE", "P", "--querybase", "S", "--camporicerca", "x",
                               "--cApTiOn", "Clienti", "--TEMPI"});
    EXPECT_EQ(a.connessione, "P");
    EXPECT_TRUE(a.tempi);
    EXPECT_EQ(a.proprieta.back(), (std::pair<std::string, std::string>{"Caption", "Clienti"}));
}

TEST(Argomenti, AValueMayStandBehindAnEqualsSignAndHoldOnesOfItsOwn) {
    const Argomenti a =
        leggi({"--connessione=Provider=SQLite;Data Source=b=c.db",
               "--QueryBase=SELECT * FROM t WHERE a=1", "--CampoRicerca=x", "--Caption="});
    EXPECT_EQ(a.connessione, "Provider=SQLite;Data Source=b=c.db");
    EXPECT_EQ(*a.valore("QueryBase"), "SELECT * FROM t WHERE a=1");
    EXPECT_EQ(*a.valore("Caption"), "");
}

TEST(Argomenti, TheOtherTwoRecordsetsHaveTheirSql) {
    const Argomenti a = leggi(ricerca({"--operatori", "SELECT * FROM o", "--viste=SELECT 2"}));
    EXPECT_EQ(a.operatori, "SELECT * FROM o");
    EXPECT_EQ(a.viste, "SELECT 2");
}

TEST(Argomenti, PropertiesKeepTheOrderOfTheLine) {
    const Argomenti a = leggi(ricerca({"--Width", "9000", "--Caption", "uno", "--Width", "8000"}));
    ASSERT_EQ(a.proprieta.size(), 5U);
    EXPECT_EQ(a.proprieta[2].first, "Width");
    EXPECT_EQ(a.proprieta[3].first, "Caption");
    EXPECT_EQ(*a.valore("Width"), "8000") << "the last of two holds";
}

TEST(Argomenti, AnUnknownOptionIsNamedAndAnAlikeOneSuggested) {
    EXPECT_EQ(rifiuto(ricerca({"--Captoin", "x"})),
              "Opzione sconosciuta: --Captoin (forse --Caption?)");
    EXPECT_EQ(rifiuto(ricerca({"--zucchero", "x"})), "Opzione sconosciuta: --zucchero");
    EXPECT_EQ(rifiuto({"--Rispsta", "x"}), "Opzione sconosciuta: --Rispsta")
        << "what cannot be set is not suggested";
}

TEST(Argomenti, AMissingValueIsToldAtTheEndAndBeforeTheNextOption) {
    EXPECT_EQ(rifiuto({"--connessione"}), "Manca il valore di --connessione");
    EXPECT_EQ(rifiuto(ricerca({"--Caption", "--Width", "3"})),
              "Manca il valore di --Caption (se è proprio «--Width», si scrive "
              "--Caption=--Width)");
    EXPECT_EQ(*leggi(ricerca({"--Caption=--Width"})).valore("Caption"), "--Width");
}

TEST(Argomenti, ANegativeNumberIsAValue) {
    EXPECT_EQ(*leggi(ricerca({"--Width", "-1"})).valore("Width"), "-1");
}

TEST(Argomenti, APropertyThatOnlyTheComponentWritesIsRefused) {
    EXPECT_EQ(rifiuto(ricerca({"--risposta", "x"})),
              "--Risposta non si può assegnare: è il programma che lo scrive");
}

TEST(Argomenti, ARecordsetIsRefusedWithTheWayToGiveIt) {
    EXPECT_EQ(rifiuto(ricerca({"--Recordset", "x"})),
              "--Recordset non si può assegnare: i dati si indicano con --connessione e "
              "--QueryBase, --operatori, --viste");
}

TEST(Argomenti, WhatIsUsedAsANumberMustBeOne) {
    EXPECT_EQ(rifiuto(ricerca({"--Width", "largo"})), "--Width vuole un numero, non «largo»");
    EXPECT_EQ(rifiuto(ricerca({"--Width", ""})), "--Width vuole un numero, non «»");
    EXPECT_EQ(*leggi(ricerca({"--Width", "8000,5"})).valore("Width"), "8000,5");
}

TEST(Argomenti, ASwitchIsTrueFalseOrANumber) {
    for (const char* valore : {"True", "false", "1", "0", "-1"})
        EXPECT_EQ(*leggi(ricerca({"--SoloRicerca", valore})).valore("SoloRicerca"), valore);
    EXPECT_EQ(rifiuto(ricerca({"--SoloRicerca", "forse"})),
              "--SoloRicerca vuole True o False, non «forse»");
}

TEST(Argomenti, EachObligatoryOptionIsAskedFor) {
    EXPECT_EQ(rifiuto({}), "Manca l'opzione obbligatoria --connessione");
    EXPECT_EQ(rifiuto({"--connessione", "P"}), "Manca l'opzione obbligatoria --QueryBase");
    EXPECT_EQ(rifiuto({"--connessione", "P", "--QueryBase", "S"}),
              "Manca l'opzione obbligatoria --CampoRicerca");
    EXPECT_EQ(rifiuto({"--connessione", "P", "--QueryBase", " ", "--CampoRicerca", "x"}),
              "Il valore di --QueryBase è vuoto");
    EXPECT_EQ(rifiuto({"--connessione", ""}), "Il valore di --connessione è vuoto");
}

TEST(Argomenti, AWordWithoutAnOptionIsRefused) {
    EXPECT_EQ(rifiuto(ricerca({"clienti.db"})),
              "Argomento non previsto: «clienti.db» (i valori seguono il nome della loro opzione)");
    for (const char* parola : {"", "-", "--", "-t"})
        EXPECT_TRUE(rifiuto(ricerca({parola})).starts_with("Argomento non previsto"));
}

TEST(Argomenti, AFlagTakesNoValue) {
    EXPECT_EQ(rifiuto(ricerca({"--tempi=1"})), "--tempi non vuole un valore");
}

TEST(Argomenti, HelpAndVersionWinOverWhatFollowsAndWhatIsMissing) {
    EXPECT_EQ(leggi({"--aiuto", "--zucchero"}).azione, Azione::Aiuto);
    EXPECT_EQ(leggi({"--help"}).azione, Azione::Aiuto);
    EXPECT_EQ(leggi({"-h"}).azione, Azione::Aiuto);
    EXPECT_EQ(leggi({"--Versione"}).azione, Azione::Versione);
    EXPECT_EQ(rifiuto({"--zucchero", "--aiuto"}), "Opzione sconosciuta: --zucchero");
}

TEST(Argomenti, TheSampleDatabaseHasAFileAndANumberOfRows) {
    const Argomenti a = leggi({"--crea-demo", "prova.db"});
    EXPECT_EQ(a.azione, Azione::CreaDemo);
    EXPECT_EQ(a.fileDemo, "prova.db");
    EXPECT_EQ(a.righe, 100000);
    EXPECT_EQ(leggi({"--righe", "7", "--crea-demo=p.db"}).righe, 7);
    EXPECT_EQ(leggi({"--crea-demo=p.db", "--righe", "0"}).righe, 0);
}

TEST(Argomenti, TheRowsOfTheSampleDatabaseAreAWholeNumber) {
    for (const char* righe : {"100.000", "mille", "-1", "1e3", "", " 5", "99999999999999999999"})
        EXPECT_EQ(rifiuto({"--crea-demo", "p.db", "--righe", righe}),
                  std::string("--righe vuole un numero intero, in sole cifre, non «") + righe +
                      "»");
}

TEST(Argomenti, MakingTheSampleDatabaseAndSearchingExcludeEachOther) {
    EXPECT_EQ(rifiuto(ricerca({"--crea-demo", "p.db"})),
              "--crea-demo va da sola, con la sola --righe");
    EXPECT_EQ(rifiuto({"--crea-demo", "p.db", "--tempi"}),
              "--crea-demo va da sola, con la sola --righe");
    EXPECT_EQ(rifiuto(ricerca({"--righe", "5"})), "--righe vale soltanto con --crea-demo");
}

TEST(Argomenti, ATextInAnOldEncodingBecomesValidUtf8) {
    EXPECT_EQ(*leggi(ricerca({"--Caption", "Citt\xE0"})).valore("Caption"), "Città");
}

TEST(Aiuto, EveryOptionHasItsPhraseAndNoLineIsWiderThanATerminal) {
    const std::string testo = testoAiuto(proprieta);
    for (const char* nome : {"--connessione", "--operatori", "--viste", "--tempi", "--crea-demo",
                             "--righe", "--aiuto", "--versione", "--PercorsoPers", "--SoloRicerca",
                             "--Caption", "--Width", "--CampoRicerca", "--QueryBase"})
        EXPECT_NE(testo.find("\n  " + std::string(nome) + " "), std::string::npos) << nome;
    for (std::size_t inizio = 0; inizio < testo.size();) {
        const std::size_t fine = testo.find('\n', inizio);
        ASSERT_NE(fine, std::string::npos) << "the text ends with a line end";
        EXPECT_LE(fine - inizio, 90U) << testo.substr(inizio, fine - inizio); // accents: two bytes
        inizio = fine + 1;
    }
}

TEST(Aiuto, WhatCannotBeSetIsNotOffered) {
    const std::string testo = testoAiuto(proprieta);
    EXPECT_EQ(testo.find("--Risposta"), std::string::npos);
    EXPECT_EQ(testo.find("--Recordset"), std::string::npos);
}

TEST(Aiuto, APropertyWithoutAPhraseIsStillListed) {
    EXPECT_NE(testoAiuto({{"Novita", TipoProprieta::Testo}}).find("\n  --Novita VALORE\n"),
              std::string::npos);
}

TEST(Aiuto, SwitchesAndGeometryAreNumbers) {
    for (const char* nome :
         {"StatusBar", "Toolbar", "Top", "Left", "Height", "Width", "WindowsState", "FilterBar"})
        EXPECT_TRUE(eNumero(nome)) << nome;
    EXPECT_FALSE(eNumero("Caption"));
    EXPECT_FALSE(eNumero("SoloRicerca"));
}

} // namespace
} // namespace norvel::hosts
