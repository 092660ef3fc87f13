// The column editor's lists, on the columns of a grid that has no window.
#include "views/EditorColonne.h"

#include "tests/views/ListaProva.h"

#include <gtest/gtest.h>

namespace norvel::views {
namespace {

class EditorColonneTest : public testing::Test {
  protected:
    EditorColonneTest() {
        for (const char* titolo : {"Codice", "Nome", "Nome", "Note"}) {
            grid::Column colonna;
            colonna.DataField = "campo" + std::to_string(colonne.Count());
            colonna.Caption = titolo;
            colonna.Order = 10 - colonne.Count(); // shown the other way round
            colonne.Add(colonna);
        }
        colonne.Item(3).Visible = false;
        CaricaColonne(colonne, visibili, nascoste);
    }
    std::string mostrate() const {
        std::string testo;
        for (int i = 0; i < colonne.Count(); ++i)
            testo += colonne.Item(i).Visible ? '1' : '0';
        return testo;
    }
    void nascondi(int voce) {
        visibili.SetListIndex(voce);
        spostaScelta(visibili, nascoste, colonne, false);
    }
    void scopri(int voce) {
        nascoste.SetListIndex(voce);
        spostaScelta(nascoste, visibili, colonne, true);
    }
    void nascondiTutte() { spostaTutte(visibili, nascoste, colonne, false); }

    grid::Columns colonne;
    ListaProva visibili, nascoste;
};

TEST_F(EditorColonneTest, TheListsAreFilledInTheOrderOfTheIndexesWhateverTheGridShowsFirst) {
    EXPECT_EQ(visibili.tutte(), "Codice=0 Nome=1 Nome=2");
    EXPECT_EQ(nascoste.tutte(), "Note=3");
    CaricaColonne(colonne, visibili, nascoste);
    EXPECT_EQ(visibili.tutte(), "Codice=0 Nome=1 Nome=2") << "filled anew, not twice";
}

TEST_F(EditorColonneTest, WithEveryColumnHiddenTheFirstListIsEmptyAndHidingDoesNothing) {
    nascondiTutte();
    EXPECT_EQ(visibili.ListCount(), 0);
    const std::string prima = nascoste.tutte();
    spostaScelta(visibili, nascoste, colonne, false);
    nascondiTutte();
    EXPECT_EQ(nascoste.tutte(), prima);
    EXPECT_EQ(mostrate(), "0000");
}

TEST_F(EditorColonneTest, WithoutASelectionNothingMoves) {
    spostaScelta(visibili, nascoste, colonne, false);
    EXPECT_EQ(visibili.ListCount(), 3);
    EXPECT_EQ(mostrate(), "1110");
}

TEST_F(EditorColonneTest, TheItemDataTravelsSoThatColumnsWithOneCaptionStayApart) {
    nascondi(2);
    EXPECT_EQ(mostrate(), "1100");
    EXPECT_EQ(nascoste.tutte(), "Note=3 Nome=2");
    nascondi(1);
    EXPECT_EQ(mostrate(), "1000");
    scopri(1); // the second «Nome» of the grid
    EXPECT_EQ(mostrate(), "1010");
    EXPECT_EQ(visibili.tutte(), "Codice=0 Nome=2");
}

TEST_F(EditorColonneTest, AfterAMoveTheEntryInItsPlaceIsSelectedElseTheFirst) {
    nascondi(0);
    EXPECT_EQ(visibili.ListIndex(), 0);
    nascondi(1); // the last one
    EXPECT_EQ(visibili.ListIndex(), 0);
    EXPECT_EQ(visibili.tutte(), "Nome=1");
    nascondi(0);
    EXPECT_EQ(visibili.ListIndex(), -1) << "an empty list keeps no selection";
}

TEST_F(EditorColonneTest, AColumnThatIsShownComesToTheEndOfTheListWhateverItsPlace) {
    nascondi(0);
    scopri(1);
    EXPECT_EQ(visibili.tutte(), "Nome=1 Nome=2 Codice=0");
    EXPECT_EQ(colonne.Item(0).Order, 10) << "its place among the columns is its own";
}

TEST_F(EditorColonneTest, HidingAllKeepsTheOrderInWhichTheyWereHidden) {
    nascondi(2);
    nascondiTutte();
    EXPECT_EQ(nascoste.tutte(), "Note=3 Nome=2 Codice=0 Nome=1");
    EXPECT_EQ(mostrate(), "0000");
}

} // namespace
} // namespace norvel::views
