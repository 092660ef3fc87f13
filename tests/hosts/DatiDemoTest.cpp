// The sample database: the same rows at every call, of the sizes and kinds it promises.
#include "hosts/norvelricerca/DatiDemo.h"

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace norvel::hosts {
namespace {

namespace fs = std::filesystem;

class DatiDemo : public testing::Test {
  protected:
    DatiDemo() {
        std::string modello = (fs::temp_directory_path() / "nr_dati_demo_XXXXXX").string();
        cartella = mkdtemp(modello.data());
    }
    ~DatiDemo() override {
        std::error_code ignorato;
        fs::remove_all(cartella, ignorato);
    }
    DatiDemo(const DatiDemo&) = delete;
    DatiDemo& operator=(const DatiDemo&) = delete;

    std::string crea(const char* nome, std::int64_t righe) {
        creaDatiDemo(cartella / nome, righe);
        return (cartella / nome).string();
    }
    static adodb::RecordsetRef apri(const std::string& file, const std::string& sql) {
        auto rs = adodb::makeClientRecordset();
        rs->Open(sql, "Provider=SQLite;Data Source=" + file);
        return rs;
    }
    static std::int64_t numero(const std::string& file, const std::string& espressione) {
        return apri(file, "SELECT " + espressione)->Fields()(0).Value().toI8();
    }
    static std::string contenuto(const std::string& file) {
        std::ifstream flusso(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(flusso), {}};
    }
    fs::path cartella;
};

TEST_F(DatiDemo, TwoCallsMakeTheSameBytes) {
    EXPECT_EQ(contenuto(crea("a.db", 2000)), contenuto(crea("b.db", 2000)));
    EXPECT_FALSE(fs::exists(cartella / "a.db.parziale"));
}

TEST_F(DatiDemo, ASmallerOneIsTheBeginningOfALargerOne) {
    const auto grande = apri(crea("grande.db", 500), "SELECT * FROM clienti WHERE codice<=100");
    const auto piccolo = apri(crea("piccolo.db", 100), "clienti");
    EXPECT_EQ(grande->GetRows().values, piccolo->GetRows().values);
}

TEST_F(DatiDemo, ColumnsHaveTheTypesThatSearchesLookAt) {
    const auto rs = apri(crea("a.db", 10), "clienti");
    const std::pair<const char*, adodb::DataTypeEnum> attesi[] = {
        {"codice", adodb::adInteger},     {"ragione_sociale", adodb::adVarWChar},
        {"citta", adodb::adVarWChar},     {"provincia", adodb::adVarWChar},
        {"indirizzo", adodb::adVarWChar}, {"data_nascita", adodb::adDate},
        {"fatturato", adodb::adNumeric},  {"attivo", adodb::adBoolean},
        {"note", adodb::adVarWChar},
    };
    ASSERT_EQ(rs->Fields().Count(), 9);
    int indice = 0;
    for (const auto& [nome, tipo] : attesi) {
        EXPECT_EQ(rs->Fields()(indice).Name(), nome);
        EXPECT_EQ(rs->Fields()(indice++).Type(), tipo) << nome;
    }
}

TEST_F(DatiDemo, ValuesAreAsVariedAsPromised) {
    const std::string file = crea("a.db", 20'000);
    EXPECT_EQ(numero(file, "count(*) FROM clienti"), 20'000);
    EXPECT_NEAR(static_cast<double>(numero(file, "count(DISTINCT citta) FROM clienti")), 400, 30);
    const auto parte = [&](const std::string& condizione) {
        return static_cast<double>(numero(file, "count(*) FROM clienti WHERE " + condizione)) /
               20'000;
    };
    EXPECT_NEAR(parte("note IS NULL"), 0.2, 0.02);
    EXPECT_NEAR(parte("note=''"), 0.1, 0.02);
    EXPECT_NEAR(parte("data_nascita IS NULL"), 0.025, 0.01);
    EXPECT_NEAR(parte("attivo=True"), 0.8, 0.02);
    EXPECT_GT(parte("ragione_sociale LIKE '%''%'"), 0.01);
    EXPECT_GT(parte("citta LIKE '%ì' OR citta LIKE '%ò' OR citta LIKE '%ù'"), 0.005);
    const auto lunghezza = static_cast<double>(numero(
        file, "sum(length(CAST(codice || ragione_sociale || citta || provincia || indirizzo || "
              "coalesce(data_nascita, '') || fatturato || attivo || coalesce(note, '') AS BLOB)) + "
              "9) FROM clienti"));
    EXPECT_NEAR(lunghezza / 20'000, 130, 4) << "one line of CSV, without quotes";
}

TEST_F(DatiDemo, OperatorsAndViewsAreThere) {
    const std::string file = crea("a.db", 0);
    EXPECT_EQ(numero(file, "count(*) FROM clienti"), 0);
    const auto operatori = apri(file, "operatori");
    EXPECT_EQ(operatori->Fields()("ricerchepers").Type(), adodb::adBoolean);
    EXPECT_GT(operatori->RecordCount(), 1);
    const auto viste = apri(file, "ricerchepers");
    EXPECT_EQ(viste->Fields()("nomevista").Name(), "NomeVista");
    EXPECT_GT(viste->RecordCount(), 1);
}

TEST_F(DatiDemo, AFailureLeavesTheOldFileAndNoneBeside) {
    const std::string file = crea("a.db", 3);
    const std::string prima = contenuto(file);
    EXPECT_THROW(creaDatiDemo(file, -1), Errore);
    EXPECT_THROW(creaDatiDemo(cartella / "assente" / "a.db", 3), Errore);
    fs::create_directory(cartella / "cartella.db");
    EXPECT_THROW(creaDatiDemo(cartella / "cartella.db", 3), Errore);
    EXPECT_EQ(contenuto(file), prima);
    EXPECT_FALSE(fs::exists(cartella / "cartella.db.parziale"));
}

} // namespace
} // namespace norvel::hosts
