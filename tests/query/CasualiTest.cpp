// Random texts (fixed seeds) and large ones: what must hold whatever is in them.
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "query/ElaboraQuery.h"
#include "query/FiltroColonne.h"
#include "query/Lessico.h"
#include "query/LessicoFiltro.h"
#include "query/ListaValori.h"
#include "query/RiscritturaIif.h"
#include "query/VerificaCella.h"
#include "tests/query/Archivio.h"

#include <gtest/gtest.h>

#include <random>

namespace norvel::query {
namespace {

using namespace std::string_literals;

class Caso {
  public:
    explicit Caso(unsigned seme) : motore_(seme) {}
    std::size_t fino(std::size_t n) { return motore_() % n; }
    // Up to n pieces one after another.
    std::string testo(const std::vector<std::string>& pezzi, std::size_t n) {
        std::string tutto;
        for (std::size_t i = fino(n + 1); i > 0; --i)
            tutto += pezzi[fino(pezzi.size())];
        return tutto;
    }

  private:
    std::mt19937 motore_;
};

const std::vector<std::string> pezziIif = {"iif(", " iif(", ";", ";)", "a",          " ",  "(",
                                           ")",    "IIF(",  "i", "à",  "\U0001F600", ";;", "x;)"};
const std::vector<std::string> pezziSql = {"SELECT ",
                                           "select DISTINCT",
                                           "SELECT TOP",
                                           " iif(",
                                           "iif(",
                                           ";",
                                           ";)",
                                           "#",
                                           "#03/15/2011#",
                                           "#15-03-2011#",
                                           "'",
                                           "''",
                                           "\"",
                                           "`",
                                           "[",
                                           "]",
                                           "\\",
                                           "--",
                                           "-- ",
                                           "/*",
                                           "*/",
                                           "\n",
                                           "\r\n",
                                           "datediff('d',",
                                           " OPTION (FAST ",
                                           "a",
                                           "0",
                                           "=NULL",
                                           "<>NULL",
                                           "*",
                                           "%",
                                           "\xFF",
                                           "à",
                                           "a\u0300",
                                           " ",
                                           ",",
                                           "(",
                                           ")",
                                           "FROM clienti",
                                           "nome",
                                           " WHERE ",
                                           "\0"s};

// The rule of riscriviIif step by step on a text of characters, as its contract words it. The
// product never moves the text; this does nothing else.
std::u32string allaLettera(std::u32string testo) {
    const auto cerca = [&testo](std::size_t da, const std::u32string& segno) -> std::size_t {
        if (da == 0) throw erroreArgomento();
        std::u32string piccolo = testo;
        for (char32_t& c : piccolo)
            if (c == 'I' || c == 'F') c += 32;
        const std::size_t at = piccolo.find(segno, da - 1);
        return at == std::u32string::npos ? 0 : at + 1;
    };
    const auto sostituisci = [&](const std::u32string& segno, const std::u32string& nuovo) {
        if (const std::size_t p = cerca(1, segno)) testo.replace(p - 1, segno.size(), nuovo);
    };
    std::size_t p = cerca(1, U"iif(");
    while (p != 0) {
        sostituisci(U"iif(", U" Case when ");
        p = cerca(p + 1, U";");
        sostituisci(U";", U" then ");
        p = cerca(p + 1, U";");
        sostituisci(U";", U" else ");
        p = cerca(p + 1, U";)");
        sostituisci(U";)", U" end ");
        p = cerca(p, U" iif(");
    }
    return testo;
}

// One character a 16-bit unit, as the rule counts.
std::u32string larghi(const std::string& testo) {
    std::u32string unita;
    for (std::size_t at = 0; at < testo.size();) {
        const auto byte = static_cast<unsigned char>(testo[at]);
        const std::size_t lungo = byte >= 0xF0 ? 4 : byte >= 0xC0 ? 2 : 1;
        unita += static_cast<char32_t>(lungo == 1 ? byte : 0x10000 + lungo);
        if (lungo == 4) unita += static_cast<char32_t>(0x20000);
        at += lungo;
    }
    return unita;
}

TEST(Casuali, IlCondizionaleRiscrittoEQuelloDellaRegola) {
    Caso caso(20240601);
    int riusciti = 0;
    for (int giro = 0; giro < 60'000; ++giro) {
        const std::string testo = caso.testo(pezziIif, 30);
        std::optional<std::string> nostro;
        std::optional<std::u32string> regola;
        try {
            nostro = riscriviIif(testo);
        } catch (const Errore& errore) {
            EXPECT_EQ(errore.numero(), 5);
        }
        try {
            regola = allaLettera(larghi(testo));
        } catch (const Errore&) {
            regola.reset();
        }
        ASSERT_EQ(nostro.has_value(), regola.has_value()) << testo;
        if (nostro) {
            ASSERT_EQ(larghi(*nostro), *regola) << testo;
            ++riusciti;
        }
    }
    EXPECT_GT(riusciti, 10'000);
}

TEST(Casuali, NessunTestoRompeLaResa) {
    Messaggi messaggi;
    Caso caso(7);
    for (int giro = 0; giro < 20'000; ++giro) {
        const std::string testo = caso.testo(pezziSql, 40);
        for (const char* connessione : {"sqloledb", "access", "mysql", ""}) {
            Variant query(testo);
            const std::string resa = ElaboraQuery(query, connessione);
            ASSERT_LE(query.text().size(), testo.size());
            if (connessione == "access"s && testo.find(" iif(") == std::string::npos) {
                ASSERT_EQ(resa, query.text());
            }
        }
        std::string tagliata = testo;
        ASSERT_EQ(togliOptionFast(tagliata), tagliata);
        ASSERT_TRUE(testo.starts_with(tagliata));
    }
}

TEST(Casuali, ISimboliCopronoTuttoIlTesto) {
    Caso caso(11);
    for (int giro = 0; giro < 20'000; ++giro) {
        const std::string testo = caso.testo(pezziSql, 40);
        for (const Regole regole :
             {Regole::SqlServer, Regole::Access, Regole::MySql, Regole::Sqlite}) {
            std::size_t fine = 0;
            for (const Simbolo& simbolo : simboliDi(testo, regole)) {
                const auto inizio = static_cast<std::size_t>(simbolo.testo.data() - testo.data());
                ASSERT_FALSE(simbolo.testo.empty());
                ASSERT_EQ(testo.substr(fine, inizio - fine).find_first_not_of(" \t\r\n\v\f"),
                          std::string::npos);
                fine = inizio + simbolo.testo.size();
            }
            ASSERT_EQ(testo.substr(fine).find_first_not_of(" \t\r\n\v\f"), std::string::npos);
        }
        if (const auto pezzi = pezziDiFiltro(testo)) {
            std::string insieme;
            for (const PezzoFiltro& pezzo : *pezzi)
                insieme += pezzo.testo;
            ASSERT_EQ(insieme, testo);
        }
    }
}

TEST(Casuali, UnValoreQualunqueElencaSeStessoOSiRifiuta) {
    // Each text is a row's name; filtered for equality, the value list holds it and nothing else.
    Caso caso(13);
    const Archivio archivio;
    const auto testi = [](const std::string&) { return adodb::adVarWChar; };
    const std::string comando = "SELECT nome FROM clienti UNION ALL SELECT parola FROM segreti";
    int elencati = 0;
    for (int giro = 0; giro < 600; ++giro) {
        const std::string nome = caso.testo(pezziSql, 6) + "z";
        const std::string filtro = componiFiltro({{"nome", nome}}, testi, Confronto::Uguale);
        std::string query;
        try {
            query =
                queryListaValori({"nome", comando, "", Variant(filtro), archivio.connessione()});
        } catch (const Errore&) {
            continue;
        }
        archivio.aggiungi(nome);
        const bool conJolly = nome.find('*') != std::string::npos; // sought as a "%"
        ASSERT_EQ(archivio.righe(query), conJolly ? "" : toValidUtf8(nome)) << filtro;
        ++elencati;
    }
    EXPECT_GT(elencati, 300);
}

TEST(Casuali, NessunaCellaRompeICompositori) {
    Messaggi messaggi;
    Caso caso(17);
    std::vector<std::string> pezzi = pezziSql;
    for (const char* altro : {" ;§; ", "[Nulli]", "[Vuoti]", "[Non vuoti]", "[Tutti]", "15/03/2011",
                              "12,5", "-", "NULL", " OR ", " AND "})
        pezzi.emplace_back(altro);
    const auto tipo = [](const std::string& campo) {
        return static_cast<adodb::DataTypeEnum>(std::stoi(campo));
    };
    for (int giro = 0; giro < 20'000; ++giro) {
        std::vector<ColonnaFiltro> colonne;
        for (const char* campo : {"202", "5", "7", "11", "3"})
            colonne.push_back({campo, caso.testo(pezzi, 6)});
        const auto confronto = static_cast<Confronto>(2 + caso.fino(3));
        const std::string filtro = componiFiltro(colonne, tipo, confronto);
        const FiltroComposto multiplo = componiFiltroMultiplo(colonne, tipo, confronto);
        ASSERT_TRUE(multiplo.testo.empty() || multiplo.rifiuto.empty());
        const std::string chiuso = traParentesi(multiplo.testo);
        ASSERT_TRUE(chiuso == multiplo.testo || chiuso == "(" + multiplo.testo + ")");
        for (const ColonnaFiltro& colonna : colonne)
            verificaCella(colonna, tipo, confronto, true);
    }
    EXPECT_TRUE(messaggi.visti.empty());
}

// --- a megabyte of what is worst ---

constexpr std::size_t unMegabyte = 1U << 20U;

std::string molti(std::size_t byte, const std::string& pezzo, const std::string& coda = "") {
    std::string tutto;
    while (tutto.size() < byte)
        tutto += pezzo;
    return tutto + coda;
}

// A routine that took time by the square would not come to the end of these in hours.
std::vector<std::string> grandi(std::size_t byte) {
    std::vector<std::string> tutti;
    for (const char* pezzo : {"a",
                              " ",
                              ";",
                              ";)",
                              "#",
                              "'",
                              "\\",
                              "[",
                              "iif(",
                              " iif(",
                              " iif(a;b;c;) ",
                              "iif(;;;)",
                              "SELECT ",
                              "SELECT DISTINCT ",
                              " OPTION (FAST",
                              "datediff('d',",
                              "#03/15/2011#",
                              "-- ",
                              "/*",
                              "a\u0300",
                              "\u0300",
                              "\U0001F600",
                              "\xFF",
                              " ;§; ",
                              "=NULL",
                              "<>NULL",
                              "*",
                              "1,",
                              "\r\n",
                              "(",
                              " OR "})
        tutti.push_back(molti(byte, pezzo));
    tutti.push_back(molti(byte, "xiif(", ";;;) iif(" + std::string(1000, ';') + ")"));
    tutti.push_back(molti(byte, ";", molti(byte, " iif(")));
    tutti.push_back(molti(byte, " iif(", molti(byte, ";;;)")));
    tutti.push_back(molti(byte, ";;;)", molti(byte, "xiif(", " iif(")));
    tutti.push_back(molti(byte, " iif(;", molti(byte, "a\u0300;)")));
    return tutti;
}

TEST(Grandi, LaResaVaInTempoLineare) {
    Messaggi messaggi;
    for (const std::string& testo : grandi(unMegabyte)) {
        for (const char* connessione : {"sqloledb", "mysql", "access"}) {
            Variant query(testo + " iif(a;b;c;)");
            const std::string resa = ElaboraQuery(query, connessione);
            EXPECT_LT(resa.size(), testo.size() * 8);
        }
        std::string tagliata = testo + " OPTION (FAST 1)";
        togliOptionFast(tagliata);
    }
}

TEST(Grandi, IlFiltroELaSuaVerificaVannoInTempoLineare) {
    Messaggi messaggi;
    const auto tipo = [](const std::string& campo) {
        return static_cast<adodb::DataTypeEnum>(std::stoi(campo));
    };
    for (const std::string& testo : grandi(unMegabyte)) {
        for (const char* campo : {"202", "5", "7", "11"}) {
            const std::vector<ColonnaFiltro> colonne = {{campo, testo}, {"202", "a"}};
            const std::string filtro = componiFiltro(colonne, tipo, Confronto::Uguale);
            EXPECT_LT(filtro.size(), testo.size() * 3);
            componiFiltroMultiplo(colonne, tipo, Confronto::Contiene);
            verificaCella(colonne[0], tipo, Confronto::Contiene, true);
            traParentesi(testo);
        }
    }
}

TEST(Grandi, LaListaEIlControlloVannoInTempoLineare) {
    Messaggi messaggi;
    for (const std::string& testo : grandi(unMegabyte / 8)) {
        const std::string filtro = componiFiltro(
            {{"nome", testo}}, [](const std::string&) { return adodb::adVarWChar; },
            Confronto::Uguale);
        for (const char* connessione : {"sqloledb", "mysql", "", "Provider=SQLite;Data Source=x"}) {
            for (const std::string& comando : {"SELECT nome FROM clienti"s, testo}) {
                try {
                    const std::string query =
                        queryListaValori({"nome", comando, "", Variant(filtro), connessione});
                    EXPECT_GT(query.size(), filtro.size());
                } catch (const Errore&) {
                    continue; // refused in time
                }
            }
        }
    }
}

} // namespace
} // namespace norvel::query
