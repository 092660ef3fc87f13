// Sorting by real clicks on headings.
#include "search_window/Testi.h"
#include "tests/search_window/BancoQuery.h"

#include <filesystem>
#include <fstream>

namespace norvel::search_window {
namespace {

namespace fs = std::filesystem;

class OrdineTest : public BancoQuery {
  protected:
    void SetUp() override {
        BancoQuery::SetUp();
        // The host's notation for the folder of the pictures that come with the examples.
        ricerca.SetPercorso(NR_SOURCE_DIR "\\hosts\\esempi\\");
    }
    static const grid::HeadingStyle& stile(int colonna) {
        return griglia().Columns().Item(colonna).Heading;
    }
    static bool conFreccia(int colonna) {
        return stile(colonna).ForegroundPicture && stile(colonna).ForegroundPicturePosition == 1 &&
               stile(colonna).TransparentForegroundPicture;
    }
    // The blue of the arrow, by its mean height in the heading: 0 top, 1 bottom; -1 none.
    double altezzaFreccia(int colonna) {
        const wxImage immagine = tests::imageOf(griglia(), griglia().HeadingRect(colonna));
        robot.pump();
        double somma = 0;
        int punti = 0;
        for (int y = 0; y < immagine.GetHeight(); ++y)
            for (int x = 0; x < immagine.GetWidth(); ++x)
                if (immagine.GetBlue(x, y) > immagine.GetRed(x, y) + 60) {
                    somma += y;
                    ++punti;
                }
        return punti < 12 ? -1 : somma / punti / immagine.GetHeight();
    }
};

TEST_F(OrdineTest, TheFirstClickAscendsTheNextOnAnotherColumnDescendsAndTheArrowMoves) {
    prova([&] {
        clicIntestazione(Nome);
        EXPECT_EQ(righe().Sort(), "[nome]  asc");
        EXPECT_EQ(codici(), "5 3 6 7 1 2 4");
        EXPECT_TRUE(conFreccia(Nome));
        foto("ordinata");
        const double su = altezzaFreccia(Nome);
        clicIntestazione(Citta);
        EXPECT_EQ(righe().Sort(), "[citta]  desc") << "not ascending";
        EXPECT_TRUE(conFreccia(Citta));
        EXPECT_EQ(stile(Nome).ForegroundPicturePosition, 7);
        EXPECT_EQ(altezzaFreccia(Nome), -1) << "the other column's arrow is gone";
        const double giu = altezzaFreccia(Citta);
        EXPECT_GT(su, giu) << "one points up, its weight is low; the other down";
        EXPECT_GE(giu, 0);
        EXPECT_EQ(stile(Data).ForegroundPicturePosition, 0) << "a heading never clicked";
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(OrdineTest, TwoClicksOnOneColumnAlternate) {
    prova([&] {
        clicIntestazione(Prezzo);
        EXPECT_EQ(righe().Sort(), "[prezzo]  asc");
        EXPECT_EQ(codici(), "7 5 6 3 1 2 4");
        clicIntestazione(Prezzo);
        EXPECT_EQ(righe().Sort(), "[prezzo]  desc");
        EXPECT_EQ(codici(), "4 1 2 3 6 5 7");
        clicIntestazione(Prezzo);
        EXPECT_EQ(righe().Sort(), "[prezzo]  asc");
    });
}

TEST_F(OrdineTest, TheCounterTellsWhereTheCurrentRecordStandsNow) {
    prova([&] {
        righe().MoveFirst();
        EXPECT_EQ(stato(), "Record 1 di 7");
        clicIntestazione(Nome);
        EXPECT_EQ(codici(), "5 3 6 7 1 2 4");
        EXPECT_EQ(stato(), "Record 5 di 7");
        clicIntestazione(Nome);
        EXPECT_EQ(stato(), testoContatore(righe().AbsolutePosition(), 7));
    });
}

TEST_F(OrdineTest, AFieldWhoseNameHoldsBlanksIsSorted) {
    prova([&] {
        clicIntestazione(Ragione);
        EXPECT_EQ(righe().Sort(), "[ragione sociale]  asc");
        EXPECT_EQ(codici(), "2 3 5 6 4 7 1");
    });
}

TEST_F(OrdineTest, SortingKeepsTheFilterAndFilteringTheSort) {
    prova([&] {
        scrivi(Nome, "rossi");
        clicIntestazione(Citta);
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'");
        EXPECT_EQ(righe().RecordCount(), 3);
        clicIntestazione(Codice);
        EXPECT_EQ(codici(), "7 2 1");
        entra(Nome);
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(codici(), "7 6 5 4 3 2 1");
        EXPECT_EQ(righe().Sort(), "[codice]  desc");
    });
}

TEST_F(OrdineTest, TheCurrentRecordAndTheSelectionStayWithTheirRows) {
    prova([&] {
        robot.click(griglia(), cella(3, Nome), wxMOD_CONTROL);
        ASSERT_EQ(righe().Fields()("codice").Value().toDouble(), 4);
        clicIntestazione(Nome);
        EXPECT_EQ(righe().Fields()("codice").Value().toDouble(), 4);
        EXPECT_EQ(griglia().CurrentRow(), 6);
        EXPECT_EQ(griglia().SelBookmarks().Count(), 1);
    });
}

TEST_F(OrdineTest, WithoutThePicturesTheRowsAreSortedAllTheSame) {
    ricerca.SetPercorso("/nessuna/cartella/");
    prova([&] {
        clicIntestazione(Nome);
        EXPECT_EQ(codici(), "5 3 6 7 1 2 4");
        EXPECT_EQ(stile(Nome).ForegroundPicture, nullptr);
        EXPECT_EQ(stile(Nome).ForegroundPicturePosition, 1) << "every other step is made";
        EXPECT_TRUE(stile(Nome).TransparentForegroundPicture);
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(OrdineTest, AFileThatIsNoBitmapStopsNothing) {
    const fs::path cartella = tests::outputFolder() / "immagini_rotte";
    fs::create_directories(cartella / "parametri");
    std::ofstream(cartella / "parametri" / "sortup.BMP") << "BM, and then nothing like a picture";
    ricerca.SetPercorso(cartella.string() + "/");
    prova([&] {
        clicIntestazione(Nome);
        EXPECT_EQ(righe().Sort(), "[nome]  asc");
        EXPECT_EQ(stile(Nome).ForegroundPicture, nullptr);
    });
    EXPECT_TRUE(boxes.shown().empty());
    fs::remove_all(cartella);
}

TEST_F(OrdineTest, ASortThatTheRecordsetRejectsShowsNothingAndKeepsTheRows) {
    prova([&] {
        griglia().Columns().Item(Nome).DataField = "non_c_e";
        griglia().Changed();
        clicIntestazione(Nome);
        EXPECT_EQ(righe().Sort(), "");
        EXPECT_EQ(codici(), "1 2 3 4 5 6 7");
        EXPECT_TRUE(conFreccia(Nome)) << "as far as the handler got";
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(OrdineTest, DraggingAHeadingsEdgeSortsNothing) {
    prova([&] {
        const wxRect r = griglia().HeadingRect(Nome);
        const wxPoint bordo(r.GetRight(), r.y + r.height / 2);
        robot.drag(griglia(), bordo, bordo + wxPoint(40, 0));
        EXPECT_EQ(righe().Sort(), "");
        EXPECT_GT(griglia().HeadingRect(Nome).width, r.width);
    });
}

} // namespace
} // namespace norvel::search_window
