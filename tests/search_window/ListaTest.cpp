// The value list under a filter cell, and the panel that says how values are compared.
#include "query/FiltroColonne.h"
#include "tests/search_window/BancoQuery.h"

#include <algorithm>

namespace norvel::search_window {
namespace {

using Voci = std::vector<std::string>;

class ListaTest : public BancoQuery {
  protected:
    static Voci conFisse(const Voci& valori) {
        Voci tutte = {"[Tutti]", "[Nulli]", "[Vuoti]", "[Non vuoti]"};
        tutte.insert(tutte.end(), valori.begin(), valori.end());
        return tutte;
    }
    // Opens a column's list and waits for its last row.
    void apriLista(int colonna) {
        premiPulsante(colonna);
        EXPECT_TRUE(lista().IsShown());
        EXPECT_TRUE(lista().HasFocus());
        EXPECT_EQ(finestra().colonnaFiltro, colonna);
    }
};

// --- what it lists ---

TEST_F(ListaTest, TheButtonOpensTheFourFixedEntriesAndTheColumnsValuesInOrder) {
    prova([&] {
        apriLista(Nome);
        EXPECT_EQ(voci(), conFisse({"Bianchi", "Neri", "Rossi", "Rossi Anna", "Rossini Ugo",
                                    "Verdi", "d'Amico Pia"}));
        const wxRect cella = griglia().FilterCellRect(Nome);
        const wxPoint sotto = griglia().ClientToScreen(cella.GetBottomLeft());
        EXPECT_EQ(lista().GetScreenPosition(), sotto + wxPoint(0, 1)) << "right under its cell";
        EXPECT_GE(lista().GetSize().x, cella.width);
        foto("lista_valori");
        robot.press(WXK_ESCAPE);
        EXPECT_FALSE(lista().IsShown());
        EXPECT_TRUE(griglia().HasFocus());
        EXPECT_EQ(filtro(), "");
    });
}

TEST_F(ListaTest, ABooleanColumnListsMinusOneAndZeroBesideTheFixedEntries) {
    prova([&] {
        apriLista(Attivo);
        Voci valori = voci();
        ASSERT_EQ(valori.size(), 6U);
        std::sort(valori.begin() + 4, valori.end());
        EXPECT_EQ(valori, conFisse({"-1", "0"}));
    });
}

TEST_F(ListaTest, BlankValuesNeverReachTheList) {
    prova([&] {
        apriLista(Note);
        EXPECT_EQ(voci(), conFisse({"x", "y"}));
    });
}

TEST_F(ListaTest, OnlyValuesOfRowsThatTheFilterLetsThroughAreListed) {
    prova([&] {
        scrivi(Citta, "rom");
        apriLista(Nome);
        EXPECT_EQ(voci(), conFisse({"Rossi Anna", "Rossini Ugo"}));
    });
}

TEST_F(ListaTest, ANullTestInTheFilterIsWidenedWithTheOpenColumn) {
    esegui("INSERT INTO clienti (codice, nome, citta, note) VALUES (8, '', 'Bari', 'b')");
    esegui("INSERT INTO clienti (codice, nome, citta, note) VALUES (9, 'Gallo', NULL, 'g')");
    prova([&] {
        scrivi(Citta, "[Nulli]");
        ASSERT_EQ(filtro(), "citta=NULL");
        apriLista(Nome);
        EXPECT_EQ(voci(), conFisse({"Bianchi", "Gallo"}));
        robot.press(WXK_ESCAPE);
        apriLista(Note);
        EXPECT_EQ(voci(), conFisse({"g"})) << "an empty note has no entry of its own";
    });
}

TEST_F(ListaTest, AQueryThatEndsInASemicolonIsWrappedAllTheSame) {
    prova(
        [&] {
            apriLista(1);
            EXPECT_EQ(voci(), conFisse({"Bianchi", "Neri", "Rossi", "Rossi Anna", "Rossini Ugo",
                                        "Verdi", "d'Amico Pia"}));
        },
        tabella("SELECT codice, nome\r\nFROM clienti ORDER BY nome;"));
}

TEST_F(ListaTest, TheHintAtTheEndOfTheRunningCommandIsCutOff) {
    auto rs = tabella();
    const auto comando = std::dynamic_pointer_cast<adodb::Command>(rs->ActiveCommand().object());
    ASSERT_NE(comando, nullptr);
    comando->SetCommandText("SELECT nome FROM clienti WHERE codice < 3 OPTION (FAST 100)");
    prova(
        [&] {
            apriLista(Nome);
            EXPECT_EQ(voci(), conFisse({"Rossi Anna", "Rossini Ugo"}));
        },
        rs);
}

TEST_F(ListaTest, WithoutAnActiveCommandTheHostsQueryBaseIsAsked) {
    auto rs = adodb::makeClientRecordset();
    rs->Fields().Append("codice", adodb::adInteger);
    rs->Fields().Append("nome", adodb::adVarWChar, 30);
    rs->Open();
    rs->SetActiveConnection(Variant(std::static_pointer_cast<Object>(connessione)));
    ASSERT_FALSE(rs->ActiveCommand().isObject() && rs->ActiveCommand().object());
    ricerca.SetQueryBase("SELECT nome FROM clienti WHERE codice > 5;");
    prova(
        [&] {
            apriLista(1);
            EXPECT_EQ(voci(), conFisse({"Neri", "Rossi"}));
        },
        rs);
}

TEST_F(ListaTest, AQueryThatIsRefusedLeavesTheFixedEntriesAndShowsNothing) {
    prova([&] {
        apriLista(Ragione);
        EXPECT_EQ(voci(), conFisse({})) << "the field's blank breaks the query";
        clicVoce("[Nulli]");
        EXPECT_EQ(cellaDi(Ragione), "[Nulli]");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(ListaTest, RowsWithoutAConnectionLeaveTheFixedEntries) {
    auto rs = adodb::makeClientRecordset();
    rs->Fields().Append("codice", adodb::adInteger);
    rs->Fields().Append("nome", adodb::adVarWChar, 30);
    rs->Open();
    rs->AddNew({Variant("codice"), Variant("nome")}, {Variant(1), Variant("uno")});
    prova(
        [&] {
            apriLista(1);
            EXPECT_EQ(voci(), conFisse({}));
        },
        rs);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(ListaTest, OpeningAnotherColumnsListReplacesTheFirst) {
    prova([&] {
        apriLista(Nome);
        apriLista(Note);
        EXPECT_EQ(voci(), conFisse({"x", "y"}));
        premiPulsante(Note);
        EXPECT_FALSE(lista().IsShown()) << "its own button closes it";
    });
}

TEST_F(ListaTest, AnotherControlThatTakesTheFocusHidesTheList) {
    prova([&] {
        apriLista(Nome);
        robot.click(griglia(), cella(2, Ragione));
        EXPECT_TRUE(robot.waitUntil([] { return !lista().IsShown(); }));
        EXPECT_EQ(righe().AbsolutePosition(), 3) << "the click is the row's";
        EXPECT_EQ(filtro(), "");
    });
}

TEST_F(ListaTest, ClosingTheWindowWithTheListOpenEndsBoth) {
    pronta().then("apre la lista e chiude", [&] {
        apriLista(Nome);
        robot.press(WXK_F4, wxMOD_ALT);
    });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "");
}

// --- single choice ---

TEST_F(ListaTest, ASingleChoiceFillsTheCellClosesTheListAndFilters) {
    prova([&] {
        apriLista(Citta);
        clicVoce("Torino");
        EXPECT_EQ(cellaDi(Citta), "Torino");
        EXPECT_FALSE(lista().IsShown());
        EXPECT_EQ(filtro(), "citta LIKE '*Torino*'");
        EXPECT_EQ(codici(), "7");
        EXPECT_EQ(stato(), "Record selezionati 1");
        EXPECT_TRUE(griglia().HasFocus());
    });
}

TEST_F(ListaTest, ASingleChoiceFollowsTheComparisonMode) {
    prova([&] {
        premiDrop();
        scegliModo(finestra().optUguale);
        premiDrop();
        ASSERT_FALSE(finestra().frameRicercaAvanzata->IsShown());
        apriLista(Citta);
        clicVoce("Roma");
        EXPECT_EQ(filtro(), "citta LIKE '*Roma*'") << "a hidden panel means contains";
        EXPECT_EQ(codici(), "1 2");
    });
}

TEST_F(ListaTest, TuttiRemovesTheColumnsFilterAndClosesTheList) {
    prova([&] {
        scrivi(Nome, "rossi");
        scrivi(Citta, "torino");
        ASSERT_EQ(codici(), "7");
        apriLista(Citta);
        clicVoce("[Tutti]");
        EXPECT_EQ(cellaDi(Citta), "");
        EXPECT_FALSE(lista().IsShown());
        EXPECT_EQ(codici(), "1 2 7");
    });
}

TEST_F(ListaTest, TheFixedEntriesAreFilters) {
    prova([&] {
        for (const auto& [scelta, quali] : std::vector<std::pair<const char*, const char*>>{
                 {"[Nulli]", "5"}, {"[Vuoti]", "6"}, {"[Non vuoti]", "1 2 3 4 7"}}) {
            apriLista(Citta);
            clicVoce(scelta);
            EXPECT_EQ(codici(), quali) << scelta;
        }
    });
}

TEST_F(ListaTest, PickedNumbersAndDatesFilterAsTheyRead) {
    prova([&] {
        apriLista(Prezzo);
        clicVoce("-7,25");
        EXPECT_EQ(filtro(), "prezzo=-7.25");
        EXPECT_EQ(codici(), "5");
        apriLista(Prezzo);
        clicVoce("[Tutti]");
        apriLista(Data);
        clicVoce("31/12/2012");
        EXPECT_EQ(filtro(), "data=#31-12-2012#");
        EXPECT_EQ(codici(), "5 6");
    });
}

TEST_F(ListaTest, FromTheCellTheKeyboardOpensTheListChoosesByLettersAndComesBack) {
    prova([&] {
        entra(Nome);
        robot.press(WXK_F4);
        ASSERT_TRUE(lista().IsShown());
        robot.type("rossin");
        EXPECT_EQ(lista().Text(), "Rossini Ugo");
        robot.press(WXK_RETURN);
        EXPECT_EQ(cellaDi(Nome), "Rossini Ugo");
        EXPECT_EQ(codici(), "2");
        EXPECT_EQ(griglia().focusArea(), grid::Area::FilterCell);
        robot.press(WXK_DOWN, wxMOD_ALT);
        ASSERT_TRUE(lista().IsShown());
        robot.press(WXK_HOME);
        robot.press(WXK_RETURN);
        EXPECT_EQ(cellaDi(Nome), "");
        EXPECT_EQ(codici(), "1 2 3 4 5 6 7");
    });
}

// --- several choices ---

TEST_F(ListaTest, WithDropPressedTwoChoicesStandInTheCellAndTheListStaysOpen) {
    prova([&] {
        premiDrop();
        apriLista(Citta);
        clicVoce("Milano");
        EXPECT_EQ(cellaDi(Citta), "Milano");
        clicVoce("Torino");
        EXPECT_EQ(cellaDi(Citta), "Milano ;§; Torino");
        EXPECT_TRUE(lista().IsShown());
        EXPECT_EQ(filtro(), "(citta LIKE '*Milano*' OR citta LIKE '*Torino*')");
        EXPECT_EQ(codici(), "3 4 7");
        EXPECT_EQ(stato(), "Record selezionati 3");
        foto("scelta_multipla");
        clicVoce("Milano");
        EXPECT_EQ(cellaDi(Citta), "Torino") << "a second click takes it out";
        EXPECT_EQ(codici(), "7");
    });
}

TEST_F(ListaTest, WithDropPressedTuttiRemovesTheFilterAndClosesTheList) {
    prova([&] {
        premiDrop();
        apriLista(Citta);
        clicVoce("Milano");
        clicVoce("Torino");
        clicVoce("[Tutti]");
        EXPECT_EQ(cellaDi(Citta), "");
        EXPECT_EQ(filtro(), "");
        EXPECT_FALSE(lista().IsShown());
    });
}

TEST_F(ListaTest, SeveralValuesDifferentMeansNoneOfThem) {
    prova([&] {
        premiDrop();
        scegliModo(finestra().optDiverso);
        apriLista(Nome);
        clicVoce("Rossi");
        clicVoce("Verdi");
        EXPECT_EQ(filtro(), "nome <> 'Rossi' AND nome <> 'Verdi'");
        EXPECT_EQ(codici(), "1 2 3 5 6");
    });
}

TEST_F(ListaTest, SeveralValuesHoldBesideOtherColumnsAndAfterThePanelIsHidden) {
    prova([&] {
        premiDrop();
        scrivi(Annullato, "no");
        apriLista(Citta);
        clicVoce("Milano");
        clicVoce("Torino");
        EXPECT_EQ(codici(), "3 7");
        robot.press(WXK_ESCAPE);
        premiDrop();
        EXPECT_EQ(cellaDi(Citta), "Milano ;§; Torino");
        EXPECT_EQ(codici(), "3 7") << "the values stay several";
        apriLista(Nome);
        EXPECT_EQ(voci(), conFisse({"Rossi", "d'Amico Pia"})) << "inside SQL too";
    });
}

TEST_F(ListaTest, WhatTheCellHoldsIsTickedWhenTheListOpensAgain) {
    prova([&] {
        premiDrop();
        apriLista(Citta);
        clicVoce("Milano");
        clicVoce("Torino");
        robot.press(WXK_ESCAPE);
        apriLista(Citta);
        EXPECT_TRUE(lista().Selected(static_cast<std::size_t>(voce("Torino"))));
        clicVoce("Torino");
        EXPECT_EQ(cellaDi(Citta), "Milano");
    });
}

TEST_F(ListaTest, TheKeyboardTicksBySpaceAndEnterCloses) {
    prova([&] {
        premiDrop();
        entra(Citta);
        robot.press(WXK_F4);
        robot.type("mil");
        EXPECT_EQ(lista().Text(), "MILANO MARITTIMA") << "the database's order, capitals first";
        robot.pumpFor(1100); // the end of what is typed
        robot.press(WXK_SPACE);
        robot.press(WXK_DOWN);
        robot.press(WXK_SPACE);
        EXPECT_EQ(cellaDi(Citta), "MILANO MARITTIMA ;§; Milano");
        robot.press(WXK_RETURN);
        EXPECT_FALSE(lista().IsShown());
        EXPECT_EQ(cellaDi(Citta), "MILANO MARITTIMA ;§; Milano");
        EXPECT_EQ(codici(), "3 4");
    });
}

TEST_F(ListaTest, TooManyAlternativesAreSaidOnceAndTheFilterInForceStays) {
    prova([&] {
        scrivi(Nome, "rossi");
        ASSERT_EQ(codici(), "1 2 7");
        premiDrop();
        std::string molti = "v0";
        for (int i = 1; i <= 1000; ++i)
            molti += std::string(query::separatoreValori) + "v" + std::to_string(i);
        griglia().SetFilterText(Citta, molti);
        entra(Nome);
        robot.press(WXK_END);
        robot.type("n");
        robot.type("i");
        EXPECT_EQ(boxes.shown().size(), 1U) << "once";
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'");
        entra(Citta);
        robot.press(WXK_ESCAPE);
        EXPECT_EQ(codici(), "2");
    });
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_NE(boxes.lastText().find("1000"), std::string::npos) << boxes.lastText();
}

// --- the panel ---

TEST_F(ListaTest, DropShowsAndHidesThePanelAndTheGridKeepsItsPlace) {
    prova([&] {
        EXPECT_FALSE(finestra().frameRicercaAvanzata->IsShown());
        const wxRect prima = griglia().GetRect();
        premiDrop();
        EXPECT_TRUE(finestra().frameRicercaAvanzata->IsShown());
        EXPECT_TRUE(finestra().optContiene->GetValue());
        EXPECT_EQ(griglia().GetRect(), prima);
        EXPECT_FALSE(finestra().BarraBase->ButtonRect("Drop").IsEmpty()) << "still at hand";
        for (const wxRadioButton* opzione :
             {finestra().optContiene, finestra().optUguale, finestra().optDiverso}) {
            EXPECT_TRUE(opzione->IsShownOnScreen());
            EXPECT_GE(opzione->GetSize().y, opzione->GetTextExtent("Diverso").y);
        }
        foto("pannello");
        premiDrop();
        EXPECT_FALSE(finestra().frameRicercaAvanzata->IsShown());
    });
}

TEST_F(ListaTest, ClickingAnOptionFiltersAtOnceSettingItFromCodeDoesNot) {
    prova([&] {
        premiDrop();
        scrivi(Nome, "rossi");
        ASSERT_EQ(filtro(), "nome LIKE '*rossi*'");
        finestra().impostaOpzioni(2);
        robot.pump();
        EXPECT_TRUE(finestra().optUguale->GetValue());
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'") << "set from code";
        scegliModo(finestra().optDiverso);
        EXPECT_EQ(filtro(), "nome <> 'rossi'");
        EXPECT_EQ(codici(), "1 2 3 4 5 6");
        scegliModo(finestra().optUguale);
        EXPECT_EQ(codici(), "7");
        finestra().impostaOpzioni(0);
        EXPECT_FALSE(finestra().optContiene->GetValue() || finestra().optUguale->GetValue() ||
                     finestra().optDiverso->GetValue())
            << "none is on";
        entra(Nome);
        robot.press(WXK_RETURN);
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'") << "none means contains";
    });
}

TEST_F(ListaTest, HidingThePanelGoesBackToContains) {
    prova([&] {
        premiDrop();
        scrivi(Nome, "rossi");
        scegliModo(finestra().optDiverso);
        premiDrop();
        EXPECT_EQ(filtro(), "nome LIKE '*rossi*'");
        EXPECT_TRUE(finestra().optContiene->GetValue());
    });
}

// --- very many values ---

TEST_F(ListaTest, SevenHundredThousandValuesStreamInWhileTheOperatorGoesOn) {
    constexpr int quanti = 700000;
    constexpr int inSottofondo =
        adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;
    auto rs = clienti(quanti, inSottofondo);
    pronta()
        .waitFor(
            "tutte lette", [&] { return (rs->State() & adodb::adStateFetching) == 0; }, 30000)
        .then("apre la lista",
              [&] {
                  premiPulsante(1);
                  EXPECT_TRUE(lista().IsShown());
                  EXPECT_GE(lista().ListCount(), 4U) << "the fixed entries are there at once";
              })
        .waitFor(
            "i primi valori", [] { return lista().ListCount() > 100; }, 30000)
        .then("la tastiera risponde intanto",
              [&] {
                  robot.pressTimes(5, WXK_DOWN);
                  EXPECT_EQ(lista().Text(), "Cliente 1");
              })
        .waitFor(
            "tutti i valori", [] { return lista().ListCount() == quanti + 4U; }, 60000);
    intero("fino in fondo e scelta", [&] {
        robot.press(WXK_END);
        EXPECT_EQ(lista().Text(), "Cliente 99999");
        robot.type("cliente 700000");
        EXPECT_EQ(lista().Text(), "Cliente 700000");
        foto("lista_lunga");
        robot.press(WXK_RETURN);
        EXPECT_EQ(cellaDi(1), "Cliente 700000");
        EXPECT_EQ(stato(), "Record selezionati 1");
    });
    chiude(script);
    cerca(rs);
}

TEST_F(ListaTest, WhileAQueryTakesItsTimeTheListIsUsableAndClosingItEndsTheQuery) {
    constexpr int inSottofondo =
        adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;
    // Some milliseconds a row: all of them take longer than any test waits.
    auto rs = apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 20000), "
                   "m(j) AS (SELECT 1 UNION ALL SELECT j + 1 FROM m LIMIT 20000) "
                   "SELECT i AS codice, (SELECT count(*) FROM m WHERE j > i) AS nome FROM n",
                   inSottofondo);
    pronta();
    intero("apre, guarda, chiude", [&] {
        premiPulsante(1);
        ASSERT_TRUE(lista().IsShown());
        EXPECT_EQ(voci(), conFisse({})) << "there at once";
        robot.pumpFor(500);
        foto("lista_in_lettura");
        robot.pressTimes(2, WXK_DOWN);
        EXPECT_EQ(lista().Text(), "[Nulli]");
        robot.press(WXK_ESCAPE);
        EXPECT_FALSE(lista().IsShown());
        robot.pumpFor(300);
        EXPECT_EQ(voci(), conFisse({}));
        EXPECT_TRUE(rs->State() & adodb::adStateFetching) << "the host's rows still come";
        premiPulsante(1);
        clicVoce("[Nulli]");
        EXPECT_EQ(filtro(), "nome=NULL") << "a fixed entry needs no query";
    });
    chiude(script);
    cerca(rs);
    rs->Cancel();
    EXPECT_TRUE(boxes.shown().empty());
}

} // namespace
} // namespace norvel::search_window
