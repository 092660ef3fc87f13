// The commands «Html» and «excel»: names, folder, what is opened.
#include "platform/runtime/RandomNumbers.h"
#include "tests/output/Parte.h"

#include <fstream>
#include <new>

namespace norvel::output {
namespace {

namespace fs = std::filesystem;

class FileTest : public BancoEsporta {
  protected:
    void SetUp() override {
        BancoEsporta::SetUp();
        processRandomNumbers() = {}; // as in a new process
        colonneDa(*recordset, true);
        colonne.Item(6).Visible = false;
    }
};

TEST_F(FileTest, TheDelimitedFileIsWrittenAndOpened) {
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_EQ(file("Export/Clienti705.csv"),
              "\xEF\xBB\xBF"
              "codice;nome;citta;importo;data;attivo\r\n1;Rossi;Roma;12,5;15/03/2011;True\r\n"
              "2;Bianchi;;;;False\r\n3;D'Amico;Milano;-3;31/12/2012;\r\n"
              "4;Verdi 100%;Romano;0;16/03/2011;True\r\n");
    ASSERT_EQ(aperti.size(), 1U);
    EXPECT_TRUE(fs::equivalent(aperti[0], cartella / "Export" / "Clienti705.csv")) << aperti[0];
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(fatti, (std::vector<std::string>{"clessidra si", "clessidra no"}));
}

TEST_F(FileTest, ThePageHasTheWindowsCaptionAsItsTitle) {
    esportaFile(parte(), FormatoFile::Html);
    const std::string pagina = file("Export/Clienti705.HTM");
    EXPECT_NE(pagina.find("<title>Ricerca clienti</title>"), std::string::npos);
    EXPECT_NE(pagina.find("<td>D'Amico</td>"), std::string::npos);
    EXPECT_EQ(pagina.find("foto"), std::string::npos) << "a hidden column";
}

TEST_F(FileTest, TwoExportsOfAProcessGetDifferentNumbersAndANewProcessRepeatsTheFirst) {
    esportaFile(parte(), FormatoFile::Csv);
    esportaFile(parte(), FormatoFile::Html);
    esportaFile(parte(), FormatoFile::Csv);
    esportaFile(parte(), FormatoFile::Csv);
    for (const char* nome : {"705.csv", "533.HTM", "579.csv", "289.csv"})
        EXPECT_NE(file(std::string("Export/Clienti") + nome), "") << nome;
    processRandomNumbers() = {};
    recordset->SetFilter("codice = 4");
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_EQ(quantiFile(), 4) << "written over";
    EXPECT_EQ(file("Export/Clienti705.csv").find("Rossi"), std::string::npos);
}

TEST_F(FileTest, APercorsoWithoutASeparatorIsGluedToTheFoldersName) {
    sessione.gPercorso = cartella.string() + "/dati";
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_NE(file("datiExport/Clienti705.csv"), "");
}

TEST_F(FileTest, AnEmptyModuloGivesTheNumberAlone) {
    for (const Variant& modulo : {Variant(""), Variant(), Variant::null()}) {
        processRandomNumbers() = {};
        sessione.gModulo = modulo;
        esportaFile(parte(), FormatoFile::Csv);
        EXPECT_NE(file("Export/705.csv"), "");
        fs::remove(cartella / "Export" / "705.csv");
    }
}

TEST_F(FileTest, AFolderThatIsThereInAnotherCaseIsUsed) {
    fs::create_directory(cartella / "export");
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_NE(file("export/Clienti705.csv"), "");
    EXPECT_FALSE(fs::exists(cartella / "Export" / "Clienti705.csv") &&
                 !fs::equivalent(cartella / "Export", cartella / "export"));
}

TEST_F(FileTest, AFolderThatCannotBeMadeEndsTheCommandWithoutAWord) {
    sessione.gPercorso = cartella.string() + "/manca/ancora/";
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(aperti.empty());
    EXPECT_EQ(quantiFile(), 0);
}

TEST_F(FileTest, WithoutARecordsetNothingIsSaidAndTheFolderIsThere) {
    recordset = nullptr;
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(aperti.empty());
    EXPECT_TRUE(fs::is_empty(cartella / "Export"));
}

TEST_F(FileTest, MemoryThatRunsOutIsAnErrorLikeAnyOther) {
    ParteEsportazione p = parte();
    p.esegui = [](Lavoro&) -> bool { throw std::bad_alloc(); };
    EXPECT_NO_THROW(esportaFile(p, FormatoFile::Html));
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(aperti.empty());
    EXPECT_EQ(quantiFile(), 0);
}

TEST_F(FileTest, AFailedExportLeavesNoFileAndOpensNothing) {
    recordset->Close();
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(aperti.empty());
    EXPECT_EQ(quantiFile(), 0);
    EXPECT_EQ(fatti.size() % 2, 0U) << "the pointer is the ordinary one again";
}

TEST_F(FileTest, AFetchThatBrokeOffEndsTheCommandWithItsErrorAndLeavesNoFile) {
    recordset = tabellaInterrotta();
    colonneDa(*recordset, true);
    EXPECT_THROW(esportaFile(parte(), FormatoFile::Html), Errore);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(aperti.empty());
    EXPECT_EQ(quantiFile(), 0);
}

TEST_F(FileTest, AnExportThatIsStoppedLeavesTheOldFileAndOpensNothing) {
    fs::create_directory(cartella / "Export");
    std::ofstream(cartella / "Export" / "Clienti705.csv") << "vecchio";
    finisce = false;
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_EQ(file("Export/Clienti705.csv"), "vecchio");
    EXPECT_TRUE(aperti.empty());
    EXPECT_EQ(quantiFile(), 1);
}

TEST_F(FileTest, FollowsTheFilterTheOrderAndTheColumnsOnShow) {
    recordset->SetFilter("attivo = True");
    recordset->SetSort("codice DESC");
    for (int i = 2; i < colonne.Count(); ++i)
        colonne.Item(i).Visible = false;
    colonne.Item(0).Order = 9;
    esportaFile(parte(), FormatoFile::Csv);
    EXPECT_EQ(file("Export/Clienti705.csv"), "\xEF\xBB\xBF"
                                             "nome;codice\r\nVerdi 100%;4\r\nRossi;1\r\n");
}

} // namespace
} // namespace norvel::output
