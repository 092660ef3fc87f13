// What ElaboraQuery and the value lists write for SQL Server, read by a parser of its dialect; what
// the parser's tree says is then run over the sample database beside the neutral text.
#include "tests/query/Archivio.h"
#include "tests/query/Casi.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <sstream>

namespace norvel::query {
namespace {

constexpr const char* connessioneSql = "Provider=SQLOLEDB;Data Source=srv";

struct Lettura {
    bool accettata = false;
    std::string testo; // the query in neutral notation, or why it is refused
};

// Every case's rendered text, read by one run of the parser.
std::map<std::string, Lettura> leggiTutti() {
    const auto cartella = std::filesystem::temp_directory_path() /
                          ("nr_tsql_" + std::to_string(std::random_device{}()));
    std::filesystem::create_directory(cartella);
    const std::string domande = (cartella / "domande").string();
    const std::string risposte = (cartella / "risposte").string();
    const auto casi = leggiCasi("server.casi");
    std::ofstream scrive(domande, std::ios::binary);
    for (const Caso& caso : casi)
        scrive << queryDelCaso(caso, connessioneSql) << '\x1E';
    scrive.close();
    const std::string comando = "/usr/bin/python3 -B '" NR_SOURCE_DIR
                                "/tests/query/tsql/leggi_tsql.py' <'" +
                                domande + "' >'" + risposte + "'";
    EXPECT_EQ(std::system(comando.c_str()), 0) << "is sqlfluff installed? packaging/prepara test";
    std::ifstream legge(risposte, std::ios::binary);
    std::map<std::string, Lettura> letture;
    std::string risposta;
    for (std::size_t i = 0; i < casi.size() && std::getline(legge, risposta, '\x1E'); ++i)
        letture[casi[i].nome] = {risposta.starts_with("si"), risposta.substr(3)};
    legge.close();
    std::filesystem::remove_all(cartella);
    return letture;
}

class TsqlCasi : public testing::TestWithParam<Caso> {
  protected:
    static void SetUpTestSuite() { letture() = leggiTutti(); }
    static std::map<std::string, Lettura>& letture() {
        static std::map<std::string, Lettura> tutte;
        return tutte;
    }
};

TEST_P(TsqlCasi, LaResa) {
    const Caso& caso = GetParam();
    ASSERT_NE(caso.nome, "Illeggibile") << caso.luogo;
    const std::string resa = queryDelCaso(caso, connessioneSql);
    if (const auto attesa = caso.testo("resa")) {
        EXPECT_EQ(resa, *attesa);
    }
    ASSERT_TRUE(letture().contains(caso.nome));
    const Lettura& lettura = letture()[caso.nome];
    if (const auto motivo = caso.testo("rifiuta")) {
        EXPECT_FALSE(lettura.accettata) << resa;
        EXPECT_NE(lettura.testo.find(*motivo), std::string::npos) << lettura.testo << "\n" << resa;
        return;
    }
    ASSERT_TRUE(lettura.accettata) << lettura.testo << "\n" << resa;
    const Archivio archivio;
    const auto neutra = archivio.righe(queryDelCaso(caso, archivio.connessione()));
    EXPECT_EQ(archivio.righe(lettura.testo), caso.testo("righe").value_or(neutra)) << lettura.testo;
}

INSTANTIATE_TEST_SUITE_P(DaFile, TsqlCasi, testing::ValuesIn(leggiCasi("server.casi")),
                         NomeDelCaso());

} // namespace
} // namespace norvel::query
