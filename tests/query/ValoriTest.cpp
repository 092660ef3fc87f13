// The value list's query and items.
#include "query/ElaboraQuery.h"
#include "query/ListaValori.h"
#include "tests/query/Archivio.h"
#include "tests/query/Casi.h"

namespace norvel::query {
namespace {

// The items that the query brings, as the window reads them.
std::string vociDi(const Archivio& archivio, RichiestaValori richiesta) {
    const auto griglia = archivio.apri("SELECT * FROM clienti");
    const auto tipo = griglia->Fields()(richiesta.campo).Type();
    richiesta.strConnessione = archivio.connessione();
    const auto privato = adodb::makeClientRecordset();
    privato->Open(queryListaValori(richiesta), archivio.connessione());
    std::vector<std::string> voci;
    for (; !privato->EOF_(); privato->MoveNext())
        voci.push_back(testoVoce(privato->Fields()(richiesta.campo).Value(), tipo));
    return uniti(voci);
}

class ValoriCasi : public testing::TestWithParam<Caso> {};

TEST_P(ValoriCasi, Compone) {
    const Caso& caso = GetParam();
    ASSERT_NE(caso.nome, "Illeggibile") << caso.luogo;
    const RichiestaValori richiesta = richiestaDi(caso);
    const auto composta = caso.testo("composta");
    const auto resa = caso.testo("resa");
    const auto voci = caso.testo("voci");
    ASSERT_TRUE(composta || resa || voci);
    Messaggi messaggi;
    if (composta) {
        EXPECT_EQ(componiQueryValori(richiesta), *composta);
    }
    if (resa) {
        EXPECT_EQ(queryListaValori(richiesta), *resa);
    }
    if (voci) {
        EXPECT_EQ(vociDi(Archivio(), richiesta), *voci);
    }
    EXPECT_TRUE(messaggi.visti.empty());
}

INSTANTIATE_TEST_SUITE_P(DaFile, ValoriCasi, testing::ValuesIn(leggiCasi("valori.casi")),
                         NomeDelCaso());

TEST(Valori, LeQuattroVociFisse) {
    EXPECT_EQ(uniti({vociFisse.begin(), vociFisse.end()}), "[Tutti]|[Nulli]|[Vuoti]|[Non vuoti]");
}

TEST(Valori, UnFiltroVuotoONumericoNulloENessuno) {
    RichiestaValori richiesta{"nome", "SELECT * FROM t", "", std::int32_t{0}, ""};
    const std::string senza = componiQueryValori(richiesta);
    for (const Variant& nessuno :
         {Variant(), Variant(""), Variant(0.0), Variant(std::int16_t{0})}) {
        richiesta.filtro = nessuno;
        EXPECT_EQ(componiQueryValori(richiesta), senza);
    }
}

TEST(Valori, UnFiltroDiSegnalibriNonSiDiceInSql) {
    for (const Variant& filtro :
         {Variant(std::vector<Variant>{Variant(1.0)}), Variant(std::int32_t{2}), Variant::null()}) {
        const RichiestaValori richiesta{"nome", "SELECT * FROM t", "", filtro, ""};
        EXPECT_THROW(componiQueryValori(richiesta), Errore);
        EXPECT_THROW(queryListaValori(richiesta), Errore);
    }
}

TEST(Valori, UnCondizionaleSenzaChiusuraMostraUnMessaggioSolo) {
    Messaggi messaggi;
    const RichiestaValori richiesta{"nome", "SELECT iif(a;b;c) nome FROM t", "",
                                    Variant("nome LIKE '*a*'"), "sqloledb"};
    EXPECT_THROW(queryListaValori(richiesta), Errore);
    EXPECT_EQ(messaggi.visti.size(), 1U);
}

TEST(Valori, DalRecordsetVengonoComandoFiltroEConnessione) {
    const Archivio archivio;
    const auto griglia = archivio.apri("SELECT nome\r\nFROM clienti;");
    const auto richiesta = richiestaValori(*griglia, "nome", "SELECT 1");
    EXPECT_EQ(richiesta.campo, "nome");
    EXPECT_EQ(richiesta.testoComando, "SELECT nome\r\nFROM clienti;");
    EXPECT_EQ(richiesta.queryBase, "SELECT 1");
    EXPECT_TRUE(equalsNumber(richiesta.filtro, 0));
    EXPECT_EQ(richiesta.strConnessione, archivio.connessione());
    EXPECT_EQ(archivio.righe(queryListaValori(richiesta)), "Anna / Bruno / Carla d'Ami / Élodie");
}

TEST(Valori, SenzaComandoAttivoRestaLaQueryBase) {
    const auto griglia = adodb::makeClientRecordset();
    griglia->Fields().Append("nome", adodb::adVarWChar, 20);
    griglia->Open();
    const auto richiesta = richiestaValori(*griglia, "nome", "SELECT * FROM clienti");
    EXPECT_EQ(richiesta.testoComando, std::nullopt);
    EXPECT_EQ(richiesta.strConnessione, "");
    EXPECT_TRUE(componiQueryValori(richiesta).starts_with(
        "SELECT myTR.nome FROM (SELECT * FROM clienti) myTR WHERE "));
}

TEST(Valori, IlTestoDiUnaVoce) {
    EXPECT_EQ(testoVoce(Variant(true), adodb::adBoolean), "-1");
    EXPECT_EQ(testoVoce(Variant(false), adodb::adBoolean), "0");
    EXPECT_EQ(testoVoce(Variant::null(), adodb::adVarWChar), "");
    EXPECT_EQ(testoVoce(Variant(12.5), adodb::adDouble), "12,5");
    EXPECT_EQ(testoVoce(Variant(Date{40617}), adodb::adDate), "15/03/2011");
    EXPECT_EQ(testoVoce(Variant("Élodie"), adodb::adVarWChar), "Élodie");
    EXPECT_THROW(testoVoce(Variant::null(), adodb::adBoolean), Errore);
    EXPECT_THROW(testoVoce(Variant(40000.0), adodb::adBoolean), Errore);
}

TEST(Valori, UnaQueryBaseCheIlDatabaseRifiutaSollevaSoloAllApertura) {
    const Archivio archivio;
    const RichiestaValori richiesta{"nome", "SELECT * FROM non_esiste", "", std::int32_t{0},
                                    archivio.connessione()};
    const std::string query = queryListaValori(richiesta);
    EXPECT_THROW(archivio.apri(query), Errore);
}

} // namespace
} // namespace norvel::query
