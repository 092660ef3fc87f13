// Grouped views on the real window: how their rows are sorted.
#include "tests/search_window/BancoViste.h"

namespace norvel::search_window {
namespace {

class RaggruppataTest : public BancoViste {
  protected:
    void SetUp() override {
        BancoViste::SetUp();
        salvaRaggruppata("PerCitta", {"citta"});
        salvaRaggruppata("PerAttivo", {"attivo", "citta"});
        salva("parametri/CLI.grx", "CLI", "Di tutti");
    }
    void salvaRaggruppata(const std::string& nome, const std::vector<std::string>& campi) {
        grid::Layout disposizione;
        disposizione.Style.DataView = 2;
        disposizione.Style.GroupColumns = campi;
        disposizione.Split.AllowColMove = true;
        grid::saveLayout((cartella / ("ROSSI" + nome + ".grx")).string(), "ROSSI" + nome,
                         disposizione);
        vista(nome, false);
    }
    static std::string ordine() { return righe().Sort(); }
    // The codes as the recordset has its rows.
    static std::string codiciInOrdine() {
        std::string testo;
        const auto clone = righe().Clone();
        clone->SetSort(ordine());
        for (clone->MoveFirst(); !clone->EOF_(); clone->MoveNext())
            testo += clone->Fields()("codice").Value().toText();
        return testo;
    }
};

TEST_F(RaggruppataTest, AViewChosenFromTheMenuIsSortedByItsGroups) {
    apriConViste([&] {
        EXPECT_EQ(ordine(), "");
        scegliVista(1);
        EXPECT_EQ(griglia().Style().DataView, 2);
        EXPECT_EQ(ordine(), "[attivo], [citta]");
        EXPECT_EQ(codiciInOrdine(), "5317642") << "True is -1 and comes first";
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(RaggruppataTest, GroupingByTheKeyboardSortsByTheGroupsThatThereAreThen) {
    apriConViste([&] {
        scegliVista(0);
        clicIntestazione(Codice);
        ASSERT_EQ(ordine(), "[codice]  asc");
        griglia().SetCurrentColumn(Annullato);
        robot.press('G', wxMOD_CONTROL);
        EXPECT_EQ(griglia().Style().GroupColumns, (std::vector<std::string>{"citta", "annullato"}));
        EXPECT_EQ(ordine(), "[citta], [annullato]");
        EXPECT_NE(griglia().Columns().Item(Codice).Heading.ForegroundPicturePosition, 1);
        foto("raggruppata");
        robot.press('G', wxMOD_CONTROL | wxMOD_SHIFT);
        EXPECT_EQ(ordine(), "[citta]");
        robot.press('G', wxMOD_CONTROL | wxMOD_SHIFT);
        EXPECT_EQ(ordine(), "") << "no groups: the rows' own order";
        EXPECT_EQ(codiciInOrdine(), "1234567");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(RaggruppataTest, AGroupedViewAtTheStartShowsTheRowsOfAGroupThatIsOpened) {
    salvaRaggruppata("Prima", {"gruppo", "sotto"});
    esegui("UPDATE ricerchepers SET preferito = 1 WHERE NomeVista = 'Prima'");
    ricerca.SetRecordsetOperatori(tabella("SELECT * FROM operatori"));
    ricerca.SetRecordsetViste(tabella("SELECT * FROM ricerchepers"));
    const auto passo = [&] {
        robot.press(WXK_HOME, wxMOD_CONTROL);
        robot.press(WXK_RIGHT);
        robot.press(WXK_DOWN);
        robot.press(WXK_RIGHT);
        robot.press(WXK_DOWN);
        ASSERT_FALSE(griglia().IsGroupRow(griglia().CurrentRow()));
        const wxRect cella = griglia().CellRect(griglia().CurrentRow() + 1, 1);
        const wxImage vista = tests::imageOf(griglia(), cella);
        EXPECT_LT(tests::brightnessOf(vista), 250) << "the texts are there";
        foto("raggruppata-aperta");
    };
    prova(passo, tabella("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT "
                         "3000) SELECT i AS codice, 'Cliente ' || i AS nome, i * 7 % 100 AS "
                         "gruppo, i % 3 AS sotto FROM n"));
}

TEST_F(RaggruppataTest, EnterOpensAGroupAndChoosesARow) {
    ricerca.SetRecordsetOperatori(tabella("SELECT * FROM operatori"));
    ricerca.SetRecordsetViste(tabella("SELECT * FROM ricerchepers"));
    pronta();
    intero("alla riga", [&] {
        scegliVista(0);
        robot.focus(griglia());
        robot.press(WXK_END, wxMOD_CONTROL); // the last group, of Torino
        if (!griglia().IsGroupOpen(griglia().CurrentRow())) robot.press(WXK_RETURN);
        EXPECT_TRUE(finestra().Finestra->IsShown());
        EXPECT_EQ(griglia().LineText(griglia().CurrentRow()), "Di tutti: Torino (1)");
        robot.press(WXK_DOWN);
    });
    script.then("sceglie", [&] { robot.press(WXK_RETURN); });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "7");
}

TEST_F(RaggruppataTest, TheMenuSortsTheGroupedGridFirstThenShowsTheOtherView) {
    apriConViste([&] {
        scegliVista(0);
        clicIntestazione(Codice);
        EXPECT_EQ(ordine(), "[codice]  asc");
        scegliVista(2); // «Vista predefinita»
        EXPECT_EQ(griglia().Style().DataView, 0);
        EXPECT_EQ(titolo(), "Di tutti");
        EXPECT_EQ(ordine(), "[citta]") << "by the groups that were on show";
        EXPECT_NE(griglia().Columns().Item(Codice).Heading.ForegroundPicturePosition, 1)
            << "no arrow says otherwise";
    });
}

TEST_F(RaggruppataTest, GroupsThatTheQueryNoLongerBringsWarnAndTheViewIsShownAllTheSame) {
    salvaRaggruppata("Vecchia", {"provincia"});
    apriConViste([&] {
        clicIntestazione(Codice);
        scegliVista(2);
        EXPECT_EQ(griglia().Style().DataView, 2);
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_TRUE(boxes.lastText().starts_with("Attenzione! Si è verificato un errore nella "
                                                 "funzione RiordinaGriglia."))
            << boxes.lastText();
        EXPECT_EQ(ordine(), "[codice]  asc") << "the sort that there was";
        EXPECT_EQ(griglia().Columns().Item(Codice).Heading.ForegroundPicturePosition, 1);
        boxes.clear();
        scegliVista(3); // out of the trouble
        EXPECT_EQ(boxes.shown().size(), 1U) << "the menu sorts first, once";
        EXPECT_EQ(titolo(), "Di tutti");
        EXPECT_EQ(ordine(), "[codice]  asc");
    });
}

} // namespace
} // namespace norvel::search_window
