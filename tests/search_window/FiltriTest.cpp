// Filtering with real keys: what the cells say is what the recordset's filter becomes.
#include "tests/search_window/BancoQuery.h"

#include <wx/textctrl.h>

namespace norvel::search_window {
namespace {

class FiltriTest : public BancoQuery {
  protected:
    // What typing this into one cell makes of the filter, in a mode.
    std::string digitato(int colonna, std::string_view testo, const char* modo = "contiene") {
        std::string esito = "(the window did not open)";
        prova([&] {
            if (std::string_view(modo) != "contiene") {
                premiDrop();
                scegliModo(std::string_view(modo) == "uguale" ? finestra().optUguale
                                                              : finestra().optDiverso);
            }
            scrivi(colonna, testo);
            esito = filtro();
        });
        return esito;
    }
};

// --- from each kind of cell ---

TEST_F(FiltriTest, NoCellWithAValueIsNoFilter) {
    prova([&] {
        entra(Nome);
        robot.press(WXK_RETURN);
        EXPECT_EQ(filtro(), "");
        EXPECT_EQ(codici(), "1 2 3 4 5 6 7");
        EXPECT_EQ(stato(), "Record selezionati 7");
        robot.type("   ");
        EXPECT_EQ(filtro(), "") << "blanks alone are no value";
    });
}

TEST_F(FiltriTest, TextThatACellContainsWithAnApostrophe) {
    EXPECT_EQ(digitato(Nome, "d'Ami"), "nome LIKE '*d''Ami*'");
}

TEST_F(FiltriTest, TextDifferent) {
    EXPECT_EQ(digitato(Nome, "Rossi", "diverso"), "nome <> 'Rossi'");
}

TEST_F(FiltriTest, AColumnNamedLikeNullStandsInBrackets) {
    EXPECT_EQ(digitato(Annullato, "si", "uguale"), "[annullato] = 'si'");
}

TEST_F(FiltriTest, ANumberWithAComma) {
    EXPECT_EQ(digitato(Prezzo, "12,5"), "prezzo=12.5");
}

TEST_F(FiltriTest, ANumberEqual) {
    EXPECT_EQ(digitato(Prezzo, "12,5", "uguale"), "prezzo=12.5");
}

TEST_F(FiltriTest, ANumberDifferent) {
    EXPECT_EQ(digitato(Prezzo, "12,5", "diverso"), "prezzo<>12.5");
}

TEST_F(FiltriTest, ABooleanFalso) {
    EXPECT_EQ(digitato(Attivo, "Falso"), "attivo=0");
}

TEST_F(FiltriTest, ABooleanSi) {
    EXPECT_EQ(digitato(Attivo, "Si"), "attivo=1");
}

TEST_F(FiltriTest, ADateDayFirst) {
    EXPECT_EQ(digitato(Data, "15/03/2011", "uguale"), "data=#15-03-2011#");
}

TEST_F(FiltriTest, TwoColumnsWithTokens) {
    prova(
        [&] {
            scrivi(1, "[Nulli]");
            scrivi(2, "[Non vuoti]");
            EXPECT_EQ(filtro(), "note=NULL AND citta<>NULL AND citta<>''");
            EXPECT_EQ(codici(), "1 4 7");
        },
        tabella("SELECT codice, note, citta FROM clienti"));
}

TEST_F(FiltriTest, ADateCellWithoutADateIsMarkedAndTheOtherColumnsFilterStays) {
    prova([&] {
        scrivi(Nome, "rossi");
        ASSERT_EQ(codici(), "1 2 7");
        scrivi(Data, "abc");
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'") << "no half condition is ever set";
        EXPECT_EQ(codici(), "1 2 7");
        EXPECT_FALSE(motivoDi(Data).empty());
        EXPECT_TRUE(motivoDi(Nome).empty());
    });
    EXPECT_TRUE(boxes.shown().empty());
}

// --- live ---

TEST_F(FiltriTest, EveryKeyFiltersAndTheStatusLineSaysHowManyRowsAreLeft) {
    prova([&] {
        entra(Nome);
        const std::vector<std::pair<char, std::string>> attesi = {
            {'r', "1 2 4 6 7"}, {'o', "1 2 7"}, {'s', "1 2 7"}, {'s', "1 2 7"},
            {'i', "1 2 7"},     {'n', "2"},     {'i', "2"},     {'x', ""}};
        for (const auto& [tasto, quali] : attesi) {
            robot.type(std::string(1, tasto));
            EXPECT_EQ(codici(), quali);
            EXPECT_EQ(stato(), "Record selezionati " + std::to_string(righe().RecordCount()));
            EXPECT_EQ(griglia().focusArea(), grid::Area::FilterCell);
        }
        robot.pressTimes(3, WXK_BACK);
        EXPECT_EQ(codici(), "1 2 7");
        foto("filtro_vivo");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(FiltriTest, EscClearsTheCellAndThenLeadsBackToTheRows) {
    prova([&] {
        scrivi(Nome, "rossi");
        scrivi(Citta, "torino");
        ASSERT_EQ(codici(), "7");
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(cellaDi(Citta), "");
        EXPECT_EQ(codici(), "1 2 7") << "the other cell stays";
        EXPECT_EQ(stato(), "Record selezionati 3");
        EXPECT_EQ(griglia().focusArea(), grid::Area::FilterCell);
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(griglia().focusArea(), grid::Area::Data);
        EXPECT_EQ(codici(), "1 2 7");
    });
}

TEST_F(FiltriTest, EnterInACellFiltersAndChoosesNoRow) {
    variabiliGlobali().gRisposta = "prima";
    prova([&] {
        scrivi(Nome, "rossi");
        robot.press(WXK_DOWN);
        robot.press(WXK_DOWN);
        EXPECT_EQ(stato(), "Record 2 di 3");
        entra(Nome);
        robot.press(WXK_RETURN);
        EXPECT_EQ(stato(), "Record selezionati 3");
        EXPECT_EQ(ricerca.Risposta(), "prima");
    });
}

TEST_F(FiltriTest, EnterKeepsTheCurrentRecordWhereTheFilterIsInForceAlready) {
    prova([&] {
        scrivi(Nome, "rossi");
        robot.press(WXK_DOWN);
        robot.press(WXK_DOWN);
        ASSERT_EQ(righe().AbsolutePosition(), 2);
        robot.press(WXK_F2);
        robot.press(WXK_RETURN);
        EXPECT_EQ(righe().AbsolutePosition(), 2);
    });
}

TEST_F(FiltriTest, TheCounterReturnsWithTheNextMoveInTheRows) {
    prova([&] {
        scrivi(Nome, "rossi");
        EXPECT_EQ(stato(), "Record selezionati 3");
        robot.press(WXK_DOWN);
        robot.press(WXK_DOWN);
        EXPECT_EQ(stato(), "Record 2 di 3");
    });
}

TEST_F(FiltriTest, ARowChosenUnderAFilterIsTheOneOnShow) {
    pronta().then("filtra e sceglie", [&] {
        scrivi(Nome, "rossi");
        robot.press(WXK_DOWN);
        robot.press(WXK_DOWN);
        robot.press(WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "7");
}

// --- over a recordset that takes its time ---

TEST_F(FiltriTest, WithAPauseTheFilterWaitsForTheOperatorToStopTyping) {
    prova([&] {
        finestra().pausaDigitazione = [](const adodb::Recordset&) { return 4000; };
        entra(Nome);
        robot.type("ros");
        EXPECT_EQ(filtro(), "") << "still typing";
        EXPECT_TRUE(robot.waitUntil([] { return filtro() == "nome LIKE '*ros*'"; }, 15000));
        EXPECT_EQ(stato(), "Record selezionati 3");
    });
}

TEST_F(FiltriTest, EnterAndLeavingTheCellDoNotWaitForThePause) {
    prova([&] {
        finestra().pausaDigitazione = [](const adodb::Recordset&) { return 600000; };
        entra(Nome);
        robot.type("ros");
        EXPECT_EQ(filtro(), "");
        robot.press(WXK_RETURN);
        EXPECT_EQ(filtro(), "nome LIKE '*ros*'");
        robot.type("sin");
        EXPECT_EQ(codici(), "1 2 7");
        robot.press(WXK_TAB);
        EXPECT_EQ(codici(), "2") << "left by Tab";
        robot.type("milano");
        robot.click(griglia(), cella(0));
        EXPECT_EQ(codici(), "") << "left by a click on a row";
    });
}

// --- refused ---

TEST_F(FiltriTest, ANumberCellThatHoldsMoreThanANumberIsMarkedWithItsReasonAndWithoutABox) {
    prova([&] {
        scrivi(Prezzo, "12,5");
        ASSERT_EQ(codici(), "1 2");
        robot.type("OR 1=1");
        EXPECT_EQ(motivoDi(Prezzo), "Qui serve un solo numero, per esempio 12,5");
        EXPECT_EQ(filtro(), "prezzo=12.5") << "the filter in force stays";
        EXPECT_EQ(codici(), "1 2");
        robot.pumpFor(150);
        const wxRect r = griglia().FilterCellRect(Prezzo);
        const wxImage cornice = tests::imageOf(griglia(), {r.x, r.y, r.width, 1});
        robot.pump();
        const int mezzo = cornice.GetWidth() / 2;
        EXPECT_GT(cornice.GetRed(mezzo, 0), 150) << "framed in red";
        EXPECT_LT(cornice.GetGreen(mezzo, 0), 80);
        foto("cella_segnata");
        robot.press(WXK_TAB);
        EXPECT_FALSE(motivoDi(Prezzo).empty()) << "and when the cell was left";
        robot.moveTo(griglia(), {r.x + r.width / 4, r.y + r.height / 2});
        EXPECT_EQ(griglia().GetToolTipText().utf8_string(), motivoDi(Prezzo));
        entra(Prezzo);
        robot.pressTimes(6, WXK_BACK);
        EXPECT_EQ(motivoDi(Prezzo), "");
        EXPECT_EQ(codici(), "1 2");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(FiltriTest, TheCellBeingEditedSaysTheReasonAsItsTipToo) {
    prova([&] {
        scrivi(Prezzo, "1-");
        auto* cella = dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus());
        ASSERT_NE(cella, nullptr);
        EXPECT_EQ(cella->GetToolTipText().utf8_string(), motivoDi(Prezzo));
        robot.press(WXK_BACK);
        EXPECT_EQ(cella->GetToolTipText(), "");
    });
}

TEST_F(FiltriTest, AFilterTextThatTheRecordsetRefusesKeepsTheOldOne) {
    prova([&] {
        scrivi(Nome, "rossi");
        robot.type("*x");
        EXPECT_FALSE(motivoDi(Nome).empty()) << "a wildcard inside";
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'");
        EXPECT_EQ(codici(), "1 2 7");
        premiDrop();
        scegliModo(finestra().optUguale);
        EXPECT_TRUE(motivoDi(Nome).empty()) << "equal takes it as it stands";
        EXPECT_EQ(filtro(), "nome = 'rossi*x'");
        EXPECT_EQ(codici(), "");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(FiltriTest, HostileTextsInATextCellAreOnlyTextsToTheRealFilter) {
    prova([&] {
        premiDrop();
        scegliModo(finestra().optUguale);
        entra(Nome);
        for (const char* testo :
             {"' OR '1'='1", "'; DROP TABLE clienti;--", "') OR (1=1", "\\' OR 1=1"}) {
            robot.type(testo);
            EXPECT_EQ(cellaDi(Nome), testo);
            EXPECT_EQ(codici(), "") << testo << " → " << filtro();
            robot.press(WXK_ESCAPE);
        }
    });
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(tabella()->RecordCount(), 7) << "the table is as it was";
}

TEST_F(FiltriTest, HostileTextsInOtherCellsNeverReachTheFilter) {
    prova([&] {
        for (const int colonna : {Prezzo, Data, Codice}) {
            scrivi(colonna, "1 OR 1=1");
            EXPECT_FALSE(motivoDi(colonna).empty());
            EXPECT_EQ(filtro(), colonna == Data     ? ""
                                : colonna == Codice ? "codice=1 "
                                                    : "prezzo=1 ")
                << "the number that stood there before";
            robot.press(WXK_ESCAPE);
            EXPECT_TRUE(motivoDi(colonna).empty());
        }
        scrivi(Attivo, "1 OR 1=1");
        EXPECT_EQ(filtro(), "attivo=1") << "a Boolean takes any text for true";
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(FiltriTest, WithoutARecordsetTypingDoesNothing) {
    prova([&] {
        entra(Nome);
        finestra().DBRicerca.SetRecordset(nullptr);
        robot.type("x");
        robot.press(WXK_RETURN);
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(FiltriTest, RowsThatArriveLaterAreFilteredAndCountedToo) {
    constexpr int inSottofondo =
        adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;
    auto rs = clienti(400000, inSottofondo);
    aperta()
        .then("filtra",
              [&] {
                  entra(1);
                  robot.type("te 1");
              })
        .waitFor("tutte lette", [&] { return (rs->State() & adodb::adStateFetching) == 0; })
        .waitFor("e contate", [&] { return stato() == "Record selezionati 111111"; });
    chiude(script);
    cerca(rs);
}

} // namespace
} // namespace norvel::search_window
