// Saving, activating and deleting views on the real window, and the next opening of the search.
#include "tests/views/window/BancoConfigura.h"

namespace norvel::views {
namespace {

using search_window::Citta;
using search_window::Nome;
using Testi = std::vector<std::string>;

class VisteConfiguraTest : public BancoConfigura {
  protected:
    // The fixed texts of the last boxes.
    std::string ultimo() const { return boxes.lastText(); }
    void si(int volte = 1) {
        while (volte-- > 0)
            boxes.answer(BoxAnswer::Yes);
    }
    // «Salvataggio vista», this name, «Salva vista», Yes.
    void salva(std::string_view nome, bool preferita = false) {
        vai("SALVA");
        scriviNome(nome);
        if (configura().ChkPredefinito->GetValue() != preferita) premi(configura().ChkPredefinito);
        si();
        premi(configura().CmdSalva);
    }
    void doppioSu(wxStaticText* etichetta) {
        const wxPoint dentro = etichetta->GetPosition() + wxPoint(8, 6);
        robot.doubleClick(*etichetta->GetParent(), dentro);
    }
    bool erroreDetto() const {
        return ultimo().rfind("Errore nel modulo di ricerca, rivolgersi all'assistenza", 0) == 0;
    }
};

TEST_F(VisteConfiguraTest, ASavedPreferredViewIsOnShowAtTheNextOpeningNotAtThisOne) {
    provaConfigura(
        [&] {
            vai("VISUALIZZA");
            doppio(configura().List1, "nome");
            vai("STILE");
            premi(configura().ChkFacilitato);
            vai("SALVA");
            digitaNome("Mia");
            salva("Mia", true);
            EXPECT_EQ(ultimo(), "Salvataggio Completato");
            EXPECT_EQ(voci(configura().Lista), Testi{"Mia"});
            tests::screenshot(*configura().Finestra, "configura-salvata");
        },
        [&] {
            EXPECT_TRUE(griglia().Columns().Item(Nome).Visible);
            EXPECT_FALSE(griglia().SplitAt(0).AlternatingRowStyle);
            EXPECT_EQ(finestra().BarraBase->Item("Apri").ButtonMenus.size(), 1U)
                << "the menu of views is made when the search opens";
        });
    EXPECT_TRUE(esiste("ROSSIMia.grx"));
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Mia*");
    tests::Script seconda;
    apriViste();
    aperta(seconda).then("guarda", [&] {
        EXPECT_FALSE(griglia().Columns().Item(Nome).Visible);
        EXPECT_TRUE(griglia().SplitAt(0).AlternatingRowStyle);
    });
    chiude(seconda);
    cerca(tabella(), seconda);
}

TEST_F(VisteConfiguraTest, TwoOperatorsAndTwoSearchesKeepTheirOwnPreferredViews) {
    struct Giro {
        const char *utente, *modulo, *vista, *nascosta;
    };
    const Giro giri[] = {{"ROSSI", "CLI", "Uno", "nome"},
                         {"ROSSI", "ART", "Due", "citta"},
                         {"BIANCHI", "CLI", "Uno", "prezzo"}};
    for (const Giro& giro : giri) {
        tests::Script passi;
        operatore(giro.utente, giro.modulo);
        apriViste();
        aperta(passi).waitFor("pronta", [] { return variabiliGlobali().gFinestraPronta; });
        passi.then("configura", [&] { robot.click(*finestra().BarraBase, pulsante("configura")); });
        passi.waitFor("aperta", [] { return configuraPronta(); });
        auto fatto = std::make_shared<bool>(false);
        passi.then("salva", [&, fatto] {
            vai("VISUALIZZA");
            doppio(configura().List1, giro.nascosta);
            salva(giro.vista, true);
            *fatto = true;
        });
        passi.waitFor(
            "salvata", [fatto] { return *fatto; }, 60000);
        passi.then("chiude", [] { configura().Scarica(); });
        passi.waitFor("tornata", [] { return !frmConfiguraReale(); });
        chiude(passi);
        cerca(tabella(), passi);
    }
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Uno* ROSSI/ART/Due* BIANCHI/CLI/Uno*");
    for (const Giro& giro : giri) {
        tests::Script passi;
        operatore(giro.utente, giro.modulo);
        apriViste();
        aperta(passi).then("guarda", [&] {
            for (int i = 0; i < griglia().Columns().Count(); ++i) {
                const grid::Column& colonna = griglia().Columns().Item(i);
                EXPECT_EQ(colonna.Visible, colonna.DataField != giro.nascosta)
                    << giro.utente << giro.modulo << ' ' << colonna.DataField;
            }
            EXPECT_EQ(finestra().BarraBase->Item("Apri").ButtonMenus.at(0).Key, giro.vista);
        });
        chiude(passi);
        cerca(tabella(), passi);
    }
}

TEST_F(VisteConfiguraTest, ANameThatDiffersInCaseRewritesTheListedView) {
    riga("Mia", false);
    provaConfigura([&] {
        salva("MIA", true);
        EXPECT_EQ(ultimo(), "Salvataggio Completato");
        EXPECT_EQ(voci(configura().Lista), Testi{"MIA"});
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/MIA*");
}

TEST_F(VisteConfiguraTest, ANewNameWhoseFileIsThereIsRefused) {
    std::ofstream(cartella / "ROSSIVecchia.grx") << "x";
    provaConfigura([&] {
        salva("Vecchia", true);
        EXPECT_EQ(ultimo(), "Impossibile salvare la vista con questo nome, è già presente un'altra "
                            "vista salvata nello stesso modo.");
        EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
    });
    EXPECT_EQ(righeViste(), "");
    EXPECT_EQ(fs::file_size(cartella / "ROSSIVecchia.grx"), 1U);
}

TEST_F(VisteConfiguraTest, AnEmptyNameSavesAFileOfTheUserAndARowWithoutAName) {
    provaConfigura([&] {
        vai("SALVA");
        digitaNome("");
        si();
        robot.press(WXK_RETURN); // in the name box, Enter saves
        EXPECT_EQ(ultimo(), "Salvataggio Completato");
        EXPECT_EQ(configura().Lista->GetCount(), 1U);
    });
    EXPECT_TRUE(esiste("ROSSI.grx"));
    EXPECT_EQ(righeViste(), "ROSSI/CLI/");
}

TEST_F(VisteConfiguraTest, ADoubleClickInTheListActivatesAfterAsking) {
    riga("Mia", true);
    riga("Altra", false);
    provaConfigura([&] {
        vai("VISUALIZZA");
        doppio(configura().List1, "citta");
        salva("Mia");
        vai("VISUALIZZA");
        doppio(configura().List2, "citta");
        vai("STILE");
        premi(configura().ChkSposta);
        premi(configura().ChkColonne);
        vai("SALVA");
        scriviNome("altro");
        EXPECT_FALSE(configura().CmdAttiva->IsEnabled());
        boxes.clear();
        boxes.answer(BoxAnswer::No);
        doppio(configura().Lista, "Mia");
        EXPECT_EQ(testoDi(configura().txtNome), "altro") << "a No changes nothing";
        si();
        premi(configura().ChkPredefinito);
        doppio(configura().Lista, "Mia");
        EXPECT_EQ(ultimo(), "Vuoi modificare la vista selezionata");
        EXPECT_EQ(testoDi(configura().txtNome), "Mia");
        EXPECT_FALSE(configura().ChkPredefinito->GetValue()) << "saved without it";
        EXPECT_FALSE(anteprima().Columns().Item(Citta).Visible);
        EXPECT_EQ(voci(configura().List2), Testi{"citta"}) << "the lists follow the grid";
        EXPECT_FALSE(split().AllowColMove);
        EXPECT_TRUE(split().AllowSizing);
        EXPECT_FALSE(configura().ChkSposta->GetValue()) << "and so do the style's controls";
        EXPECT_TRUE(configura().ChkColonne->GetValue());
    });
}

TEST_F(VisteConfiguraTest, DeletingAsksTakesTheRowAndLeavesTheFile) {
    riga("Mia", true);
    riga("Altra", false);
    std::ofstream(cartella / "ROSSIMia.grx") << "x";
    provaConfigura([&] {
        vai("SALVA");
        EXPECT_FALSE(configura().CmdEliminaVista->IsEnabled()) << "nothing is selected";
        scegli(configura().Lista, "Mia");
        si();
        premi(configura().CmdEliminaVista);
        EXPECT_EQ(ultimo(), "Cancellazione effettuata");
        EXPECT_EQ(boxes.shown().back().titolo, "Personalizza Ricerche");
        EXPECT_EQ(voci(configura().Lista), Testi{"Altra"});
        EXPECT_FALSE(configura().CmdEliminaVista->IsEnabled());
        EXPECT_TRUE(configura().Lista->HasFocus()) << "not lost with the button";
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Altra");
    EXPECT_TRUE(esiste("ROSSIMia.grx"));
}

TEST_F(VisteConfiguraTest, DeletingAViewWithoutARowReportsTheSame) {
    riga("Mia", true);
    provaConfigura([&] {
        vai("SALVA");
        variabiliGlobali().gRecordsetViste->SetFilter("NomeVista='Mia'");
        variabiliGlobali().gRecordsetViste->Delete();
        scegli(configura().Lista, "Mia");
        si();
        premi(configura().CmdEliminaVista);
        EXPECT_EQ(ultimo(), "Cancellazione effettuata");
        EXPECT_EQ(configura().Lista->GetCount(), 0U);
    });
}

TEST_F(VisteConfiguraTest, TheBaseIsLoadedAfterAskingAndAMissingOneIsTold) {
    provaConfigura([&] {
        vai("SALVA");
        si(2);
        premi(configura().CmdCaricoBase);
        EXPECT_TRUE(erroreDetto());
        grid::Layout base = anteprima().Layouts().Present();
        base.Columns.at(Nome).Visible = false;
        grid::saveLayout((cartella / "parametri/CLI.grx").string(), "CLI", base);
        premi(configura().CmdCaricoBase);
        EXPECT_EQ(ultimo(), "Carico la vista base?");
        EXPECT_FALSE(anteprima().Columns().Item(Nome).Visible);
        EXPECT_EQ(voci(configura().List2), Testi{"nome"});
    });
}

TEST_F(VisteConfiguraTest, TheHiddenGestureSavesTheBaseWithoutItsFilterBarAndCloses) {
    provaConfigura([&] {
        vai("SALVA");
        doppioSu(configura().l1[1]);
        EXPECT_TRUE(boxes.shown().empty()) << "any other label does nothing";
        EXPECT_TRUE(split().FilterBar);
        si();
        doppioSu(configura().l1[0]);
        EXPECT_EQ(frmConfiguraReale(), nullptr);
        ASSERT_EQ(boxes.shown().size(), 2U);
        EXPECT_EQ(boxes.shown()[0].testo, "Salvo la vista come vista base?");
        EXPECT_EQ(boxes.shown()[1].testo, "Salvataggio effettuato");
        EXPECT_EQ(boxes.shown()[1].titolo, titoloPredefinito);
        EXPECT_EQ(boxes.shown()[1].icona, BoxIcon::None);
    });
    const grid::Layout base = grid::loadLayout((cartella / "parametri/CLI.grx").string(), "CLI");
    EXPECT_FALSE(base.Split.FilterBar);
    EXPECT_EQ(base.Columns.size(), 9U);
    EXPECT_EQ(righeViste(), "");
}

TEST_F(VisteConfiguraTest, ANoToTheHiddenGestureSaysThatItSavedAndClosesToo) {
    provaConfigura([&] {
        vai("SALVA");
        boxes.answer(BoxAnswer::No);
        doppioSu(configura().l1[0]);
        EXPECT_EQ(frmConfiguraReale(), nullptr);
        EXPECT_EQ(ultimo(), "Salvataggio effettuato");
    });
    EXPECT_FALSE(esiste("parametri/CLI.grx"));
}

TEST_F(VisteConfiguraTest, ADatabaseThatRefusesTheRowIsToldAndNothingIsTorn) {
    riga("Mia", true);
    esegui("CREATE TRIGGER no BEFORE INSERT ON ricerchepers BEGIN SELECT RAISE(ABORT, 'no'); END");
    provaConfigura([&] {
        salva("Nuova", true);
        EXPECT_TRUE(erroreDetto());
        EXPECT_EQ(voci(configura().Lista), Testi{"Mia"});
        EXPECT_TRUE(esiste("ROSSINuova.grx")) << "the file comes first, and stays";
        salva("Nuova");
        EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN") << "and refuses the name from then on";
        vai("STILE"); // the window works on
        premi(configura().ChkFacilitato);
        EXPECT_TRUE(split().AlternatingRowStyle);
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Mia") << "what was done before the refusal stays";
}

TEST_F(VisteConfiguraTest, AFolderThatIsNotThereIsToldBeforeTheTableIsTouched) {
    riga("Mia", true);
    ricerca.SetPercorsoPers((cartella / "manca").string() + "\\");
    provaConfigura([&] {
        salva("Mia", false);
        EXPECT_TRUE(erroreDetto());
        EXPECT_EQ(voci(configura().Lista), Testi{"Mia"});
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Mia*");
}

} // namespace
} // namespace norvel::views
