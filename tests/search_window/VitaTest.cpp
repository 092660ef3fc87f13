// The window's life: opening, placing, layout, counter, closing.
#include "platform/runtime/Twips.h"
#include "search_window/Disposizione.h"
#include "search_window/Pulsanti.h"
#include "tests/search_window/Banco.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/panel.h>
#include <wx/radiobut.h>

#include <locale.h>

namespace norvel::search_window {
namespace {

class VitaTest : public Banco {
  protected:
    void controllaDisposizione(int margineAtteso) {
        const wxRect griglia = finestra().Griglia->GetRect();
        const wxRect status = finestra().StatusBar->GetRect();
        const wxSize area = finestra().Finestra->GetClientSize();
        EXPECT_EQ(griglia.y, twipsToPixels(480, finestra().Finestra->FromDIP(1000) / 1000.0));
        EXPECT_EQ(griglia.x, 0);
        EXPECT_EQ(griglia.width, area.x);
        EXPECT_NEAR(status.y - griglia.GetBottom() - 1, margineAtteso, 1);
        EXPECT_EQ(status.GetBottom() + 1, area.y);
    }
    void chiudi() {
        script.then("chiude", [] { finestra().Scarica(ModoScarico::Codice); });
    }
};

TEST_F(VitaTest, ResizingKeepsTheGrid480TwipsFromTheTopAnd50AboveTheStatusBar) {
    aperta();
    for (const wxSize misura : {wxSize(900, 700), wxSize(500, 300), wxSize(1300, 901)}) {
        script.then("ridimensiona", [misura] { finestra().Finestra->SetClientSize(misura); });
        script.waitFor("ridimensionata",
                       [misura] { return finestra().Finestra->GetClientSize() == misura; });
        script.then("controlla", [this] { controllaDisposizione(3); }); // 50 twips are 3.3 pixels
    }
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, WithTheToolbarHiddenTheGridStillStartsAt480Twips) {
    aperta().then("nasconde la barra", [&] {
        finestra().SetBarraBaseVisible(false);
        EXPECT_FALSE(finestra().BarraBase->IsShown());
        EXPECT_FALSE(finestra().CmdChiudi->IsShown()) << "the space above the grid stays empty";
        EXPECT_EQ(finestra().Griglia->GetPosition().y, 32);
    });
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, TheCloseButtonStandsBesideThePanelInANarrowWindowToo) {
    aperta().then("mostra il pannello", [] { finestra().BarraBase->Press("Drop"); });
    for (const int larga : {700, 330, 250, 130}) {
        script.then("ridimensiona", [larga] { finestra().Finestra->SetClientSize(larga, 300); });
        script.waitFor("ridimensionata",
                       [larga] { return finestra().Finestra->GetClientSize().x == larga; });
        script.then("controlla", [larga] {
            const wxRect chiudi = finestra().CmdChiudi->GetRect();
            const wxRect pannello = finestra().frameRicercaAvanzata->GetRect();
            EXPECT_LE(pannello.GetRight(), chiudi.x) << larga;
            EXPECT_LE(finestra().BarraBase->GetRect().GetRight(), pannello.x) << larga;
            EXPECT_LE(chiudi.GetRight(), larga) << larga;
            EXPECT_GE(finestra().optDiverso->GetSize().x, finestra().optDiverso->GetBestSize().x)
                << "cut, not squeezed, which the toolkit refuses";
        });
    }
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, ATinyWindowKeepsTheGridsLastHeight) {
    aperta().then("rimpicciolisce", [&] {
        const int prima = finestra().Griglia->GetSize().y;
        finestra().Finestra->SetClientSize(400, 40);
        robot.pumpFor(200);
        ASSERT_LT(finestra().Finestra->GetClientSize().y, 60);
        EXPECT_EQ(finestra().Griglia->GetSize().y, prima);
    });
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, StatusBarZeroHidesItAndTheGridReachesFiftyTwipsAboveTheBottom) {
    ricerca.SetStatusBar("0");
    aperta().then("controlla", [&] {
        EXPECT_FALSE(finestra().StatusBar->IsShown());
        EXPECT_NEAR(finestra().Finestra->GetClientSize().y -
                        finestra().Griglia->GetRect().GetBottom() - 1,
                    3, 1);
    });
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, UnsetSizeOpens11355By7000TwipsAndCentredWindowStandsInTheMiddle) {
    aperta().then("controlla", [&] {
        const wxRect r = finestra().Finestra->GetRect();
        EXPECT_NEAR(r.width, 757, 2);
        EXPECT_NEAR(r.height, 467, 2);
        const wxRect schermo = wxDisplay(finestra().Finestra).GetGeometry();
        EXPECT_NEAR(2 * r.x + r.width, schermo.width, 24);
        EXPECT_NEAR(2 * r.y + r.height, schermo.height, 48) << "give or take the frame";
    });
    chiudi();
    cerca(clienti(50));
    EXPECT_EQ(ricerca.Width(), "11355");
    EXPECT_EQ(ricerca.Height(), "7000");
}

TEST_F(VitaTest, WindowsStateTwoMaximises) {
    ricerca.SetWindowsState("2");
    aperta()
        .waitFor("massimizzata", [] { return finestra().Finestra->IsMaximized(); })
        .then("controlla", [&] {
            EXPECT_GT(finestra().Finestra->GetSize().x, 1800);
            controllaDisposizione(3);
        });
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, WindowsStateZeroPlacesItAtTopAndLeft) {
    ricerca.SetWindowsState("0");
    ricerca.SetTop("3000");
    ricerca.SetLeft("1500");
    aperta().then("controlla", [&] {
        const wxPoint dove = finestra().Finestra->GetPosition();
        EXPECT_NEAR(dove.x, 100, 12);
        EXPECT_NEAR(dove.y, 200, 30) << "give or take the frame";
    });
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, TopAndLeftUnsetPlaceItInTheScreensCorner) {
    ricerca.SetWindowsState("0");
    aperta().then("controlla", [&] {
        const wxPoint dove = finestra().Griglia->GetScreenPosition();
        EXPECT_LT(dove.x, 12) << "no further than the frame is wide";
        EXPECT_LT(dove.y, 32 + 40) << "below the toolbar and the title alone";
    });
    chiudi();
    cerca(clienti(50));
}

TEST_F(VitaTest, OpeningSaysTheTotalAndEveryMoveTheCounter) {
    pronta()
        .then("appena aperta", [&] { EXPECT_EQ(stato(), "Totale record 120"); })
        .then("giù", [&] { robot.press(WXK_DOWN); })
        .then("secondo", [&] { EXPECT_EQ(stato(), "Record 2 di 120"); })
        .then("ultima", [&] { robot.press(WXK_END, wxMOD_CONTROL); })
        .then("ultimo", [&] { EXPECT_EQ(stato(), "Record 120 di 120"); })
        .then("mossa dell'ospite",
              [&] { finestra().DBRicerca.Recordset()->SetAbsolutePosition(3); })
        .then("terzo", [&] {
            EXPECT_EQ(stato(), "Record 3 di 120");
            EXPECT_EQ(finestra().Griglia->CurrentRow(), 2);
        });
    chiudi();
    cerca(clienti(120));
}

TEST_F(VitaTest, AClickInTheGridWritesTheCounter) {
    pronta().then("clic sulla prima riga, che è già la corrente",
                  [&] { robot.click(*finestra().Griglia, cella(0)); });
    script.then("controlla", [&] { EXPECT_EQ(stato(), "Record 1 di 120"); });
    chiudi();
    cerca(clienti(120));
}

TEST_F(VitaTest, ZeroRowsSayTotaleRecordZero) {
    aperta().then("controlla", [&] { EXPECT_EQ(stato(), "Totale record 0"); });
    chiudi();
    cerca(clienti(0));
}

TEST_F(VitaTest, ACounterWithoutARecordsetOrOverAClosedOneShowsNoMessage) {
    auto rs = clienti(120);
    aperta().then("controlla", [&] {
        finestra().StatusBar->SetPanelText(1, "resta");
        finestra().DBRicerca.SetRecordset(nullptr);
        finestra().aggiornaContatore();
        EXPECT_EQ(stato(), "resta");
        auto chiuso = clienti(3);
        finestra().DBRicerca.SetRecordset(chiuso);
        chiuso->Close();
        finestra().aggiornaContatore();
        EXPECT_EQ(stato(), "resta");
    });
    chiudi();
    cerca(rs);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(VitaTest, TheCloseBoxClearsAnOlderAnswer) {
    variabiliGlobali().gRisposta = "prima";
    pronta().then("Alt+F4", [&] { robot.press(WXK_F4, wxMOD_ALT); });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(VitaTest, CmdChiudiLeavesAnOlderAnswer) {
    variabiliGlobali().gRisposta = "prima";
    pronta().then("Chiudi", [&] { robot.click(*finestra().CmdChiudi, wxPoint(8, 8)); });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "prima");
}

TEST_F(VitaTest, TheToolbarsChiudiClearsAnOlderAnswer) {
    variabiliGlobali().gRisposta = "prima";
    pronta().then("Chiudi", [&] { robot.click(*finestra().BarraBase, pulsante("Chiudi")); });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(VitaTest, TheToolbarHasItsSeventeenButtonsInTheirOrder) {
    aperta().then("controlla", [&] {
        ASSERT_EQ(finestra().BarraBase->Count(), pulsantiBarra.size());
        for (std::size_t i = 0; i < pulsantiBarra.size(); ++i) {
            const controls::Button& pulsante = finestra().BarraBase->Item(i);
            EXPECT_EQ(pulsante.Key, pulsantiBarra[i].chiave);
            EXPECT_EQ(pulsante.Enabled, pulsante.Key != "ultimo") << pulsante.Key;
        }
        EXPECT_FALSE(finestra().BarraBase->Item("Modifica").Visible);
        EXPECT_TRUE(finestra().BarraBase->Item("apri").Enabled) << "keys are case-blind";
    });
    chiudi();
    cerca(clienti(5));
}

TEST_F(VitaTest, AbilitaModificaCampiMakesModificaVisibleBeforeTheWindowIsShown) {
    ricerca.SetAbilitaModificaCampi("nome;codice");
    EXPECT_EQ(ricerca.AbilitaModificaCampi(), "nome;codice");
    ASSERT_TRUE(frmRicercaCaricata()) << "the window is loaded for that";
    EXPECT_FALSE(finestra().Finestra->IsShown());
    aperta().then("controlla",
                  [&] { EXPECT_TRUE(finestra().BarraBase->Item("Modifica").Visible); });
    chiudi();
    cerca(clienti(5));
}

TEST_F(VitaTest, ColumnsStartWithTheirDropDownListsOn) {
    aperta().then("controlla", [&] {
        ASSERT_EQ(finestra().NumeroColonne(), 2);
        EXPECT_TRUE(finestra().FilterCombo(0));
        EXPECT_TRUE(finestra().FilterCombo(1));
    });
    chiudi();
    cerca(clienti(5));
}

TEST_F(VitaTest, FilterBarZeroOrUnsetSwitchesTheFilterBarOff) {
    ricerca.SetFilterBar("0");
    aperta().then("controlla", [&] {
        EXPECT_FALSE(finestra().Griglia->SplitAt(0).FilterBar);
        EXPECT_TRUE(finestra().Griglia->FilterCellRect(0).IsEmpty());
    });
    chiudi();
    cerca(clienti(5));
}

TEST_F(VitaTest, StylingEndsAtTheFirstRecordsetThatIsNotOpen) {
    auto chiuse = visteVuote();
    chiuse->Close();
    ricerca.SetRecordsetViste(chiuse);
    ricerca.SetFilterBar("0");
    aperta().then("controlla", [&] {
        EXPECT_EQ(stato(), "") << "no total";
        EXPECT_TRUE(finestra().Griglia->SplitAt(0).FilterBar) << "the switch was not reached";
        robot.pumpFor(700);
        EXPECT_FALSE(variabiliGlobali().gFinestraPronta) << "nor the timer";
        EXPECT_EQ(finestra().NumeroColonne(), 2) << "the rows are there all the same";
    });
    chiudi();
    cerca(clienti(5));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(VitaTest, ASecondSearchStartsFreshAndTheHostsRowIsWhereTheOperatorLeftIt) {
    auto rs = clienti(120);
    pronta().then("giù", [&] {
        robot.pressTimes(9, WXK_DOWN);
        finestra().Griglia->SetFilterText(1, "resto");
    });
    chiudi();
    cerca(rs);
    EXPECT_EQ(rs->AbsolutePosition(), 10);
    EXPECT_EQ(rs->State(), adodb::adStateOpen) << "the host's recordset stays open";

    tests::Script seconda;
    aperta(seconda).then("controlla", [&] {
        EXPECT_FALSE(variabiliGlobali().gFinestraPronta);
        EXPECT_EQ(finestra().Griglia->Columns().Item(1).FilterText, "");
        EXPECT_EQ(stato(), "Totale record 120");
        EXPECT_EQ(finestra().Griglia->CurrentRow(), 9);
    });
    seconda.then("chiude", [] { finestra().Scarica(ModoScarico::Codice); });
    cerca(rs, seconda);
}

TEST_F(VitaTest, ASecondRicercaWhileTheWindowIsShownReturnsAtOnceAndTheWindowStays) {
    aperta().then("dal ciclo della finestra", [&] {
        Ricerca altra;
        altra.SetCaption("Altra");
        EXPECT_TRUE(altra.Cerca().isEmpty());
        EXPECT_TRUE(frmRicercaCaricata());
        EXPECT_TRUE(finestra().Finestra->IsShown());
        EXPECT_EQ(finestra().Finestra->GetTitle(), "Altra");
    });
    chiudi();
    cerca(clienti(5));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(VitaTest, WithoutARecordsetTheCallEndsWithTheFunctionsBox) {
    EXPECT_TRUE(ricerca.Cerca().isEmpty());
    EXPECT_TRUE(boxes.lastText().starts_with("Errore nella funzione NorvelRicerca.Ricerca\r91 - "))
        << boxes.lastText();
    ASSERT_TRUE(frmRicercaCaricata()) << "the window may stay loaded, hidden";
    EXPECT_FALSE(finestra().Finestra->IsShown());
    finestra().Scarica(ModoScarico::Codice);
    robot.pump();
}

TEST_F(VitaTest, TheHostsLocaleIsLeftAsItWas) {
    const std::string prima = setlocale(LC_ALL, nullptr);
    pronta().then("Invio", [&] { robot.press(WXK_RETURN); });
    cerca(clienti(5));
    EXPECT_EQ(setlocale(LC_ALL, nullptr), prima);
}

TEST_F(VitaTest, AThousandColumnsOpenLikeAFew) {
    std::string sql = "SELECT 1 AS c0";
    for (int i = 1; i < 1000; ++i)
        sql += "," + std::to_string(i) + " AS c" + std::to_string(i);
    aperta().then("controlla", [&] { EXPECT_EQ(finestra().NumeroColonne(), 1000); });
    chiudi();
    cerca(apri(sql));
}

} // namespace
} // namespace norvel::search_window
