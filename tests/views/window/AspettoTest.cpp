// The configuration window as it opens: caption, menu, pages, places, pictures.
#include "platform/runtime/Twips.h"
#include "tests/views/window/BancoConfigura.h"

#include <wx/button.h>
#include <wx/display.h>

namespace norvel::views {
namespace {

using AspettoTest = BancoConfigura;
using Testi = std::vector<std::string>;

TEST_F(AspettoTest, ItOpensOverTheSearchWithCaptionNameSizesAndMenu) {
    riga("Mia", true);
    riga("Altra", false);
    riga("Sua", false, "BIANCHI");
    provaConfigura([&] {
        EXPECT_EQ(configura().Finestra->GetTitle().utf8_string(),
                  "Configurazione ricerca   --> CLI");
        EXPECT_EQ(testoDi(configura().txtNome), "ROSSICLI");
        Testi dimensioni;
        for (unsigned i = 0; i < configura().CmbSize->GetCount(); ++i)
            dimensioni.push_back(configura().CmbSize->GetString(i).utf8_string());
        EXPECT_EQ(dimensioni, (Testi{"8", "10", "12", "14", "16", "18"}));
        EXPECT_EQ(voci(configura().Lista), (Testi{"Mia", "Altra"}));
        EXPECT_EQ(configura().MenuBar->Groups().size(), 2U);
        EXPECT_EQ(configura().MenuBar->SelectedKey(), "POSIZIONE");
        EXPECT_EQ(voci(configura().List1).size(), 9U);
        EXPECT_EQ(pagineMostrate(), 1);
        EXPECT_FALSE(configura().Timer1->IsRunning());
    });
}

TEST_F(AspettoTest, EachEntryShowsItsPageAndOnlyThat) {
    provaConfigura([&] {
        int pagina = 0;
        for (const char* chiave : {"POSIZIONE", "VISUALIZZA", "STILE", "SALVA"}) {
            vai(chiave);
            EXPECT_EQ(pagineMostrate(), 1) << chiave;
            EXPECT_TRUE(configura().FrmDimensioni.at(std::size_t(pagina))->IsShown()) << chiave;
            EXPECT_EQ(configura().MenuBar->SelectedKey(), chiave);
            tests::screenshot(*configura().Finestra, std::string("configura-") + chiave);
            ++pagina;
        }
    });
}

TEST_F(AspettoTest, AGroupHeadingOrTheNoteShowsPageZero) {
    provaConfigura([&] {
        for (const char* chiave : {"MULTI1", "NEWFOLDER", "MULTI2"}) {
            vai("STILE");
            EXPECT_EQ(configura().PaginaMostrata(), 2);
            vai(chiave);
            EXPECT_EQ(configura().PaginaMostrata(), 0) << chiave;
            EXPECT_TRUE(configura().FrmDimensioni[0]->IsShown());
        }
    });
}

TEST_F(AspettoTest, ThePageOfViewsProposesANameOnlyForAnEmptyBox) {
    provaConfigura([&] {
        vai("SALVA");
        EXPECT_EQ(testoDi(configura().txtNome), "ROSSICLI") << "a name that is there stays";
        scriviNome("");
        vai("SALVA");
        EXPECT_EQ(testoDi(configura().txtNome), "ROSSIPers");
        scriviNome("Mia");
        vai("STILE");
        vai("SALVA");
        EXPECT_EQ(testoDi(configura().txtNome), "Mia");
    });
}

TEST_F(AspettoTest, TheCaptionEndsWithTheModulesCodeWhateverItIs) {
    operatore("ROSSI", "Àrt è & co");
    provaConfigura([&] {
        const std::string titolo = configura().Finestra->GetTitle().utf8_string();
        EXPECT_EQ(titolo.substr(titolo.find("   --> ")), "   --> Àrt è & co");
    });
}

TEST_F(AspettoTest, ThePartsStandByTheConstantsAtEverySize) {
    provaConfigura([&] {
        const auto guarda = [&] {
            const double s = anteprima().Scale();
            const wxRect menu = configura().MenuBar->GetRect();
            const wxSize area = configura().Finestra->GetClientSize();
            EXPECT_EQ(menu.y, 0);
            EXPECT_EQ(menu.height, area.y);
            for (const wxWindow* pagina : configura().FrmDimensioni) {
                EXPECT_NEAR(pagina->GetRect().x, menu.width + twipsToPixels(75, s), 1);
                EXPECT_EQ(pagina->GetRect().y, twipsToPixels(2500, s));
            }
            EXPECT_NEAR(anteprima().GetRect().width, area.x - menu.width - twipsToPixels(100, s),
                        1);
            EXPECT_LE(anteprima().GetRect().GetBottom(), twipsToPixels(2500, s));
        };
        const wxRect schermo = wxDisplay(configura().Finestra).GetGeometry();
        const wxSize misura = configura().Finestra->GetSize();
        EXPECT_NEAR(configura().Finestra->GetPosition().x, (schermo.width - misura.x) / 2.0, 40);
        guarda();
        configura().Finestra->SetSize(1200, 900);
        robot.pump();
        guarda();
        configura().Finestra->SetSize(500, 300);
        robot.pump();
        guarda();
    });
}

TEST_F(AspettoTest, EverythingOnThePagesFitsAtTheSizeItOpensWith) {
    provaConfigura([&] {
        for (const wxWindow* pagina : configura().FrmDimensioni) {
            const wxSize serve = pagina->GetBestVirtualSize();
            EXPECT_LE(serve.x, pagina->GetSize().x);
            EXPECT_LE(serve.y, pagina->GetSize().y);
        }
    });
}

TEST_F(AspettoTest, TheKeyboardReachesMenuPageAndGrid) {
    provaConfigura([&] {
        EXPECT_TRUE(configura().MenuBar->HasFocus()) << "where an operator begins";
        EXPECT_EQ(configura().MenuBar->FocusedKey(), "POSIZIONE");
        robot.pressTimes(3, WXK_DOWN);
        robot.press(WXK_RETURN);
        EXPECT_EQ(configura().PaginaMostrata(), 3);
        EXPECT_TRUE(configura().MenuBar->HasFocus());
        robot.press(WXK_TAB);
        EXPECT_TRUE(configura().txtNome->HasFocus());
        robot.press(WXK_TAB, wxMOD_SHIFT);
        EXPECT_TRUE(configura().MenuBar->HasFocus());
        robot.press(WXK_TAB, wxMOD_SHIFT);
        EXPECT_TRUE(anteprima().HasFocus());
    });
}

TEST_F(AspettoTest, TabPassesByAPageOfTextsAlone) {
    provaConfigura([&] {
        robot.press(WXK_TAB);
        EXPECT_TRUE(configura().CmdChiudi->HasFocus());
    });
}

TEST_F(AspettoTest, ChiudiInTheMenuTheButtonAndTheCloseBoxUnloadAndSaveNothing) {
    apriViste();
    pronta();
    for (const char* modo : {"CHIUDI", "pulsante", "casella"}) {
        apreConfigura();
        script.then(modo, [&, modo] {
            split().AlternatingRowStyle = true;
            const std::string come = modo;
            if (come == "CHIUDI")
                vai("CHIUDI");
            else if (come == "pulsante")
                premi(configura().CmdChiudi);
            else
                configura().Finestra->Close();
        });
        script.waitFor("è tornata la ricerca",
                       [] { return !frmConfiguraReale() && finestra().Finestra->IsActive(); });
    }
    intero("dopo", [&] {
        EXPECT_FALSE(griglia().SplitAt(0).AlternatingRowStyle);
        EXPECT_TRUE(boxes.shown().empty());
        EXPECT_EQ(righeViste(), "");
    });
    chiude(script);
    cerca(tabella());
}

TEST_F(AspettoTest, WithoutViewsFromTheHostTheMenuIsThereAndTheBoxTellsOnce) {
    ricerca.SetRecordsetOperatori(apriTabella("SELECT * FROM operatori"));
    variabiliGlobali().gRecordsetViste = nullptr;
    aperta(); // and never ready: the window's own start needs the views, too
    apreConfigura();
    intero("prova", [&] {
        EXPECT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.shown()[0].titolo, "TAMBORIN");
        EXPECT_EQ(configura().MenuBar->Groups().size(), 2U);
    });
    chiudeConfigura();
    chiude(script);

    cerca(tabella());
}

} // namespace
} // namespace norvel::views
