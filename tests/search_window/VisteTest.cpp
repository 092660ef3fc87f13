// Views in the real window.
#include "tests/search_window/BancoViste.h"

namespace norvel::search_window {
namespace {

using VisteFinestraTest = BancoViste;

TEST_F(VisteFinestraTest, ThePreferredViewIsOnShowWhenTheWindowOpens) {
    salva("ROSSIMia.grx", "ROSSIMia", "La mia città");
    vista("Altra", false);
    vista("Mia", true);
    apriConViste([&] {
        EXPECT_EQ(titolo(), "La mia città");
        EXPECT_FALSE(griglia().Columns().Item(Nome).Visible);
        EXPECT_EQ(griglia().Columns().Shown().front(), Citta);
        EXPECT_EQ(griglia().Columns().Item(Citta).Width, 2000);
        ASSERT_EQ(barra("Apri").ButtonMenus.size(), 3U);
        EXPECT_EQ(barra("Apri").ButtonMenus[0].Key, "Altra");
        EXPECT_EQ(barra("Apri").ButtonMenus[2].Key, "Base:CLI");
        EXPECT_EQ(barra("Apri").ButtonMenus[2].Text, "Vista predefinita");
        EXPECT_TRUE(barra("ultimo").Enabled);
        EXPECT_EQ(stato(), "Totale record 7");
        EXPECT_TRUE(finestra().FilterCombo(Citta)) << "the switches are abilitaCombo's alone";
        foto("vista-preferita");
    });
}

TEST_F(VisteFinestraTest, AnEntryOfTheMenuShowsItsView) {
    salva("ROSSIMia.grx", "ROSSIMia", "La mia città");
    salva("parametri/CLI.grx", "CLI", "Di tutti");
    vista("Mia", false);
    salva("x.grx", "x", "");
    apriConViste([&] {
        EXPECT_EQ(titolo(), "Di tutti");
        tests::Script menu;
        menu.then("apre il menu", [&] { robot.click(*finestra().BarraBase, frecciaApri()); });
        menu.then("la prima voce", [&] { robot.press(WXK_DOWN); });
        menu.then("sceglie", [&] { robot.press(WXK_RETURN); });
        menu.run([&] { EXPECT_TRUE(robot.waitUntil([&] { return titolo() == "La mia città"; })); });
    });
}

TEST_F(VisteFinestraTest, WithoutTheRightUltimoIsDisabled) {
    ricerca.SetUser("BIANCHI");
    apriConViste([&] {
        EXPECT_FALSE(barra("ultimo").Enabled);
        EXPECT_EQ(barra("Apri").ButtonMenus.size(), 1U);
        clicBarra("ultimo");
        EXPECT_EQ(righe().AbsolutePosition(), 1);
    });
}

TEST_F(VisteFinestraTest, AHostThatAskedForNoFilterBarGetsNoneWhateverTheLayoutHolds) {
    ricerca.SetFilterBar("0");
    salva("ROSSIMia.grx", "ROSSIMia", "x"); // its filter bar is on
    vista("Mia", true);
    apriConViste([&] { EXPECT_FALSE(griglia().SplitAt(0).FilterBar); });
}

TEST_F(VisteFinestraTest, AViewsFontSizesTheRows) {
    grid::Layout grande;
    grande.Style.Font.Size = 18;
    grande.Style.Font.Bold = true;
    grid::saveLayout((cartella / "ROSSIGrande.grx").string(), "ROSSIGrande", grande);
    vista("Grande", true);
    apriConViste([&] {
        const wxFont font = griglia().GetFont();
        EXPECT_EQ(font.GetPointSize(), 18);
        EXPECT_EQ(font.GetWeight(), wxFONTWEIGHT_BOLD);
        EXPECT_GT(griglia().CellRect(0, Codice).height, 24);
        foto("vista-grande");
        griglia().Style().Font = {};
        griglia().Changed();
        EXPECT_LT(griglia().GetFont().GetPointSize(), 18) << "the window's own comes back";
    });
}

} // namespace
} // namespace norvel::search_window
