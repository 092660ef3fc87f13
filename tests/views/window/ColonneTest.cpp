// The column editor on the real window, and columns moved and sized in the preview.
#include "tests/views/window/BancoConfigura.h"

namespace norvel::views {
namespace {

using search_window::Citta;
using search_window::Codice;
using search_window::Nome;
using Testi = std::vector<std::string>;

class ColonneTest : public BancoConfigura {
  protected:
    static bool visibile(int colonna) { return anteprima().Columns().Item(colonna).Visible; }
    static wxPoint meta(const wxRect& r) { return {r.x + r.width / 2, r.y + r.height / 2}; }
};

TEST_F(ColonneTest, ADoubleClickMovesAnEntryAtOnceWithoutAsking) {
    provaConfigura([&] {
        vai("VISUALIZZA");
        doppio(configura().List1, "nome");
        EXPECT_FALSE(visibile(Nome));
        EXPECT_TRUE(anteprima().HeadingRect(Nome).IsEmpty());
        EXPECT_EQ(voci(configura().List2), Testi{"nome"});
        doppio(configura().List2, "nome");
        EXPECT_TRUE(visibile(Nome));
        EXPECT_EQ(voci(configura().List1).back(), "nome") << "at the end, whatever its place";
        EXPECT_EQ(anteprima().Columns().Item(Nome).Order, 1) << "which it keeps in the grid";
        EXPECT_TRUE(boxes.shown().empty());
        EXPECT_TRUE(griglia().Columns().Item(Nome).Visible) << "the search itself is not touched";
    });
}

TEST_F(ColonneTest, TheButtonsMoveTheSelectedEntryAndSelectTheNext) {
    provaConfigura([&] {
        vai("VISUALIZZA");
        EXPECT_FALSE(configura().CmdSportaI->IsEnabled()) << "nothing is selected yet";
        EXPECT_FALSE(configura().Command3->IsEnabled());
        scegli(configura().List1, "nome");
        premi(configura().CmdSportaI);
        EXPECT_EQ(configura().List1->GetStringSelection(), "citta") << "the one in its place";
        premi(configura().CmdSportaI);
        EXPECT_EQ(voci(configura().List2), (Testi{"nome", "citta"}));
        scegli(configura().List1, "ragione sociale");
        premi(configura().CmdSportaI);
        EXPECT_EQ(configura().List1->GetSelection(), 0) << "after the last one the first";
        scegli(configura().List2, "citta");
        premi(configura().Command3);
        EXPECT_TRUE(visibile(Citta));
        EXPECT_EQ(voci(configura().List2), (Testi{"nome", "ragione sociale"}));
        EXPECT_EQ(configura().List2->GetSelection(), 1);
    });
}

TEST_F(ColonneTest, WithEveryColumnHiddenTheListIsEmptyAndNothingMoreHappens) {
    provaConfigura([&] {
        vai("VISUALIZZA");
        premi(configura().CmdRimuoviTutti);
        EXPECT_EQ(configura().List1->GetCount(), 0U);
        EXPECT_EQ(configura().List2->GetCount(), 9U);
        EXPECT_EQ(voci(configura().List2).front(), "codice") << "in the order of hiding";
        for (wxButton* pulsante : {configura().CmdRimuoviTutti, configura().CmdSportaI}) {
            EXPECT_FALSE(pulsante->IsEnabled());
            premi(pulsante);
        }
        robot.doubleClick(*configura().List1, {20, 10});
        EXPECT_EQ(configura().List2->GetCount(), 9U);
        tests::screenshot(*configura().Finestra, "configura-nascoste-tutte");
        scegli(configura().List2, "citta");
        premi(configura().Command3);
        EXPECT_EQ(voci(configura().List1), Testi{"citta"});
        EXPECT_TRUE(visibile(Citta));
        EXPECT_FALSE(visibile(Codice));
    });
}

TEST_F(ColonneTest, TheKeyboardAloneHidesAndShows) {
    provaConfigura([&] {
        vai("VISUALIZZA");
        robot.press(WXK_TAB);
        ASSERT_TRUE(configura().List1->HasFocus());
        robot.press(WXK_DOWN);
        robot.press(WXK_RETURN);
        EXPECT_EQ(configura().List2->GetCount(), 1U);
        EXPECT_TRUE(configura().List1->HasFocus());
        robot.press(WXK_TAB); // the next entry is selected already
        ASSERT_TRUE(configura().CmdSportaI->HasFocus());
        robot.press(WXK_SPACE);
        EXPECT_EQ(configura().List2->GetCount(), 2U);
    });
}

TEST_F(ColonneTest, ColumnsOfOneCaptionAreTwoEntries) {
    apriViste();
    pronta();
    intero("la ricerca", [&] {
        griglia().Columns().Item(Citta).Caption = "nome";
        griglia().Changed();
    });
    apreConfigura();
    intero("prova", [&] {
        vai("VISUALIZZA");
        doppio(configura().List1, "nome");
        EXPECT_FALSE(visibile(Nome));
        EXPECT_TRUE(visibile(Citta));
        doppio(configura().List1, "nome");
        EXPECT_FALSE(visibile(Citta));
        doppio(configura().List2, "nome");
        EXPECT_TRUE(visibile(Nome)) << "each entry knows its column";
        EXPECT_FALSE(visibile(Citta));
    });
    chiudeConfigura();
    chiude(script);
    cerca(tabella());
}

TEST_F(ColonneTest, OnThePageOfPlacesAHeadingIsDraggedAndAColumnSized) {
    provaConfigura([&] {
        EXPECT_FALSE(split().AllowColMove) << "as the style has it";
        const auto ordine = [] { return anteprima().Columns().Shown(); };
        ASSERT_EQ(ordine()[0], Codice);
        const wxRect nome = anteprima().HeadingRect(Nome);
        robot.drag(anteprima(), meta(anteprima().HeadingRect(Codice)),
                   {nome.x + nome.width * 3 / 4, nome.y + nome.height / 2});
        EXPECT_EQ(ordine()[0], Nome);
        EXPECT_EQ(ordine()[1], Codice);
        const double prima = anteprima().Columns().Item(Nome).Width;
        const wxRect ora = anteprima().HeadingRect(Nome);
        robot.drag(anteprima(), {ora.GetRight(), ora.height / 2},
                   {ora.GetRight() + 60, ora.height / 2});
        EXPECT_GT(anteprima().Columns().Item(Nome).Width, prima);
        EXPECT_FALSE(split().AllowColMove);
        vai("STILE");
        robot.drag(anteprima(), meta(anteprima().HeadingRect(Codice)),
                   {anteprima().HeadingRect(Nome).x + 3, nome.height / 2});
        EXPECT_EQ(ordine()[0], Nome) << "on the other pages as the style has it";
    });
}

TEST_F(ColonneTest, ThePreviewBeginsWithWhatTheSearchShowsAndNeverMovesItsRow) {
    apriViste();
    pronta();
    intero("la ricerca", [&] {
        grid::Column& citta = griglia().Columns().Item(Citta);
        citta.Caption = "Città";
        citta.Width = 3000;
        griglia().Columns().Item(Nome).Visible = false;
        griglia().SplitAt(0).AlternatingRowStyle = true;
        griglia().Style().Font.Size = 12;
        griglia().Changed();
        righe().SetFilter("codice > 2");
        righe().SetSort("codice DESC");
        righe().MoveFirst();
        righe().MoveNext();
        robot.pump();
    });
    apreConfigura();
    intero("prova", [&] {
        EXPECT_EQ(anteprima().Columns().Item(Citta).Caption, "Città");
        EXPECT_EQ(anteprima().Columns().Item(Citta).Width, 3000);
        EXPECT_FALSE(visibile(Nome));
        EXPECT_TRUE(split().AlternatingRowStyle);
        EXPECT_EQ(anteprima().Style().Font.Size, 12);
        EXPECT_EQ(anteprima().CellText(0, Codice), "7") << "the same rows in the same order";
        EXPECT_EQ(configura().DBRicerca.Recordset()->RecordCount(), 5);
        EXPECT_EQ(anteprima().CurrentRow(), 1) << "and the same current row";
        robot.click(anteprima(), meta(anteprima().CellRect(3, Codice)));
        robot.press(WXK_HOME, wxMOD_CONTROL);
        robot.press(WXK_DOWN);
        robot.press(WXK_DOWN);
        EXPECT_EQ(anteprima().CurrentRow(), 2);
        EXPECT_EQ(righe().AbsolutePosition(), 2) << "the search stays where it was";
    });
    chiudeConfigura();
    intero("dopo", [&] {
        EXPECT_EQ(righe().AbsolutePosition(), 2);
        EXPECT_EQ(righe().RecordCount(), 5);
    });
    chiude(script);
    cerca(tabella());
}

TEST_F(ColonneTest, ClosingTurnsTheSwitchesOfTheValueListsAndNothingElse) {
    apriViste();
    pronta();
    auto prima = std::make_shared<grid::Layout>();
    intero("prima", [&, prima] {
        *prima = griglia().Layouts().Present();
        EXPECT_TRUE(finestra().FilterCombo(Citta));
    });
    for (const bool acceso : {false, true}) {
        apreConfigura();
        intero("cambia", [&] {
            vai("VISUALIZZA");
            doppio(configura().List1, "nome");
            configura().ChkFacilitato->SetValue(true);
        });
        chiudeConfigura();
        intero("dopo", [&, prima, acceso] {
            EXPECT_EQ(finestra().FilterCombo(Citta), acceso);
            EXPECT_EQ(griglia().Layouts().Present(), *prima);
        });
    }
    chiude(script);
    cerca(tabella());
}

TEST_F(ColonneTest, RowsThatAreStillComingArriveInThePreviewToo) {
    apriViste();
    pronta();
    apreConfigura();
    intero("prova", [&] {
        EXPECT_TRUE(robot.waitUntil(
            [&] { return configura().DBRicerca.Recordset()->RecordCount() == 200000; }, 30000));
        EXPECT_TRUE(robot.waitUntil([&] { return anteprima().CellText(199999, 0) == "200000"; }));
        robot.focus(anteprima());
        robot.press(WXK_END, wxMOD_CONTROL);
        EXPECT_EQ(anteprima().CurrentRow(), 199999);
        EXPECT_EQ(righe().AbsolutePosition(), 1);
    });
    chiudeConfigura();
    chiude(script);
    cerca(clienti(200000, adodb::adCmdText | adodb::adAsyncFetchNonBlocking));
}

TEST_F(ColonneTest, AClosedRecordsetIsToldByTheToolbarAndNoWindowStays) {
    apriViste();
    pronta();
    script.then("chiude il recordset e preme", [&] {
        righe().Close();
        robot.click(*finestra().BarraBase, pulsante("configura"));
    });
    intero("prova", [&] {
        EXPECT_EQ(frmConfiguraReale(), nullptr);
        EXPECT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.lastText().rfind("Si è verificato un errore nel modulo "
                                         "DllRicercaNorvel.Toolbar1\r3704 - ",
                                         0),
                  0U)
            << boxes.lastText();
    });
    chiude(script);
    cerca(tabella());
}

} // namespace
} // namespace norvel::views
