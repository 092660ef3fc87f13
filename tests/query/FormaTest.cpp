// What an operator types stays a value: hostile texts in every kind of column, for every database.
#include "query/ElaboraQuery.h"
#include "query/FormaQuery.h"
#include "query/Lessico.h"
#include "query/ListaValori.h"
#include "query/VerificaCella.h"
#include "tests/query/Archivio.h"
#include "tests/query/Ostili.h"

#include <gtest/gtest.h>

#include <set>

namespace norvel::query {
namespace {

using namespace std::string_literals;

struct Colonna {
    const char* nome;
    adodb::DataTypeEnum tipo;
};
constexpr Colonna colonne[] = {
    {"nome", adodb::adVarWChar}, {"Annullato", adodb::adVarWChar}, {"codice", adodb::adInteger},
    {"prezzo", adodb::adDouble}, {"nato", adodb::adDate},          {"attivo", adodb::adBoolean},
    {"codice", adodb::adBigInt}, {"nato", adodb::adDBTimeStamp},   {"prezzo", adodb::adCurrency}};

// The filter texts that the operator's text makes in the column, by every mode and both composers,
// where its cell is not marked.
std::set<std::string> filtriDi(const std::string& testo, const Colonna& colonna) {
    const auto tipo = [&](const std::string& campo) {
        return campo == "nome" ? adodb::adVarWChar : colonna.tipo;
    };
    const std::vector<ColonnaFiltro> barra = {{colonna.nome, testo}, {"nome", "a"}};
    std::set<std::string> filtri;
    for (const auto confronto : {Confronto::Contiene, Confronto::Uguale, Confronto::Diverso}) {
        for (const std::size_t quante : {1U, 2U}) {
            const std::vector<ColonnaFiltro> celle(barra.begin(),
                                                   barra.begin() + static_cast<long>(quante));
            if (!verificaCella(celle[0], tipo, confronto, false))
                filtri.insert(componiFiltro(celle, tipo, confronto));
            if (!verificaCella(celle[0], tipo, confronto, true))
                filtri.insert(componiFiltroMultiplo(celle, tipo, confronto).testo);
        }
    }
    filtri.erase("");
    return filtri;
}

// nullopt where the query counts as refused.
std::optional<std::string> queryDi(const std::string& filtro, const std::string& connessione) {
    try {
        return queryListaValori(
            {"nome", "SELECT * FROM clienti;", "", Variant(filtro), connessione});
    } catch (const Errore&) {
        return std::nullopt;
    }
}

TEST(Forma, NelDatabaseIncorporatoNessunTestoOstileCambiaRigheOLeggeAltro) {
    const Archivio archivio;
    const std::string prima = archivio.tutto();
    Messaggi messaggi;
    int eseguite = 0;
    for (const std::string& testo : ostili()) {
        for (const Colonna& colonna : colonne) {
            for (const std::string& filtro : filtriDi(testo, colonna)) {
                const auto query = queryDi(filtro, archivio.connessione());
                if (!query) continue;
                const std::string righe = archivio.righe(*query);
                EXPECT_EQ(righe.find(canarino), std::string::npos) << *query;
                ++eseguite;
            }
        }
        ASSERT_EQ(archivio.tutto(), prima) << testo;
    }
    EXPECT_GT(eseguite, 300); // most are mere values, and run
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Forma, AncheConUnFileCheSembraAltriDatabaseNullaCambia) {
    // The file's name makes the rendering another database's, SQLite runs it all the same.
    for (const char* nome : {"mysql", "access", "sqloledb"}) {
        const Archivio archivio;
        const std::string prima = archivio.tutto();
        const std::string connessione = archivio.connessione() + ";Remarks=" + nome;
        for (const std::string& testo : ostili()) {
            for (const std::string& filtro : filtriDi(testo, colonne[0])) {
                const auto query = queryDi(filtro, connessione);
                if (!query) continue;
                try {
                    EXPECT_EQ(archivio.righe(*query).find(canarino), std::string::npos) << *query;
                } catch (const Errore&) {
                    continue; // SQLite does not know the other's words
                }
            }
            ASSERT_EQ(archivio.tutto(), prima) << testo;
        }
    }
}

// Every word that the composed queries may hold outside quotes.
bool parolaAttesa(std::string_view parola) {
    static const std::set<std::string_view> attese = {
        "SELECT",    "FROM",    "WHERE",    "GROUP",       "BY",    "ORDER",   "AND",
        "OR",        "LIKE",    "IS",       "NOT",         "NULL",  "RTRIM",   "TOP",
        "PERCENT",   "CONVERT", "DATETIME", "DATE_FORMAT", "myTR",  "clienti", "nome",
        "Annullato", "codice",  "prezzo",   "nato",        "attivo"};
    return attese.contains(parola);
}

TEST(Forma, NegliAltriDatabaseFuoriDalleVirgoletteRestanoSoloLeParoleNostre) {
    const std::pair<const char*, Regole> basi[] = {{"Provider=SQLOLEDB", Regole::SqlServer},
                                                   {"C:\\dati\\gest.mdb", Regole::Access},
                                                   {"Driver={MySQL ODBC}", Regole::MySql},
                                                   {"DSN=archivio", Regole::Access},
                                                   {"DSN=archivio", Regole::Sqlite}};
    Messaggi messaggi;
    for (const auto& [connessione, regole] : basi) {
        int rese = 0;
        for (const std::string& testo : ostili()) {
            for (const Colonna& colonna : colonne) {
                for (const std::string& filtro : filtriDi(testo, colonna)) {
                    const auto query = queryDi(filtro, connessione);
                    if (!query) continue;
                    ++rese;
                    for (const Simbolo& simbolo : simboliDi(*query, regole)) {
                        EXPECT_NE(simbolo.genere, GenereSimbolo::Rotto) << *query;
                        EXPECT_NE(simbolo.genere, GenereSimbolo::Commento) << *query;
                        EXPECT_NE(simbolo.testo, ";") << *query;
                        if (simbolo.genere == GenereSimbolo::Parola) {
                            EXPECT_TRUE(parolaAttesa(simbolo.testo)) << *query;
                        }
                    }
                }
            }
        }
        EXPECT_GT(rese, 100) << connessione;
    }
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Forma, IValoriComuniPassanoInOgniDatabase) {
    for (const char* connessione : {"Provider=SQLOLEDB", "gest.mdb", "MySQL", "DSN=archivio",
                                    "Provider=SQLite;Data Source=x.db"}) {
        for (const char* testo : {"Rossi",       "d'Ami",      "dell’Aquila", "l'altro 'ieri'",
                                  "a;b",         "100%",       "50,5",        "C#",
                                  "(x)",         "[x]",        "a -- b",      "a /* b */",
                                  "\"Da Gino\"", "perché no?", "a=b",         "SELEZIONE",
                                  "€ 5",         "a_b",        "Straße",      "Łódź"}) {
            const std::string filtro = componiFiltro(
                {{"nome", testo}}, [](const std::string&) { return adodb::adVarWChar; },
                Confronto::Uguale);
            EXPECT_TRUE(queryDi(filtro, connessione)) << connessione << ": " << testo;
        }
    }
}

TEST(Forma, NumeriDateEBooleaniPassanoInOgniDatabase) {
    for (const char* connessione : {"Provider=SQLOLEDB", "gest.mdb", "MySQL", "DSN=archivio",
                                    "Provider=SQLite;Data Source=x.db"})
        for (const char* filtro :
             {"prezzo=12.5", "prezzo<>-3", "prezzo=1e5", "attivo=0", "nato=#15-03-2011#",
              "nato<>#01-12-1999# AND nome LIKE '*a*'", "citta=NULL AND nato=#05-04-2003#",
              "(nome = 'a' AND nato=#05-04-2003#) OR (nome = 'b' AND nato=#05-04-2003#)"})
            EXPECT_TRUE(queryDi(filtro, connessione)) << connessione << ": " << filtro;
}

bool rifiutata(const std::string& valore, const char* connessione,
               const char* comando = "SELECT * FROM clienti") {
    try {
        queryListaValori(
            {"nome", comando, "",
             Variant(componiFiltro(
                 {{"nome", valore}}, [](const std::string&) { return adodb::adVarWChar; },
                 Confronto::Uguale)),
             connessione});
        return false;
    } catch (const Errore& errore) {
        EXPECT_EQ(errore.descrizione(), "Un valore del filtro cambierebbe la forma "
                                        "dell'interrogazione, che non viene eseguita.");
        return true;
    }
}

TEST(Forma, LaBarraSiRifiutaSoloDovePuoProteggere) {
    EXPECT_TRUE(rifiutata("C:\\dati", "MySQL"));
    EXPECT_TRUE(rifiutata("C:\\dati", "DSN=archivio"));
    EXPECT_TRUE(rifiutata("C:\\dati", "Driver={MariaDB};Database=accessi"));
    EXPECT_TRUE(rifiutata("C:\\dati", "DSN=sql server"));
    for (const char* noto :
         {"Provider=SQLOLEDB.1;Data Source=srv", "Driver={SQL Server};Server=srv",
          "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=gest.mdb",
          "Driver={Microsoft Access Driver (*.mdb)};DBQ=gest.mdb"})
        EXPECT_FALSE(rifiutata("C:\\dati", noto)) << noto;
    EXPECT_FALSE(rifiutata("C:\\dati", "Provider=SQLite;Data Source=x"));
}

TEST(Forma, UnValoreCheLaResaCambierebbeSiRifiuta) {
    EXPECT_TRUE(rifiutata("a#03/15/2011#b", "sqloledb")); // would leave its quotes
    EXPECT_TRUE(rifiutata("C# e F#", "sqloledb"));        // would lose its hashes
    EXPECT_FALSE(rifiutata("C# e F#", "gest.mdb"));
    EXPECT_TRUE(rifiutata("x=NULL", "gest.mdb"));   // would become IS NULL inside the quotes
    EXPECT_TRUE(rifiutata("SELECT x", "sqloledb")); // would get its TOP 100 PERCENT
    EXPECT_FALSE(rifiutata("SELECT x", "gest.mdb"));
    EXPECT_TRUE(rifiutata("a;b", "gest.mdb", "SELECT iif(a;b;c;) FROM t")); // would get a comma
    EXPECT_FALSE(rifiutata("a;b", "gest.mdb", "SELECT a FROM t"));
}

TEST(Forma, UnValoreNonCambiaCioCheStaAttorno) {
    // The value's hash makes the temporary table's one of two, and both would go.
    EXPECT_TRUE(rifiutata("a#b", "sqloledb", "SELECT * FROM #tmp"));
    EXPECT_FALSE(rifiutata("ab", "sqloledb", "SELECT * FROM #tmp"));
    // The value's iif would turn the other text's ";" into ",".
    EXPECT_TRUE(rifiutata("x iif(", "gest.mdb", "SELECT ';' AS s FROM t"));
    EXPECT_FALSE(rifiutata("x", "gest.mdb", "SELECT ';' AS s FROM t"));
}

TEST(Forma, CaratteriCheDiventanoVirgoletteSiRifiutanoFuoriDalDatabaseIncorporato) {
    for (const char* testo : {"a\u02BC", "a\uFF07", "a\u2032", "a\uFF3C"}) {
        EXPECT_TRUE(rifiutata(testo, "sqloledb"));
        EXPECT_FALSE(rifiutata(testo, "Provider=SQLite;Data Source=x"));
    }
}

TEST(Forma, UnFiltroCheNonEUnFiltroSiRifiuta) {
    for (const char* filtro :
         {"nome='a'; DROP TABLE clienti", "nome='a' -- ", "nome='a", "nome=#a", "nome=\"a\"",
          "1=1 /* ", "nome='a' UNION SELECT parola FROM `segreti`"})
        EXPECT_EQ(queryDi(filtro, "gest.mdb"), std::nullopt) << filtro;
}

TEST(Forma, UnNomeDiCampoConApiceNonApreUnVarco) {
    // Brackets mean nothing to MySQL: to it the name's quote opens a text, and the value stands
    // outside.
    for (const char* valore : {" OR 1=1 -- ", "x", " UNION SELECT parola FROM segreti -- "}) {
        const std::string filtro = "[d'annullo] = '"s + valore + "'";
        EXPECT_EQ(queryDi(filtro, "MySQL"), std::nullopt);
        EXPECT_TRUE(queryDi(filtro, "gest.mdb"));
    }
}

TEST(Forma, UnValoreCheLaResaNonSopportaNonMostraMessaggi) {
    Messaggi messaggi;
    EXPECT_TRUE(rifiutata("x iif(", "sqloledb"));
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Forma, UnCompositoreCheLasciaFuoriUnValoreOLoScriveDueVolteSiRifiuta) {
    for (const ComponiQuery& componi :
         {ComponiQuery([](const std::string&) { return "SELECT nome FROM clienti"s; }),
          ComponiQuery([](const std::string& f) {
              return std::string("SELECT 1 WHERE ").append(f).append(" AND ").append(f);
          })}) {
        EXPECT_THROW(queryControllata(componi, "nome = 'Anna'", "gest.mdb"), Errore);
        EXPECT_NO_THROW(queryControllata(componi, "prezzo=1", "gest.mdb"));
    }
}

TEST(Forma, OgniCompositoreCheMetteUnFiltroInUnaQueryPuoFarlaControllare) {
    const Archivio archivio;
    const ComponiQuery esporta = [](const std::string& filtro) {
        return "SELECT nome FROM clienti WHERE codice<3 and " + traParentesi(filtro);
    };
    EXPECT_EQ(archivio.righe(queryControllata(esporta, "nome = 'Anna' OR nome = 'd''x'",
                                              archivio.connessione())),
              "Anna");
    EXPECT_THROW(queryControllata(esporta, "nome = '\\'' OR 1=1", "MySQL"), Errore);
}

TEST(FormaNonResa, AQueryThatRunsAsItIsComposedIsLookedAtToo) {
    const ComponiQuery componi = [](const std::string& filtro) {
        return "SELECT * FROM t ; where " + filtro;
    };
    EXPECT_EQ(queryControllataNonResa(componi, "a = 'x''y'", "Provider=SQLite;Data Source=x"),
              "SELECT * FROM t ; where a = 'x''y'")
        << "nothing is rendered";
    EXPECT_THROW(
        queryControllataNonResa(componi, "a = 'x\\'", "Driver={MySQL ODBC 8.0 Driver};Server=x"),
        Errore);
    EXPECT_THROW(queryControllataNonResa(componi, "a = 'x", "Provider=SQLite;Data Source=x"),
                 Errore);
}

} // namespace
} // namespace norvel::query
