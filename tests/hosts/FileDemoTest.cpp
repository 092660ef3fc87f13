// Where the sample database may be written: nobody's file is lost.
#include "hosts/norvelricerca/FileDemo.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace norvel::hosts {
namespace {

namespace fs = std::filesystem;

class FileDemo : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string modello = (fs::temp_directory_path() / "nr-demo-XXXXXX").string();
        ASSERT_NE(mkdtemp(modello.data()), nullptr);
        cartella = modello;
        file = cartella / "clienti.db";
    }
    void TearDown() override { fs::remove_all(cartella); }

    void esegui(const std::string& sql) const {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(db);
    }
    std::string contenuto() const {
        std::ostringstream testo;
        testo << std::ifstream(file, std::ios::binary).rdbuf();
        return testo.str();
    }
    // Fails unless the file is refused and stays as it is.
    void attendiRifiuto() const {
        const std::string prima = contenuto();
        try {
            creaFileDemo(file, 3);
            ADD_FAILURE() << "the file was replaced";
        } catch (const Errore& errore) {
            EXPECT_EQ(errore.numero(), 58);
            EXPECT_EQ(errore.descrizione(),
                      "«" + file.string() +
                          "» esiste già e non è una base dati di esempio: non viene sovrascritto");
        }
        EXPECT_EQ(contenuto(), prima);
    }

    fs::path cartella;
    fs::path file;
};

TEST_F(FileDemo, IsMadeWhereThereIsNothing) {
    creaFileDemo(file, 3);
    EXPECT_TRUE(eDatiDemo(file));
}

TEST_F(FileDemo, TakesThePlaceOfAnotherSampleDatabaseAndOfAnEmptyFile) {
    creaFileDemo(file, 3);
    const std::string tre = contenuto();
    creaFileDemo(file, 2000);
    EXPECT_GT(contenuto().size(), tre.size());
    std::ofstream(file, std::ios::trunc).close();
    creaFileDemo(file, 3);
    EXPECT_EQ(contenuto(), tre);
}

TEST_F(FileDemo, IsRefusedInPlaceOfATextFile) {
    std::ofstream(file) << "la tesi di laurea";
    attendiRifiuto();
}

TEST_F(FileDemo, IsRefusedInPlaceOfADatabaseWithOtherTables) {
    esegui("CREATE TABLE fatture (numero INTEGER)");
    attendiRifiuto();
}

TEST_F(FileDemo, IsRefusedInPlaceOfASampleDatabaseThatGotATableMore) {
    creaFileDemo(file, 3);
    esegui("CREATE TABLE fatture (numero INTEGER)");
    attendiRifiuto();
}

TEST_F(FileDemo, IsRefusedInPlaceOfTablesThatOnlyHaveTheNames) {
    esegui("CREATE TABLE clienti (codice INTEGER, nome TEXT); CREATE TABLE operatori (a); "
           "CREATE TABLE ricerchepers (a)");
    attendiRifiuto();
}

TEST_F(FileDemo, AFolderIsRefused) {
    fs::create_directory(file);
    EXPECT_THROW(creaFileDemo(file, 3), Errore);
    EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(FileDemo, AFolderThatIsNotThereIsAnErrorAndLeavesNothing) {
    EXPECT_THROW(creaFileDemo(cartella / "assente" / "clienti.db", 3), Errore);
    EXPECT_TRUE(fs::is_empty(cartella));
}

} // namespace
} // namespace norvel::hosts
