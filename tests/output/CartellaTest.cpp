// The command «copia» without an area: the whole result as a workbook.
#include "tests/output/Parte.h"

#include <fstream>

namespace norvel::output {
namespace {

namespace fs = std::filesystem;

// Texts of a workbook that are plain ASCII stand in its bytes one behind the other.
class CartellaTest : public BancoEsporta {
  protected:
    std::string contenuto() const { return file("export/export.xls"); }
    bool contiene(const std::string& testo) const {
        return contenuto().find(testo) != std::string::npos;
    }
    void esporta() {
        boxes.answer(BoxAnswer::Yes);
        esportaExcel(parte());
    }
};

TEST_F(CartellaTest, IsMadeAfterAQuestionAndSaid) {
    esporta();
    ASSERT_EQ(boxes.shown().size(), 2U);
    EXPECT_EQ(boxes.shown()[0],
              (Messaggio{"Non è stata selezionata un area, esportare l'intero recordset?",
                         "Selezione!", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::No}));
    EXPECT_EQ(boxes.shown()[1],
              (Messaggio{"Esportazione effettuata con successo \r\rIl file è stato creato in " +
                             sessione.gPercorso.text() + "export\\export.xls",
                         "Esportazione XLS Tamborin", BoxIcon::Information, BoxButtons::Ok}));
    EXPECT_TRUE(contenuto().starts_with("\xD0\xCF\x11\xE0"));
    EXPECT_TRUE(contiene("Rossi") && contiene("D'Amico"));
    EXPECT_FALSE(contiene("codice")) << "data only";
    EXPECT_EQ(fatti, (std::vector<std::string>{"clessidra si", "clessidra no"}));
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(CartellaTest, AnsweringNoDoesNothingAndShowsNothing) {
    boxes.answer(BoxAnswer::No);
    esportaExcel(parte());
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_TRUE(fs::is_empty(cartella));
    EXPECT_TRUE(fatti.empty());
}

TEST_F(CartellaTest, HoldsTheRowsThatTheFilterLetsThrough) {
    recordset->SetFilter("nome LIKE 'R*'");
    esporta();
    EXPECT_TRUE(contiene("Rossi"));
    EXPECT_FALSE(contiene("Bianchi"));
}

TEST_F(CartellaTest, RunsTheQueryAgain) {
    connessione->Execute("INSERT INTO clienti (codice, nome) VALUES (9, 'Arrivato dopo')");
    esporta();
    EXPECT_TRUE(contiene("Arrivato dopo"));
    EXPECT_EQ(recordset->RecordCount(), 4) << "the grid's rows stay";
}

TEST_F(CartellaTest, MakesPercorsoAndItsFolderWhereTheyAreMissing) {
    sessione.gPercorso = cartella.string() + "/nuova/";
    esporta();
    EXPECT_TRUE(fs::exists(cartella / "nuova" / "export" / "export.xls"));
}

TEST_F(CartellaTest, TakesThePlaceOfTheOldOneWithoutAQuestion) {
    esporta();
    recordset->SetFilter("codice = 4");
    esporta();
    EXPECT_TRUE(contiene("Verdi"));
    EXPECT_FALSE(contiene("Rossi"));
    EXPECT_EQ(quantiFile(), 1);
}

TEST_F(CartellaTest, AQueryThatTheDatabaseRefusesIsAnError) {
    recordset = tabella("SELECT codice, nome FROM clienti GROUP BY codice");
    recordset->SetFilter("codice = 1"); // where behind GROUP BY
    esporta();
    ASSERT_EQ(boxes.shown().size(), 2U);
    EXPECT_EQ(boxes.shown()[1].titolo, "Errore esportazione!");
    EXPECT_TRUE(boxes.shown()[1].testo.starts_with(
        "Si è verificato un errore durante l'operazione di esportazione\r"));
    EXPECT_EQ(fatti, (std::vector<std::string>{"clessidra si", "clessidra no"}));
    EXPECT_EQ(quantiFile(), 0);
    recordset = tabella();
    esporta();
    EXPECT_TRUE(contiene("Rossi")) << "the next one works";
}

TEST_F(CartellaTest, ARecordsetThatRunsNoCommandIsAnError) {
    recordset = adodb::makeClientRecordset();
    recordset->Fields().Append("a", adodb::adInteger);
    recordset->Open();
    esporta();
    EXPECT_TRUE(boxes.lastText().find("\r91 - ") != std::string::npos) << boxes.lastText();
}

TEST_F(CartellaTest, AFolderThatCannotBeWrittenIsAnErrorOfTheSaving) {
    sessione.gPercorso = cartella.string() + "/manca/ancora/";
    esporta();
    EXPECT_EQ(boxes.shown().back().titolo, "Errore esportazione!");
    EXPECT_NE(boxes.lastText().find("\r76 - "), std::string::npos) << boxes.lastText();
}

TEST_F(CartellaTest, AnOperatorWhoStopsItIsToldNothingAndKeepsTheOldFile) {
    fs::create_directory(cartella / "export");
    std::ofstream(cartella / "export" / "export.xls") << "vecchio";
    finisce = false;
    esporta();
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(contenuto(), "vecchio");
    EXPECT_EQ(quantiFile(), 1);
    finisce = true;
    esporta();
    EXPECT_TRUE(contiene("Rossi")) << "the next one works";
}

TEST_F(CartellaTest, WhatACellCannotHoldIsSaidInABoxOfItsOwn) {
    std::string sql = "SELECT '" + std::string(40'000, 'x') + "' AS lungo";
    for (int i = 0; i < 260; ++i)
        sql += ", " + std::to_string(i) + " AS c" + std::to_string(i);
    recordset = tabella(sql);
    esporta();
    ASSERT_EQ(boxes.shown().size(), 3U);
    EXPECT_TRUE(boxes.shown()[1].testo.starts_with("Esportazione effettuata con successo "));
    EXPECT_EQ(boxes.shown()[2],
              (Messaggio{"Il file non contiene tutto quello che è stato esportato.\rTesti più "
                         "lunghi di una cella (32.767 caratteri), tagliati: 1\rColonne oltre la "
                         "256ª, lasciate fuori: 5",
                         "Esportazione XLS Tamborin", BoxIcon::Exclamation, BoxButtons::Ok}));
}

TEST_F(CartellaTest, AnEmptyResultIsAnEmptySheet) {
    recordset->SetFilter("codice = 77");
    esporta();
    EXPECT_TRUE(contenuto().starts_with("\xD0\xCF\x11\xE0"));
}

} // namespace
} // namespace norvel::output
