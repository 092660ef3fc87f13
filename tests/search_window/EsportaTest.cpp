// The export commands of the toolbar on the real window.
#include "platform/runtime/OpenDocument.h"
#include "platform/runtime/RandomNumbers.h"
#include "platform/runtime/WholeFile.h"
#include "tests/search_window/BancoQuery.h"
#include "tests/support/Clipboard.h"

#include <wx/dialog.h>

#include <functional>
#include <random>

namespace norvel::search_window {
namespace {

namespace fs = std::filesystem;

class EsportaTest : public BancoQuery {
  protected:
    void SetUp() override {
        BancoQuery::SetUp();
        std::random_device random;
        do
            cartella = fs::temp_directory_path() / ("nr_esporta_" + std::to_string(random()));
        while (!fs::create_directory(cartella));
        ricerca.SetPercorso(cartella.string() + "/");
        ricerca.SetModulo("Clienti");
        processRandomNumbers() = {};
        prima = setDocumentOpener([this](const fs::path& file, void* finestraDi) {
            aperti.push_back(file);
            EXPECT_NE(finestraDi, nullptr);
        });
    }
    void TearDown() override {
        setDocumentOpener(std::move(prima));
        fs::remove_all(cartella);
        BancoQuery::TearDown();
    }

    void premi(std::string_view chiave) { robot.click(*finestra().BarraBase, pulsante(chiave)); }
    std::string file(const std::string& nome) const {
        return fs::exists(cartella / nome) ? readWholeFile(cartella / nome, 1 << 24)
                                           : std::string();
    }
    static wxDialog* dialogo() {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* d = dynamic_cast<wxDialog*>(w); d && d->IsShown()) return d;
        return nullptr;
    }

    // Rows that take long, in the background.
    static adodb::RecordsetRef lente(const std::string& codice = "i") {
        return apri(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 20000), m(j) AS "
            "(SELECT 1 UNION ALL SELECT j + 1 FROM m LIMIT 20000) SELECT " +
                codice + " AS codice, (SELECT count(*) FROM m WHERE j > i) AS nome FROM n",
            adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking);
    }
    tests::Script& esportaEAspetta() {
        return pronta().then("esporta", [&] { premi("excel"); }).waitFor("aspetta", [] {
            return dialogo() != nullptr;
        });
    }
    // The wait is over, and nothing was written or opened.
    void finita(const std::function<void()>& controlla) {
        script.waitFor("non aspetta più", [] { return dialogo() == nullptr; })
            .then("controlla", [this, controlla] {
                controlla();
                EXPECT_TRUE(aperti.empty());
                EXPECT_TRUE(fs::is_empty(cartella / "Export"));
                finestra().Scarica(ModoScarico::Codice);
            });
    }

    fs::path cartella;
    DocumentOpener prima;
    std::vector<fs::path> aperti;
};

TEST_F(EsportaTest, TheSelectedRowsGoToTheClipboardWithTheColumnsThatAreHidden) {
    prova([&] {
        griglia().Columns().Item(Nome).Visible = false;
        griglia().Columns().Item(Data).Visible = false;
        griglia().Changed();
        robot.click(griglia(), cella(0, Codice));
        robot.click(griglia(), cella(2, Codice), wxMOD_CONTROL);
        robot.click(griglia(), cella(0, Codice), wxMOD_CONTROL);
        premi("copiaclip");
        EXPECT_EQ(tests::clipboardText(),
                  "\r\nd'Amico Pia 15/03/2011 \r\nRossi Anna 15/03/2011 \r\n");
        premi("copia");
        EXPECT_EQ(tests::clipboardText(), "nome\tdata\t\r\nd'Amico Pia\t15/03/2011\t\r\nRossi "
                                          "Anna\t15/03/2011\t\r\n");
        EXPECT_TRUE(boxes.lastText().starts_with("La selezione di 2 x 2 celle è stata copiata"));
        EXPECT_EQ(righe().AbsolutePosition(), 1) << "the current record stays";
    });
}

TEST_F(EsportaTest, WithoutASelectionTheCopyWarnsAndTheExportAsks) {
    boxes.answer(BoxAnswer::No);
    prova([&] {
        premi("copiaclip");
        premi("copia");
        ASSERT_EQ(boxes.shown().size(), 2U);
        EXPECT_EQ(boxes.shown()[0].testo, "Non è stata selezionata un area?");
        EXPECT_EQ(boxes.shown()[1].testo,
                  "Non è stata selezionata un area, esportare l'intero recordset?");
        EXPECT_TRUE(fs::is_empty(cartella));
    });
}

TEST_F(EsportaTest, TheWholeResultBecomesAWorkbookTwiceInARow) {
    boxes.answer(BoxAnswer::Yes).answer(BoxAnswer::Yes);
    prova([&] {
        premi("copia");
        EXPECT_TRUE(boxes.lastText().starts_with("Esportazione effettuata con successo "));
        EXPECT_NE(file("export/export.xls").find("Bianchi"), std::string::npos);
        righe().SetFilter("nome LIKE 'Rossi*'");
        premi("copia");
        EXPECT_TRUE(boxes.lastText().starts_with("Esportazione effettuata con successo "));
        EXPECT_EQ(file("export/export.xls").find("Bianchi"), std::string::npos);
        EXPECT_NE(file("export/export.xls").find("Rossini"), std::string::npos);
        EXPECT_FALSE(wxIsBusy());
    });
}

TEST_F(EsportaTest, FilesAreWrittenAsTheGridShowsTheRowsAndOpened) {
    prova([&] {
        for (int i = 2; i < griglia().Columns().Count(); ++i)
            griglia().Columns().Item(i).Visible = false;
        griglia().Changed();
        righe().SetFilter("codice < 3");
        premi("excel");
        premi("HTML");
        EXPECT_EQ(file("Export/Clienti705.csv"),
                  "\xEF\xBB\xBF"
                  "codice;nome\r\n1;Rossi Anna\r\n2;Rossini Ugo\r\n");
        EXPECT_NE(file("Export/Clienti533.HTM").find("<h1>Ricerca clienti</h1>"),
                  std::string::npos);
        ASSERT_EQ(aperti.size(), 2U);
        EXPECT_TRUE(fs::equivalent(aperti[0], cartella / "Export" / "Clienti705.csv"));
        EXPECT_TRUE(fs::equivalent(aperti[1], cartella / "Export" / "Clienti533.HTM"));
        EXPECT_TRUE(boxes.shown().empty());
    });
}

TEST_F(EsportaTest, AnExportWaitsForTheRowsThatAreStillComingAndAnnullaEndsIt) {
    esportaEAspetta().then("annulla", [&] { robot.press(WXK_ESCAPE); });
    finita([&] { EXPECT_TRUE(boxes.shown().empty()); });
    cerca(lente());
}

// The window leaves a fetch that breaks off meanwhile to the command that waits for it.
TEST_F(EsportaTest, AFetchThatBreaksOffWhileAnExportWaitsForItIsSaidOnce) {
    esportaEAspetta().waitFor(
        "lo dice", [&] { return !boxes.shown().empty(); }, 15000);
    finita([&] {
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_TRUE(boxes.lastText().starts_with(
            "Si \xC3\xA8 verificato un errore nel modulo DllRicercaNorvel.Toolbar1\r"))
            << boxes.lastText();
    });
    cerca(lente("CASE WHEN i = 1200 THEN abs(-9223372036854775807 - 1) ELSE i END"));
}

TEST_F(EsportaTest, AHostThatClosesTheRowsWhileAnExportWaitsForThemEndsIt) {
    const adodb::RecordsetRef righe = lente();
    esportaEAspetta().then("chiude", [&] {
        righe->Cancel();
        righe->Close();
    });
    finita([&] { EXPECT_TRUE(boxes.shown().empty()); });
    cerca(righe);
}

} // namespace
} // namespace norvel::search_window
