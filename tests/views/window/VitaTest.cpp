// The configuration window's life where something gives way under it.
#include "tests/views/window/BancoConfigura.h"

#include <wx/toplevel.h>

namespace norvel::views {
namespace {

using search_window::Citta;
using search_window::Codice;
using Testi = std::vector<std::string>;

class VitaConfiguraTest : public BancoConfigura {
  protected:
    void salva(std::string_view nome) {
        vai("SALVA");
        scriviNome(nome);
        boxes.answer(BoxAnswer::Yes);
        premi(configura().CmdSalva);
    }
};

TEST_F(VitaConfiguraTest, AWindowThatFailsWhileItLoadsLeavesNothingBehind) {
    apriViste();
    pronta();
    std::size_t prima = 0;
    script.then("il modulo non è più un testo", [&] {
        prima = wxTopLevelWindows.size();
        variabiliGlobali().gModulo = Variant(std::vector<Variant>{});
        robot.click(*finestra().BarraBase, pulsante("configura"));
    });
    intero("prova", [&] {
        EXPECT_EQ(frmConfiguraReale(), nullptr);
        EXPECT_EQ(wxTopLevelWindows.size(), prima);
        EXPECT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.lastText().rfind("Si è verificato un errore nel modulo "
                                         "DllRicercaNorvel.Toolbar1",
                                         0),
                  0U)
            << boxes.lastText();
        variabiliGlobali().gModulo = "CLI";
    });
    apreConfigura();
    chiudeConfigura();
    chiude(script);
    cerca(tabella());
}

TEST_F(VitaConfiguraTest, AHostThatClosesTheRowsLeavesThePreviewAndTheSavingAtWork) {
    provaConfigura(
        [&] {
            righe().Close();
            robot.pump();
            EXPECT_EQ(anteprima().CellText(6, Codice), "7") << "the preview has rows of its own";
            robot.click(anteprima(), {60, anteprima().CellRect(1, Codice).y + 4});
            robot.press(WXK_END, wxMOD_CONTROL);
            EXPECT_EQ(anteprima().CurrentRow(), 6);
            vai("VISUALIZZA");
            doppio(configura().List1, "citta");
            EXPECT_FALSE(anteprima().Columns().Item(Citta).Visible);
            tests::screenshot(*configura().Finestra, "configura-righe-chiuse");
            salva("Mia");
            EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
        },
        [&] { EXPECT_EQ(boxes.shown().size(), 2U) << boxes.lastText(); });
    EXPECT_TRUE(esiste("ROSSIMia.grx"));
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Mia");
}

TEST_F(VitaConfiguraTest, AHostThatClosesTheTableOfViewsIsToldOfAtEachCommand) {
    riga("Altra", false);
    provaConfigura([&] {
        variabiliGlobali().gRecordsetViste->Close();
        salva("Mia");
        EXPECT_EQ(boxes.shown().size(), 2U);
        EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
        EXPECT_TRUE(esiste("ROSSIMia.grx")) << "the file comes before the row";
        EXPECT_EQ(voci(configura().Lista), Testi{"Altra"});
        scegli(configura().Lista, "Altra");
        boxes.answer(BoxAnswer::Yes);
        premi(configura().CmdAttiva);
        EXPECT_EQ(boxes.shown().size(), 4U);
        EXPECT_EQ(testoDi(configura().txtNome), "Altra") << "what came before the failure stays";
        vai("STILE"); // the window works on
        premi(configura().ChkFacilitato);
        EXPECT_TRUE(split().AlternatingRowStyle);
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Altra");
}

} // namespace
} // namespace norvel::views
