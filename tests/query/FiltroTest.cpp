// The filter bar's text, from the table of cases and beyond it.
#include "platform/adodb/filter/Criteria.h"
#include "platform/runtime/Errore.h"
#include "query/FiltroColonne.h"
#include "query/TestoSql.h"
#include "tests/query/Archivio.h"
#include "tests/query/Casi.h"

#include <map>

namespace norvel::query {
namespace {

struct Barra {
    std::vector<ColonnaFiltro> colonne;
    std::map<std::string, adodb::DataTypeEnum> tipi;
    Confronto confronto = Confronto::Contiene;

    TipoDiCampo tipo() const {
        return [this](const std::string& campo) { return tipi.at(campo); };
    }
};

Barra barraDi(const Caso& caso) {
    Barra barra;
    for (const Voce& voce : caso.tutte("colonna")) {
        barra.colonne.push_back({voce.argomenti.at(0), voce.argomenti.at(2)});
        barra.tipi[voce.argomenti.at(0)] =
            static_cast<adodb::DataTypeEnum>(std::stoi(voce.argomenti.at(1)));
    }
    barra.confronto = static_cast<Confronto>(std::stoi(caso.testoO("confronto")));
    return barra;
}

class FiltroCasi : public testing::TestWithParam<Caso> {};

TEST_P(FiltroCasi, Compone) {
    const Caso& caso = GetParam();
    ASSERT_NE(caso.nome, "Illeggibile") << caso.luogo;
    const Barra barra = barraDi(caso);
    const auto filtro = caso.testo("filtro");
    const auto multiplo = caso.testo("multiplo");
    ASSERT_TRUE(filtro || multiplo);
    Messaggi messaggi;
    if (filtro) {
        EXPECT_EQ(componiFiltro(barra.colonne, barra.tipo(), barra.confronto), *filtro);
    }
    if (multiplo) {
        EXPECT_EQ(componiFiltroMultiplo(barra.colonne, barra.tipo(), barra.confronto),
                  (FiltroComposto{*multiplo, ""}));
    }
    EXPECT_TRUE(messaggi.visti.empty());
}

INSTANTIATE_TEST_SUITE_P(DaFile, FiltroCasi, testing::ValuesIn(leggiCasi("filtro.casi")),
                         NomeDelCaso());

class FiltroComeSql : public testing::TestWithParam<Caso> {};

TEST_P(FiltroComeSql, LasciaPassareLeSueRighe) {
    const Caso& caso = GetParam();
    const std::string filtro = caso.testo("multiplo").value_or(caso.testoO("filtro"));
    const std::string righe =
        Archivio().righe("SELECT nome FROM clienti WHERE " +
                         sostituisci(traParentesi(filtro), "*", "%") + " ORDER BY nome");
    EXPECT_EQ(sostituisci(righe, " / ", "|"), caso.testoO("nomi"));
}

// What the criteria language says of the same texts.
TEST_P(FiltroCasi, SiLeggeOSiRifiuta) {
    const Caso& caso = GetParam();
    for (const char* chiave : {"filtro", "multiplo"}) {
        const auto filtro = caso.testo(chiave);
        if (!filtro) continue;
        std::int64_t numero = 0;
        try {
            adodb::parseFilter(*filtro);
        } catch (const Errore& errore) {
            numero = errore.numero();
        }
        const bool rifiutato = chiave == std::string("filtro") && caso.testo("rifiuta");
        EXPECT_EQ(std::to_string(numero), rifiutato ? caso.testoO("rifiuta") : "0") << *filtro;
    }
}

// Those cases that say which rows.
std::vector<Caso> conNomi() {
    std::vector<Caso> casi;
    for (const Caso& caso : leggiCasi("filtro.casi"))
        if (caso.testo("nomi")) casi.push_back(caso);
    return casi;
}

INSTANTIATE_TEST_SUITE_P(DaFile, FiltroComeSql, testing::ValuesIn(conNomi()), NomeDelCaso());

TEST(Filtro, ICampiSiCercanoNelRecordset) {
    const Archivio archivio;
    const auto recordset = archivio.apri("SELECT * FROM clienti");
    EXPECT_EQ(componiFiltro({{"NOME", "a"}, {"prezzo", "1,5"}, {"nato", "1/2/2003"}},
                            tipiDi(*recordset), Confronto::Contiene),
              "NOME LIKE '*a*' AND prezzo=1.5 AND nato=#01-02-2003#");
}

TEST(Filtro, UnCampoCheMancaMostraLErroreETogliIlFiltro) {
    const Archivio archivio;
    const auto recordset = archivio.apri("SELECT nome FROM clienti");
    for (const bool multiplo : {false, true}) {
        Messaggi messaggi;
        const std::vector<ColonnaFiltro> colonne = {{"nome", "a"}, {"altro", "b"}};
        const auto tipo = tipiDi(*recordset);
        const std::string testo =
            multiplo ? componiFiltroMultiplo(colonne, tipo, Confronto::Uguale).testo
                     : componiFiltro(colonne, tipo, Confronto::Uguale);
        EXPECT_EQ(testo, "");
        ASSERT_EQ(messaggi.visti.size(), 1U);
        EXPECT_EQ(messaggi.visti[0].titolo, "TAMBORIN");
        EXPECT_EQ(messaggi.visti[0].icona, BoxIcon::Information);
        EXPECT_TRUE(messaggi.visti[0].testo.starts_with(
            "Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"));
    }
}

TEST(Filtro, UnCampoCheMancaSenzaValoreNonSiCerca) {
    Messaggi messaggi;
    EXPECT_EQ(componiFiltro(
                  {{"altro", " "}},
                  [](const std::string&) -> adodb::DataTypeEnum { throw erroreArgomento(); },
                  Confronto::Uguale),
              "");
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(Filtro, LeClassiDeiTipi) {
    for (const int numero : {11, 6, 14, 5, 3, 131})
        EXPECT_EQ(classeDiTipo(static_cast<adodb::DataTypeEnum>(numero)), ClasseColonna::Numero);
    for (const int data : {133, 134, 135, 7})
        EXPECT_EQ(classeDiTipo(static_cast<adodb::DataTypeEnum>(data)), ClasseColonna::Data);
    for (const int testo : {202, 200, 203, 8, 129, 2, 4, 16, 17, 20, 72, 128, 0})
        EXPECT_EQ(classeDiTipo(static_cast<adodb::DataTypeEnum>(testo)), ClasseColonna::Testo);
}

TEST(Filtro, IlConfrontoVieneDaiPulsanti) {
    EXPECT_EQ(confrontoScelto(false, false), Confronto::Contiene);
    EXPECT_EQ(confrontoScelto(false, true), Confronto::Uguale);
    EXPECT_EQ(confrontoScelto(true, false), Confronto::Diverso);
    EXPECT_EQ(confrontoScelto(true, true), Confronto::Diverso);
}

TEST(Filtro, LOraDiUnaDataNonConta) {
    EXPECT_EQ(dataDiCella("15/03/2011 23:59:59"), "15-03-2011");
    EXPECT_EQ(dataDiCella("30/12/1899"), "30-12-1899");
    EXPECT_EQ(dataDiCella("1/2/99"), "01-02-1999");
    for (const char* nessuna : {"", "abc", "10:30", "15.03", "15/03", "31/02/2011", "2011"})
        EXPECT_EQ(dataDiCella(nessuna), std::nullopt) << nessuna;
}

// --- several values ---

constexpr auto testo = [](const std::string&) { return adodb::adVarWChar; };

std::string valori(int quanti) {
    std::string tutti;
    for (int i = 0; i < quanti; ++i)
        tutti += (i == 0 ? "v" : " ;§; v") + std::to_string(i);
    return tutti;
}

TEST(FiltroMultiplo, MilleAlternativePassanoMilleunaNo) {
    const auto mille = componiFiltroMultiplo({{"a", valori(1000)}}, testo, Confronto::Uguale);
    EXPECT_TRUE(mille.rifiuto.empty());
    EXPECT_TRUE(mille.testo.starts_with("(a = 'v0' OR a = 'v1' OR "));
    EXPECT_TRUE(mille.testo.ends_with(" OR a = 'v999')"));
    const auto troppe = componiFiltroMultiplo({{"a", valori(1001)}}, testo, Confronto::Uguale);
    EXPECT_EQ(troppe.testo, "");
    EXPECT_EQ(troppe.rifiuto, "La scelta fatta richiede più di 1000 combinazioni di valori: "
                              "ridurre i valori scelti.");
}

TEST(FiltroMultiplo, IlProdottoDelleColonneHaLoStessoLimite) {
    Messaggi messaggi;
    EXPECT_EQ(
        componiFiltroMultiplo({{"a", valori(40)}, {"b", valori(25)}}, testo, Confronto::Uguale)
            .rifiuto,
        "");
    EXPECT_NE(
        componiFiltroMultiplo({{"a", valori(40)}, {"b", valori(26)}}, testo, Confronto::Uguale)
            .rifiuto,
        "");
    // Twenty columns of ten values would be 10^20 groups: refused before anything grows.
    const std::vector<ColonnaFiltro> venti(20, {"a", valori(10)});
    EXPECT_NE(componiFiltroMultiplo(venti, testo, Confronto::Uguale).rifiuto, "");
    EXPECT_TRUE(messaggi.visti.empty());
}

TEST(FiltroMultiplo, AncheDiversoDaTroppiValoriEUnRifiuto) {
    EXPECT_EQ(componiFiltroMultiplo({{"a", valori(1000)}}, testo, Confronto::Diverso).rifiuto, "");
    EXPECT_NE(componiFiltroMultiplo({{"a", valori(1001)}}, testo, Confronto::Diverso).rifiuto, "");
    // Four columns of two alternatives each, one of them of nine hundred conditions
    const std::vector<ColonnaFiltro> quattro(4, {"a", valori(900) + " ;§; [Nulli]"});
    EXPECT_NE(componiFiltroMultiplo(quattro, testo, Confronto::Diverso).rifiuto, "");
}

TEST(FiltroMultiplo, UnValoreSoloSiComponeComeNelFiltroSemplice) {
    for (const char* valore : {"Rossi", "d'Ami", "[Nulli]", "[Vuoti]", "[Non vuoti]", "a;b", "§"}) {
        for (const Confronto confronto :
             {Confronto::Contiene, Confronto::Uguale, Confronto::Diverso}) {
            const std::vector<ColonnaFiltro> colonne = {{"nome", valore}, {"altro", "x"}};
            EXPECT_EQ(componiFiltroMultiplo(colonne, testo, confronto).testo,
                      componiFiltro(colonne, testo, confronto));
        }
    }
}

// --- inside SQL ---

TEST(TraParentesi, SoloUnOrInCimaLeVuole) {
    for (const char* basta :
         {"", "a = 'x'", "a = 'x' AND b=1", "(a = 'x' OR a = 'y')", "a = 'x OR y'", "[a OR b]=1",
          "valOR=1 AND ORa=2", "a = 'l''altro OR' AND b=1", "fornitore=1", "((a=1 OR b=2))"})
        EXPECT_EQ(traParentesi(basta), basta);
    for (const char* manca :
         {"a = 'x' OR b=1", "(a=1) or (b=2)", "(a=1)OR(b=2)", "(a=1 AND b=2) Or c=3",
          "a = 'l''altro' OR b=1", "a=#01-02-2003#OR b=1", "a='x'OR b=1", "a=1) OR (b=2"})
        EXPECT_EQ(traParentesi(manca), "(" + std::string(manca) + ")");
}

TEST(TraParentesi, ConParentesiLeAltreCondizioniValgonoAncora) {
    const Archivio archivio;
    const auto filtro =
        componiFiltroMultiplo({{"nome", "Anna ;§; Bruno"}, {"prezzo", "12,5 ;§; 7"}},
                              tipiDi(*archivio.apri("SELECT * FROM clienti")), Confronto::Uguale);
    EXPECT_EQ(
        archivio.righe("SELECT nome FROM clienti WHERE codice=2 and " + traParentesi(filtro.testo)),
        "Bruno");
}

} // namespace
} // namespace norvel::query
