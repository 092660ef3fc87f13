// The three recordsets that the command line opens, on a real database.
#include "hosts/norvelricerca/Dati.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace norvel::hosts {
namespace {

namespace fs = std::filesystem;
using namespace adodb;
using namespace std::chrono_literals;

// A hundred million rows, made as they are read.
constexpr const char* interminabile =
    "WITH RECURSIVE c(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM c LIMIT 100000000) "
    "SELECT k FROM c";

class DatiRicerca : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string modello = (fs::temp_directory_path() / "nr-dati-XXXXXX").string();
        ASSERT_NE(mkdtemp(modello.data()), nullptr);
        cartella = modello;
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open((cartella / "a.db").c_str(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db,
                               "CREATE TABLE persone (codice INTEGER, nome TEXT);"
                               "INSERT INTO persone VALUES (1, 'Ada'), (2, 'Bo');",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        sqlite3_close(db);
    }
    void TearDown() override { fs::remove_all(cartella); }

    Argomenti argomenti(const std::string& query, const std::string& campo) const {
        Argomenti a;
        a.connessione = "Provider=SQLite;Data Source=" + (cartella / "a.db").string();
        a.proprieta = {{"QueryBase", query}, {"CampoRicerca", campo}};
        return a;
    }
    static std::string rifiuto(const Argomenti& a) {
        try {
            apriDati(a);
        } catch (const Errore& errore) {
            return errore.descrizione();
        }
        ADD_FAILURE() << "the data were opened";
        return {};
    }

    fs::path cartella;
};

TEST_F(DatiRicerca, RowsAreOpenAndTheOtherTwoAreEmptyWithTheirFields) {
    Dati dati = apriDati(argomenti("SELECT * FROM persone", "codice"));
    EXPECT_EQ(dati.righe->RecordCount(), 2);
    EXPECT_EQ(dati.operatori->RecordCount(), 0);
    EXPECT_EQ(dati.operatori->Fields().Item("codiceutente").Name(), "codiceutente");
    EXPECT_EQ(dati.operatori->Fields().Item("ricerchepers").Name(), "ricerchepers");
    EXPECT_EQ(dati.viste->RecordCount(), 0);
    for (const char* campo : {"codiceoperatore", "codicericerca", "NomeVista", "preferito"})
        EXPECT_EQ(dati.viste->Fields().Item(campo).Name(), campo);
    chiudiDati(dati);
}

TEST_F(DatiRicerca, RowsCanBeEditedOnlyWhereFieldsAreNamedForIt) {
    Argomenti a = argomenti("SELECT * FROM persone", "codice");
    Dati lette = apriDati(a);
    EXPECT_EQ(lette.righe->LockType(), adLockReadOnly);
    chiudiDati(lette);
    a.proprieta.emplace_back("AbilitaModificaCampi", "nome");
    Dati modificabili = apriDati(a);
    EXPECT_EQ(modificabili.righe->LockType(), adLockOptimistic);
    chiudiDati(modificabili);
}

TEST_F(DatiRicerca, ManyRowsComeInTheBackgroundAndClosingEndsThemAtOnce) {
    Dati dati = apriDati(argomenti(interminabile, "k"));
    EXPECT_NE(dati.righe->State() & adStateFetching, 0);
    EXPECT_GT(dati.righe->RecordCount(), 0);
    const auto prima = std::chrono::steady_clock::now();
    chiudiDati(dati);
    EXPECT_LT(std::chrono::steady_clock::now() - prima, 5s);
    EXPECT_EQ(dati.righe, nullptr);
}

TEST_F(DatiRicerca, AFieldThatIsMissingAmongManyRowsEndsTheirFetch) {
    const auto prima = std::chrono::steady_clock::now();
    EXPECT_EQ(rifiuto(argomenti(interminabile, "codice")),
              "--CampoRicerca: la query non ha il campo «codice» (ha: k)");
    EXPECT_LT(std::chrono::steady_clock::now() - prima, 5s);
}

TEST_F(DatiRicerca, TheOptionAtFaultIsNamed) {
    Argomenti a = argomenti("SELECT * FROM persone", "codice");
    a.viste = "SELECT codice AS codiceoperatore, 1 AS codicericerca, 2 AS nomevista FROM persone";
    EXPECT_EQ(rifiuto(a), "La query di --viste non ha il campo «preferito» (ha: codiceoperatore, "
                          "codicericerca, nomevista)");
    a.operatori = "SELEZIONA";
    EXPECT_TRUE(rifiuto(a).starts_with("La query di --operatori non è riuscita: "));
    a.connessione = "Data Source=a.db";
    EXPECT_TRUE(rifiuto(a).starts_with("La connessione non è riuscita: "));
}

TEST_F(DatiRicerca, AStatementWithoutRowsIsNoSearch) {
    EXPECT_EQ(rifiuto(argomenti("CREATE TEMP TABLE t (a)", "a")),
              "La query di --QueryBase non dà righe: non è una ricerca");
}

TEST_F(DatiRicerca, ClosingTwiceAndClosingNothingDoNoHarm) {
    Dati dati;
    chiudiDati(dati);
    dati = apriDati(argomenti("SELECT * FROM persone", "codice"));
    chiudiDati(dati);
    chiudiDati(dati);
    EXPECT_EQ(dati.connessione, nullptr);
}

} // namespace
} // namespace norvel::hosts
