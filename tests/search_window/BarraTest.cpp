// The toolbar's commands on the real window.
#include "search_window/Pulsanti.h"
#include "search_window/Scorciatoie.h"
#include "tests/search_window/BancoViste.h"

#include <wx/textctrl.h>

namespace norvel::search_window {
namespace {

class BarraTest : public BancoViste {
  protected:
    // A table whose connection says what a host's would say.
    static adodb::RecordsetRef clientiDi(const std::string& provider, int n = 3) {
        auto rs = adodb::makeClientRecordset();
        rs->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                     std::to_string(n) + ") SELECT i AS codice, 'Cliente ' || i AS nome FROM n" +
                     (n == 0 ? " WHERE 0" : ""),
                 "Provider=SQLite;Data Source=:memory:;Extended Properties='" + provider + "'");
        return rs;
    }
    // Over these rows, by an operator who has the right to views.
    void provaSu(adodb::RecordsetRef rs, const std::function<void()>& passo) {
        ricerca.SetRecordsetOperatori(tabella("SELECT * FROM operatori"));
        ricerca.SetRecordsetViste(tabella("SELECT * FROM ricerchepers"));
        prova(passo, std::move(rs));
    }
};

// Counts how often the recordset ran its query again.
struct Riletture : adodb::RecordsetEvents {
    void WillChangeRecordset(adodb::EventReasonEnum motivo, adodb::EventStatusEnum&,
                             adodb::Recordset&) override {
        volte += motivo == adodb::adRsnRequery ? 1 : 0;
    }
    int volte = 0;
};

TEST_F(BarraTest, AvantiOnTheLastRecordGoesToEofAndASecondOneBackToIt) {
    apriConViste([&] {
        clicBarra("ultimo");
        EXPECT_EQ(righe().AbsolutePosition(), 7);
        EXPECT_EQ(stato(), "Record 7 di 7");
        clicBarra("avanti");
        EXPECT_TRUE(righe().EOF_());
        EXPECT_TRUE(barra("avanti").Enabled) << "it bounces back";
        clicBarra("avanti");
        EXPECT_EQ(stato(), "Record 7 di 7");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BarraTest, IndietroOnTheFirstRecordGoesToBofAndASecondOneBackToIt) {
    apriConViste([&] {
        clicBarra("avanti");
        clicBarra("primo");
        EXPECT_EQ(stato(), "Record 1 di 7");
        clicBarra("indietro");
        EXPECT_TRUE(righe().BOF());
        clicBarra("indietro");
        EXPECT_EQ(stato(), "Record 1 di 7");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BarraTest, PrimoAndUltimoOnAnEmptyResultDoNothingAndShowNoMessage) {
    provaSu(clientiDi("", 0), [&] {
        ASSERT_TRUE(barra("ultimo").Enabled);
        for (const char* chiave : {"primo", "ultimo", "indietro", "avanti"})
            clicBarra(chiave);
        EXPECT_TRUE(righe().BOF() && righe().EOF_());
        EXPECT_EQ(stato(), "Totale record 0");
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BarraTest, AggiornaOnAnAccessConnectionDoesNothing) {
    Riletture riletture;
    const auto rs = clientiDi("Provider=Microsoft.Jet.OLEDB.4.0");
    rs->Subscribe(&riletture);
    provaSu(rs, [&] {
        clicBarra("avanti");
        clicBarra("Aggiorna");
        EXPECT_EQ(stato(), "Record 2 di 3");
    });
    EXPECT_EQ(riletture.volte, 0);
    rs->Unsubscribe(&riletture);
}

TEST_F(BarraTest, AggiornaOnAMySqlConnectionDoesNothing) {
    Riletture riletture;
    const auto rs = clientiDi("Driver={MySQL ODBC 5.1 Driver}");
    rs->Subscribe(&riletture);
    provaSu(rs, [&] { clicBarra("Aggiorna"); });
    EXPECT_EQ(riletture.volte, 0);
    rs->Unsubscribe(&riletture);
}

TEST_F(BarraTest, AggiornaOnSqlServerReadsTheRowsAgainAndTheWindowGoesOn) {
    Riletture riletture;
    const auto rs = clientiDi("Provider=SQLOLEDB.1", 120);
    rs->Subscribe(&riletture);
    provaSu(rs, [&] {
        clicBarra("Aggiorna");
        EXPECT_TRUE(
            robot.waitUntil([&] { return riletture.volte == 1 && righe().RecordCount() == 120; }));
        clicBarra("ultimo");
        EXPECT_EQ(stato(), "Record 120 di 120");
    });
    EXPECT_EQ(riletture.volte, 1);
    rs->Unsubscribe(&riletture);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BarraTest, ApriInSingleModeDoesNothingWhateverTheCaseOfItsKey) {
    apriConViste([&] {
        clicBarra("Apri");
        finestra().BarraBase->Press("APRI");
        EXPECT_TRUE(finestra().Finestra->IsShown());
    });
    EXPECT_EQ(ricerca.Risposta(), "");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BarraTest, UpperCaseApriHandsTheSelectedRowsBackAsApriDoes) {
    ricerca.SetSelezioneMultipla(true);
    pronta().then("sceglie", [&] {
        robot.click(griglia(), cella(1), wxMOD_CONTROL);
        finestra().BarraBase->Press("APRI");
    });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "2|");
}

TEST_F(BarraTest, ChiudiLeavesAnEmptyAnswer) {
    variabiliGlobali().gRisposta = "prima";
    pronta().then("Chiudi", [&] { clicBarra("Chiudi"); });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(BarraTest, AnErrorIsToldAndTheWindowAndTheRecordStay) {
    const auto rs = tabella();
    pronta();
    intero("chiuso da altri", [&] {
        clicBarra("avanti");
        rs->Close();
        clicBarra("primo");
        EXPECT_TRUE(finestra().Finestra->IsShown());
    });
    chiude(script);
    cerca(rs);
    ASSERT_EQ(boxes.shown().size(), 1U);
    const Messaggio& box = boxes.shown().front();
    EXPECT_TRUE(box.testo.starts_with(
        "Si è verificato un errore nel modulo DllRicercaNorvel.Toolbar1\r3704 - "))
        << box.testo;
    EXPECT_EQ(box.icona, BoxIcon::Critical);
    EXPECT_EQ(box.titolo, titoloPredefinito);
}

TEST_F(BarraTest, TagliaIsThereAndDoesNothing) {
    apriConViste([&] {
        EXPECT_TRUE(barra("Taglia").Enabled);
        clicBarra("avanti");
        clicBarra("Taglia");
        EXPECT_EQ(stato(), "Record 2 di 7");
        EXPECT_TRUE(finestra().Finestra->IsShown());
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BarraTest, FacilitataPaintsEveryOtherRowWhileItIsPressed) {
    apriConViste([&] {
        clicBarra("Facilitata");
        EXPECT_TRUE(griglia().SplitAt(0).AlternatingRowStyle);
        foto("facilitata");
        clicBarra("Facilitata");
        EXPECT_FALSE(griglia().SplitAt(0).AlternatingRowStyle);
    });
}

TEST_F(BarraTest, FacilitataIsPressedWhereALayoutAlternatesTheRows) {
    grid::Layout righeAlterne;
    righeAlterne.Split.AlternatingRowStyle = true;
    grid::saveLayout((cartella / "ROSSIAlterne.grx").string(), "ROSSIAlterne", righeAlterne);
    salva("parametri/CLI.grx", "CLI", "Di tutti");
    vista("Alterne", true);
    apriConViste([&] {
        EXPECT_EQ(barra("Facilitata").Value, 1);
        clicBarra("Facilitata");
        EXPECT_FALSE(griglia().SplitAt(0).AlternatingRowStyle) << "one click switches it off";
        clicBarra("Facilitata");
        scegliVista(1); // «Vista predefinita»
        EXPECT_EQ(titolo(), "Di tutti");
        EXPECT_EQ(barra("Facilitata").Value, 0);
        scegliVista(0);
        EXPECT_EQ(barra("Facilitata").Value, 1);
    });
}

// --- the keyboard ---

TEST_F(BarraTest, TheKeysMoveAmongTheRecords) {
    apriConViste([&] {
        robot.press(WXK_END, wxMOD_ALT);
        EXPECT_EQ(stato(), "Record 7 di 7");
        robot.press(WXK_LEFT, wxMOD_ALT);
        EXPECT_EQ(stato(), "Record 6 di 7");
        robot.press(WXK_HOME, wxMOD_ALT);
        EXPECT_EQ(stato(), "Record 1 di 7");
        robot.press(WXK_RIGHT, wxMOD_ALT);
        EXPECT_EQ(stato(), "Record 2 di 7");
    });
}

TEST_F(BarraTest, TheKeysWorkInAFilterCellTooAndLeaveItItsText) {
    apriConViste([&] {
        scrivi(Nome, "ros");
        robot.press('L', wxMOD_CONTROL);
        EXPECT_TRUE(griglia().SplitAt(0).AlternatingRowStyle);
        EXPECT_EQ(barra("Facilitata").Value, 1);
        robot.press('F', wxMOD_CONTROL);
        EXPECT_TRUE(finestra().frameRicercaAvanzata->IsShown());
        EXPECT_EQ(griglia().FilterColumn(), Nome);
        EXPECT_EQ(cellaDi(Nome), "ros");
    });
}

TEST_F(BarraTest, ControlOOpensTheMenuOfViews) {
    salva("ROSSIMia.grx", "ROSSIMia", "La mia città");
    vista("Mia", false);
    apriConViste([&] {
        tests::Script menu;
        menu.then("apre il menu", [&] { robot.press('O', wxMOD_CONTROL); });
        menu.then("la prima voce", [&] { robot.press(WXK_DOWN); });
        menu.then("sceglie", [&] { robot.press(WXK_RETURN); });
        menu.run([&] { EXPECT_TRUE(robot.waitUntil([&] { return titolo() == "La mia città"; })); });
    });
}

// Opens a menu from a filter cell, leaves it with Esc and types on.
class MenuDallaCella : public BarraTest {
  protected:
    void siScriveAncora(const std::function<void()>& apre) {
        scrivi(Nome, "e");
        bool lasciato = false;
        tests::Script menu;
        menu.then("apre il menu", apre);
        menu.pause(300);
        menu.then("lo lascia", [&] {
            foto("menu-dalla-cella");
            robot.press(WXK_ESCAPE);
            lasciato = true;
        });
        menu.run([&] { EXPECT_TRUE(robot.waitUntil([&] { return lasciato; })); });
        robot.type("r");
        EXPECT_TRUE(robot.waitUntil([&] { return cellaDi(Nome) == "er"; })) << cellaDi(Nome);
        EXPECT_EQ(griglia().FilterColumn(), Nome);
    }
};

TEST_F(MenuDallaCella, TheMenuOfViewsByControlO) {
    apriConViste([&] { siScriveAncora([&] { robot.press('O', wxMOD_CONTROL); }); });
}

TEST_F(MenuDallaCella, TheMenuOfViewsByTheMouse) {
    apriConViste([&] {
        siScriveAncora([&] {
            const wxRect apri = finestra().BarraBase->ButtonRect("Apri");
            robot.click(*finestra().BarraBase, apri.GetRightTop() + wxPoint(-5, 14));
        });
    });
}

TEST_F(MenuDallaCella, TheOverflowMenuByTheMouse) {
    apriConViste([&] {
        finestra().Finestra->SetClientSize(330, 300);
        ASSERT_TRUE(
            robot.waitUntil([&] { return !finestra().BarraBase->OverflowRect().IsEmpty(); }));
        siScriveAncora([&] {
            const wxRect freccia = finestra().BarraBase->OverflowRect();
            robot.click(*finestra().BarraBase, freccia.GetPosition() + wxPoint(10, 14));
        });
    });
}

// The view hides the column in whose cell the operator was typing.
TEST_F(BarraTest, AViewChosenWhileAFilterIsTypedLeavesTheKeyboardInTheGrid) {
    salva("ROSSIMia.grx", "ROSSIMia", "La mia città");
    vista("Mia", false);
    apriConViste([&] {
        scrivi(Nome, "e");
        tests::Script menu;
        menu.then("apre il menu", [&] { robot.press('O', wxMOD_CONTROL); });
        menu.then("la prima voce", [&] { robot.press(WXK_DOWN); });
        menu.then("sceglie", [&] { robot.press(WXK_RETURN); });
        menu.run([&] { EXPECT_TRUE(robot.waitUntil([&] { return titolo() == "La mia città"; })); });
        EXPECT_EQ(griglia().FilterColumn(), -1);
        EXPECT_TRUE(robot.waitUntil([&] { return griglia().HasFocus(); }));
    });
}

TEST_F(BarraTest, ControlEnterHandsTheSelectedRowsBack) {
    ricerca.SetSelezioneMultipla(true);
    pronta().then("sceglie", [&] {
        robot.click(griglia(), cella(1), wxMOD_CONTROL);
        robot.press(WXK_RETURN, wxMOD_CONTROL);
    });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "2|");
}

TEST_F(BarraTest, ControlWClosesWithAnEmptyAnswer) {
    variabiliGlobali().gRisposta = "prima";
    pronta().then("Ctrl+W", [&] { robot.press('W', wxMOD_CONTROL); });
    cerca(tabella());
    EXPECT_EQ(ricerca.Risposta(), "");
}

TEST_F(BarraTest, AHiddenOrDisabledButtonsKeyDoesNothing) {
    ricerca.SetUser("BIANCHI");
    apriConViste([&] {
        robot.press(WXK_END, wxMOD_ALT); // "ultimo" is not for this operator
        EXPECT_EQ(righe().AbsolutePosition(), 1);
        finestra().SetBarraBaseVisible(false);
        robot.press(WXK_RIGHT, wxMOD_ALT);
        EXPECT_EQ(righe().AbsolutePosition(), 1);
    });
}

TEST_F(BarraTest, TheTipTellsTheDesignedTextAndBelowItTheKey) {
    apriConViste([&] {
        robot.moveTo(*finestra().BarraBase, pulsante("primo"));
        EXPECT_EQ(finestra().BarraBase->GetToolTipText().utf8_string(),
                  "Vai al primo record\nAlt+Inizio");
        robot.moveTo(*finestra().BarraBase, pulsante("Apri"));
        EXPECT_EQ(finestra().BarraBase->GetToolTipText().utf8_string(),
                  "Selezione\nCtrl+Invio; menu: Ctrl+O");
        robot.moveTo(*finestra().BarraBase, pulsante("Taglia"));
        EXPECT_EQ(finestra().BarraBase->GetToolTipText(), "Taglia");
    });
}

} // namespace
} // namespace norvel::search_window
