// Choosing rows with real keys and a real mouse.
#include "tests/search_window/Banco.h"

namespace norvel::search_window {
namespace {

using SceltaTest = Banco;

TEST_F(SceltaTest, EnterOnTheFirstRowHandsItBack) {
    pronta().then("Invio", [&] { robot.press(WXK_RETURN); });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "1");
}

TEST_F(SceltaTest, EnterAfterMovingDownHandsTheCurrentRowBack) {
    pronta().then("giù e Invio", [&] {
        robot.pressTimes(3, WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "4");
}

TEST_F(SceltaTest, DoubleClickHandsTheClickedRowBackEvenBeforeTheWindowIsReady) {
    aperta().then("doppio clic", [&] { robot.doubleClick(*finestra().Griglia, cella(5)); });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "6");
}

TEST_F(SceltaTest, DoubleClickOnAnEmptyResultDoesNothing) {
    ricerca.SetRecordset(clienti(0));
    variabiliGlobali().gRisposta = "prima";
    pronta()
        .then("doppio clic dove starebbero le righe",
              [&] { robot.doubleClick(*finestra().Griglia, wxPoint(200, 120)); })
        .then("ancora aperta", [&] {
            EXPECT_TRUE(frmRicercaCaricata());
            EXPECT_EQ(ricerca.Risposta(), "prima");
            robot.click(*finestra().CmdChiudi, wxPoint(8, 8));
        });
    cerca(clienti(0));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(SceltaTest, DoubleClickOnHeadingFilterCellOrEmptySpaceDoesNotChoose) {
    pronta().then("doppi clic fuori dalle righe", [&] {
        auto& griglia = *finestra().Griglia;
        const auto centro = [](const wxRect& r) { return wxPoint(r.x + 20, r.y + r.height / 2); };
        robot.doubleClick(griglia, centro(griglia.HeadingRect(1)));
        robot.doubleClick(griglia, centro(griglia.FilterCellRect(1)));
        robot.doubleClick(griglia, wxPoint(60, griglia.GetClientSize().y - 40));
        EXPECT_TRUE(frmRicercaCaricata());
        finestra().Scarica(ModoScarico::Codice);
    });
    cerca(clienti(3));
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(SceltaTest, EnterBeforeTheTimerHasFiredIsIgnored) {
    aperta()
        .then("Invio subito",
              [&] {
                  ASSERT_FALSE(variabiliGlobali().gFinestraPronta);
                  robot.press(WXK_RETURN);
                  EXPECT_TRUE(frmRicercaCaricata());
              })
        .waitFor("pronta", [] { return variabiliGlobali().gFinestraPronta; })
        .then("Invio", [&] { robot.press(WXK_RETURN); });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "1");
}

TEST_F(SceltaTest, BrowseOnlyIgnoresDoubleClickEnterAndApri) {
    ricerca.SetSoloRicerca(true);
    ricerca.SetSelezioneMultipla(true);
    variabiliGlobali().gRisposta = "prima";
    pronta().then("tutti i modi", [&] {
        robot.press(WXK_RETURN);
        robot.doubleClick(*finestra().Griglia, cella(2));
        robot.click(*finestra().BarraBase, pulsante("Apri"));
        EXPECT_TRUE(frmRicercaCaricata());
        EXPECT_EQ(ricerca.Risposta(), "prima");
        robot.click(*finestra().CmdChiudi, wxPoint(8, 8));
    });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "prima");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(SceltaTest, ThreeRowsSelectedInOrderComeBackInThatOrderAndEndTheMode) {
    ricerca.SetSelezioneMultipla(true);
    pronta().then("Ctrl+clic su 1, 2, 3, poi Apri", [&] {
        for (const int riga : {0, 1, 2})
            robot.click(*finestra().Griglia, cella(riga), wxMOD_CONTROL);
        EXPECT_EQ(finestra().Griglia->SelBookmarks().Count(), 3);
        robot.click(*finestra().BarraBase, pulsante("Apri"));
    });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "1|2|3|");
    EXPECT_FALSE(variabiliGlobali().gSelezioneMultipla);
}

TEST_F(SceltaTest, RowsSelectedBackwardsComeBackBackwards) {
    ricerca.SetSelezioneMultipla(true);
    pronta().then("Ctrl+clic su 7, 2, 5, poi Invio", [&] {
        for (const int riga : {6, 1, 4})
            robot.click(*finestra().Griglia, cella(riga), wxMOD_CONTROL);
        robot.press(WXK_RETURN);
    });
    cerca(clienti(120));
    EXPECT_EQ(ricerca.Risposta(), "7|2|5|");
}

TEST_F(SceltaTest, NothingSelectedAndYesTakesEveryRowFromTheFirst) {
    ricerca.SetSelezioneMultipla(true);
    boxes.answer(BoxAnswer::Yes);
    pronta().then("Invio senza selezione", [&] {
        robot.pressTimes(2, WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    cerca(clienti(5));
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(boxes.shown()[0].testo, "Inserisco tutti i record?");
    EXPECT_EQ(boxes.shown()[0].titolo, "Inserimento");
    EXPECT_EQ(ricerca.Risposta(), "1|2|3|4|5|");
}

TEST_F(SceltaTest, NothingSelectedAndNoClosesWithAnEmptyAnswer) {
    ricerca.SetSelezioneMultipla(true);
    variabiliGlobali().gRisposta = "prima";
    boxes.answer(BoxAnswer::No);
    pronta().then("Apri", [&] { robot.click(*finestra().BarraBase, pulsante("Apri")); });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(SceltaTest, DoubleClickInMultipleModeGivesThatRowAndABar) {
    ricerca.SetSelezioneMultipla(true);
    pronta().then("doppio clic", [&] { robot.doubleClick(*finestra().Griglia, cella(2)); });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "3|");
    EXPECT_FALSE(variabiliGlobali().gSelezioneMultipla);
}

TEST_F(SceltaTest, ApriInSingleModeDoesNothing) {
    pronta().then("Apri", [&] {
        robot.click(*finestra().BarraBase, pulsante("Apri"));
        EXPECT_TRUE(frmRicercaCaricata());
        finestra().Scarica(ModoScarico::Codice);
    });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(SceltaTest, EnterInAFilterCellDoesNotChoose) {
    pronta().then("nella cella di filtro", [&] {
        auto& griglia = *finestra().Griglia;
        ASSERT_TRUE(griglia.EnterFilterCell(1));
        robot.type("ros");
        robot.press(WXK_RETURN);
        EXPECT_TRUE(frmRicercaCaricata());
        EXPECT_EQ(griglia.Columns().Item(1).FilterText, "ros");
        finestra().Scarica(ModoScarico::Codice);
    });
    cerca(clienti(5));
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(SceltaTest, AnUnknownFieldShowsTheAssistanceBoxAndTheWindowStays) {
    ricerca.SetCampoRicerca("nonesiste");
    pronta().then("Invio", [&] {
        robot.press(WXK_RETURN);
        EXPECT_TRUE(frmRicercaCaricata());
        finestra().Scarica(ModoScarico::Codice);
    });
    cerca(clienti(5));
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(boxes.shown()[0].titolo, "TAMBORIN");
}

TEST_F(SceltaTest, AnUnknownFieldFromApriShowsTheToolbarsBox) {
    ricerca.SetCampoRicerca("nonesiste");
    ricerca.SetSelezioneMultipla(true);
    boxes.answer(BoxAnswer::Yes);
    pronta().then("Apri", [&] {
        robot.click(*finestra().BarraBase, pulsante("Apri"));
        EXPECT_TRUE(frmRicercaCaricata());
        finestra().Scarica(ModoScarico::Codice);
    });
    cerca(clienti(5));
    EXPECT_TRUE(boxes.lastText().starts_with(
        "Si è verificato un errore nel modulo DllRicercaNorvel.Toolbar1\r3265 - "))
        << boxes.lastText();
}

} // namespace
} // namespace norvel::search_window
