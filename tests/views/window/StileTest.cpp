// The style's page on the real window: each control sets the preview at once.
#include "tests/views/window/BancoConfigura.h"
#include "views/DialoghiSistema.h"

#include <new>

namespace norvel::views {
namespace {

using search_window::Attivo;
using search_window::Nome;

// The system's dialogs, answered.
class StileTest : public BancoConfigura {
  protected:
    void SetUp() override {
        BancoConfigura::SetUp();
        prima = impostaDialoghi({[this](wxWindow&, std::uint32_t presente) {
                                     coloreChiesto = presente;
                                     return colore;
                                 },
                                 [this](wxWindow&, const grid::FontStyle& presente) {
                                     carattereChiesto = presente;
                                     return carattere;
                                 }});
    }
    void TearDown() override {
        impostaDialoghi(prima);
        BancoConfigura::TearDown();
    }
    void provaStile(const std::function<void()>& passo) {
        provaConfigura([&] {
            vai("STILE");
            passo();
        });
    }
    static const grid::ValueItems& valori(int colonna) {
        return anteprima().Columns().Item(colonna).ValueItems;
    }

    DialoghiSistema prima;
    std::optional<std::uint32_t> colore;
    std::optional<grid::FontStyle> carattere;
    std::uint32_t coloreChiesto = 0;
    grid::FontStyle carattereChiesto;
};

TEST_F(StileTest, EachBoxSetsItsPartOfThePreviewAndTakesItBack) {
    provaStile([&] {
        for (const bool si : {true, false}) {
            premi(configura().ChkFacilitato);
            EXPECT_EQ(split().AlternatingRowStyle, si);
            premi(configura().chkRighe);
            EXPECT_EQ(split().AllowRowSizing, si);
            premi(configura().ChkSposta);
            EXPECT_EQ(split().AllowColMove, si);
            premi(configura().ChkColonne); // ticked at first
            EXPECT_EQ(split().AllowSizing, !si);
            premi(configura().ChkEvidenzia); // likewise
            EXPECT_EQ(anteprima().Style().MarqueeStyle, si ? 1 : 2);
        }
        EXPECT_TRUE(boxes.shown().empty());
        EXPECT_FALSE(griglia().SplitAt(0).AlternatingRowStyle);
    });
}

TEST_F(StileTest, CheckBoxesAreForYesNoColumnsAlone) {
    provaStile([&] {
        premi(configura().ChkChekBox);
        for (int i = 0; i < anteprima().Columns().Count(); ++i) {
            EXPECT_EQ(valori(i).Translate, i == Attivo) << i;
            EXPECT_EQ(valori(i).Presentation, i == Attivo ? 4 : 0) << i;
        }
        premi(configura().ChkChekBox);
        EXPECT_EQ(valori(Attivo), grid::ValueItems{});
    });
}

TEST_F(StileTest, NumbersThatAreZeroOrMinusOneCountAsYesAndNo) {
    apriViste();
    pronta();
    apreConfigura();
    intero("prova", [&] {
        vai("STILE");
        premi(configura().ChkChekBox);
        EXPECT_FALSE(valori(0).Translate);
        EXPECT_TRUE(valori(1).Translate);
        EXPECT_EQ(valori(1).Presentation, 4);
    });
    chiudeConfigura();
    chiude(script);
    cerca(tabella("SELECT codice, CAST(-attivo AS INTEGER) AS segno FROM clienti"));
}

TEST_F(StileTest, WithoutAYesNoColumnTheBoxForThemChangesNothing) {
    apriViste();
    pronta();
    apreConfigura();
    intero("prova", [&] {
        vai("STILE");
        const grid::Layout presente = anteprima().Layouts().Present();
        premi(configura().ChkChekBox);
        EXPECT_TRUE(configura().ChkChekBox->GetValue());
        EXPECT_EQ(anteprima().Layouts().Present(), presente);
        EXPECT_TRUE(boxes.shown().empty());
    });
    chiudeConfigura();
    chiude(script);
    cerca(tabella("SELECT codice, nome FROM clienti"));
}

TEST_F(StileTest, GroupingTicksColumnMovingAndClearingItLeavesTheBoxTickedAndMovingOff) {
    provaStile([&] {
        premi(configura().ChkRaggruppamento);
        EXPECT_TRUE(configura().ChkSposta->GetValue());
        EXPECT_TRUE(split().AllowColMove);
        EXPECT_EQ(anteprima().Style().DataView, 2);
        tests::screenshot(*configura().Finestra, "configura-raggruppamento");
        premi(configura().ChkRaggruppamento);
        EXPECT_TRUE(configura().ChkSposta->GetValue());
        EXPECT_FALSE(split().AllowColMove);
        EXPECT_EQ(anteprima().Style().DataView, 0);
    });
}

TEST_F(StileTest, OnlyTheFirstSplitIsTouched) {
    provaStile([&] {
        anteprima().AddSplit();
        ASSERT_EQ(anteprima().SplitCount(), 2);
        std::vector<grid::Split> altri;
        for (int i = 1; i < anteprima().SplitCount(); ++i)
            altri.push_back(anteprima().SplitAt(i));
        premi(configura().ChkFacilitato);
        premi(configura().ChkColonne);
        for (int i = 1; i < anteprima().SplitCount(); ++i)
            EXPECT_EQ(anteprima().SplitAt(i), altri[std::size_t(i) - 1]);
        EXPECT_TRUE(split().AlternatingRowStyle);
    });
}

TEST_F(StileTest, TheSizeIsChosenFromTheListOrTyped) {
    provaStile([&] {
        const int alta = anteprima().CellRect(0, Nome).height;
        robot.focus(*configura().CmbSize);
        robot.type("18\n");
        EXPECT_EQ(anteprima().Style().Font.Size, 18);
        EXPECT_GT(anteprima().CellRect(0, Nome).height, alta);
        tests::screenshot(*configura().Finestra, "configura-18-punti");
        configura().CmbSize->SetSelection(1);
        wxCommandEvent scelto(wxEVT_COMBOBOX, configura().CmbSize->GetId());
        scelto.SetEventObject(configura().CmbSize);
        configura().CmbSize->GetEventHandler()->ProcessEvent(scelto);
        EXPECT_EQ(anteprima().Style().Font.Size, 10);
    });
}

TEST_F(StileTest, ASizeThatIsNoNumberShowsTheErrorAndLeavesTheFont) {
    provaStile([&] {
        robot.focus(*configura().CmbSize);
        robot.type("14\n");
        robot.press('A', wxMOD_CONTROL);
        robot.type("grande\n");
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(
            boxes.lastText().rfind("Errore nel modulo di ricerca, rivolgersi all'assistenza", 0),
            0U);
        EXPECT_EQ(boxes.shown()[0].titolo, "TAMBORIN");
        EXPECT_EQ(boxes.shown()[0].icona, BoxIcon::Information);
        EXPECT_EQ(anteprima().Style().Font.Size, 14);
        robot.focus(*configura().CmdCarattere);
        EXPECT_EQ(boxes.shown().size(), 1U) << "told once, not again when the focus leaves";
    });
}

TEST_F(StileTest, AWindowThatClosesOverAHalfTypedSizeSaysNothing) {
    provaStile([&] {
        robot.focus(*configura().CmbSize);
        robot.type("grande");
        configura().Finestra->Close();
        robot.pump();
        EXPECT_TRUE(boxes.shown().empty());
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(StileTest, ATypedSizeHoldsWhenTheFocusLeaves) {
    provaStile([&] {
        robot.focus(*configura().CmbSize);
        robot.type("16");
        robot.press(WXK_TAB);
        EXPECT_EQ(anteprima().Style().Font.Size, 16);
    });
}

TEST_F(StileTest, AChosenColourIsWrittenShownAndSet) {
    provaStile([&] {
        colore = 0x0080FF40;
        premi(configura().Command1);
        EXPECT_EQ(coloreChiesto, grid::defaultEvenRowStyle.BackColor);
        EXPECT_EQ(split().EvenRowStyle.BackColor, 0x0080FF40U);
        EXPECT_EQ(testoDi(configura().txtColore1), std::to_string(0x0080FF40));
        EXPECT_EQ(configura().txtColore1->GetBackgroundColour().GetRGB(), 0x0080FF40U);
        EXPECT_EQ(split().OddRowStyle.BackColor, grid::defaultOddRowStyle.BackColor);
        colore = 0x00000080;
        premi(configura().Command2);
        EXPECT_EQ(split().OddRowStyle.BackColor, 0x00000080U);
        EXPECT_EQ(testoDi(configura().txtColore2), "128");
        premi(configura().ChkFacilitato);
        tests::screenshot(*configura().Finestra, "configura-colori");
    });
}

TEST_F(StileTest, ACancelledColourLeavesEverythingAndSaysNothing) {
    provaStile([&] {
        const grid::Layout presente = anteprima().Layouts().Present();
        const std::string testo = testoDi(configura().txtColore1);
        premi(configura().Command1);
        premi(configura().Command2);
        EXPECT_EQ(testoDi(configura().txtColore1), testo);
        EXPECT_EQ(anteprima().Layouts().Present(), presente);
        EXPECT_TRUE(boxes.shown().empty());
    });
}

TEST_F(StileTest, AChosenFontIsTakenOver) {
    provaStile([&] {
        carattere = grid::FontStyle{"DejaVu Serif", 13, true, true};
        premi(configura().CmdCarattere);
        EXPECT_EQ(anteprima().Style().Font, *carattere);
        carattere = grid::FontStyle{"DejaVu Sans", 9, false, false};
        premi(configura().CmdCarattere);
        EXPECT_EQ(carattereChiesto.Name, "DejaVu Serif") << "the dialog begins with what is there";
        EXPECT_EQ(anteprima().Style().Font, *carattere);
    });
}

TEST_F(StileTest, ACancelledFontShowsTheErrorAndLeavesTheFont) {
    provaStile([&] {
        const grid::FontStyle presente = anteprima().Style().Font;
        premi(configura().CmdCarattere);
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.shown()[0].titolo, "TAMBORIN");
        EXPECT_EQ(boxes.shown()[0].icona, BoxIcon::Information);
        EXPECT_EQ(anteprima().Style().Font, presente);
    });
}

TEST_F(StileTest, MemoryThatRunsOutOverAColourIsNotToldEither) {
    provaStile([&] {
        const std::string numero = testoDi(configura().txtColore1);
        impostaDialoghi({[](wxWindow&, std::uint32_t) -> std::optional<std::uint32_t> {
                             throw std::bad_alloc();
                         },
                         nullptr});
        premi(configura().Command1);
        EXPECT_TRUE(boxes.shown().empty());
        EXPECT_EQ(testoDi(configura().txtColore1), numero);
        premi(configura().ChkFacilitato); // the window works on
        EXPECT_TRUE(split().AlternatingRowStyle);
    });
}

} // namespace
} // namespace norvel::views
