// Views and the toolbar's moves in the real window.
#include "platform/grid/layout/LayoutFile.h"
#include "tests/search_window/BancoQuery.h"

#include <atomic>
#include <filesystem>
#include <random>

namespace norvel::search_window {
namespace {

namespace fs = std::filesystem;

class VisteFinestraTest : public BancoQuery {
  protected:
    void SetUp() override {
        BancoQuery::SetUp();
        static std::atomic<int> numero{0};
        cartella = fs::temp_directory_path() /
                   ("nr_viste_finestra_" + std::to_string(std::random_device()()) + "_" +
                    std::to_string(++numero));
        fs::create_directories(cartella / "parametri");
        ricerca.SetPercorso(cartella.string() + "\\");
        ricerca.SetPercorsoPers(cartella.string() + "\\");
        ricerca.SetUser("ROSSI");
        ricerca.SetModulo("CLI");
        esegui("CREATE TABLE operatori (codiceutente TEXT, ricerchepers BOOLEAN)");
        esegui("INSERT INTO operatori VALUES ('ROSSI', 1), ('BIANCHI', 0)");
        esegui("CREATE TABLE ricerchepers (codiceoperatore TEXT, codicericerca TEXT, "
               "NomeVista TEXT, preferito BOOLEAN)");
    }
    void TearDown() override {
        BancoQuery::TearDown();
        fs::remove_all(cartella);
    }
    void vista(const std::string& nome, bool preferita) {
        esegui("INSERT INTO ricerchepers VALUES ('ROSSI', 'CLI', '" + nome + "', " +
               (preferita ? "1" : "0") + ")");
    }
    // A layout that shows citta first, with this caption, and no nome.
    void salva(const std::string& file, const std::string& nome, const char* titolo) const {
        grid::Layout disposizione;
        const auto colonna = [&](const char* campo, const char* testo, int ordine, bool visibile) {
            disposizione.Columns.push_back({campo, testo, 2000, ordine, visibile, {}});
        };
        colonna("citta", titolo, 0, true);
        colonna("codice", "Codice", 1, true);
        colonna("nome", "Nome", 2, false);
        grid::saveLayout((cartella / file).string(), nome, disposizione);
    }
    void apriConViste(const std::function<void()>& passo) {
        ricerca.SetRecordsetOperatori(tabella("SELECT * FROM operatori"));
        ricerca.SetRecordsetViste(tabella("SELECT * FROM ricerchepers"));
        prova(passo);
    }
    static std::string titolo() { return griglia().Columns().Item(Citta).Caption; }
    static const controls::Button& barra(const char* chiave) {
        return finestra().BarraBase->Item(chiave);
    }
    void clicBarra(const char* chiave) { robot.click(*finestra().BarraBase, pulsante(chiave)); }
    static wxPoint frecciaApri() {
        const wxRect r = finestra().BarraBase->ButtonRect("Apri");
        return {r.GetRight() - 4, r.y + r.height / 2};
    }

    fs::path cartella;
};

TEST_F(VisteFinestraTest, ThePreferredViewIsOnShowWhenTheWindowOpens) {
    salva("ROSSIMia.grx", "ROSSIMia", "La mia città");
    vista("Altra", false);
    vista("Mia", true);
    apriConViste([&] {
        EXPECT_EQ(titolo(), "La mia città");
        EXPECT_FALSE(griglia().Columns().Item(Nome).Visible);
        EXPECT_EQ(griglia().Columns().Shown().front(), Citta);
        EXPECT_EQ(griglia().Columns().Item(Citta).Width, 2000);
        ASSERT_EQ(barra("Apri").ButtonMenus.size(), 3U);
        EXPECT_EQ(barra("Apri").ButtonMenus[0].Key, "Altra");
        EXPECT_EQ(barra("Apri").ButtonMenus[2].Key, "Base:CLI");
        EXPECT_EQ(barra("Apri").ButtonMenus[2].Text, "Vista predefinita");
        EXPECT_TRUE(barra("ultimo").Enabled);
        EXPECT_EQ(stato(), "Totale record 7");
        EXPECT_TRUE(finestra().FilterCombo(Citta)) << "the switches are abilitaCombo's alone";
        foto("vista-preferita");
    });
}

TEST_F(VisteFinestraTest, AnEntryOfTheMenuShowsItsView) {
    salva("ROSSIMia.grx", "ROSSIMia", "La mia città");
    salva("parametri/CLI.grx", "CLI", "Di tutti");
    vista("Mia", false);
    salva("x.grx", "x", "");
    apriConViste([&] {
        EXPECT_EQ(titolo(), "Di tutti");
        tests::Script menu;
        menu.then("apre il menu", [&] { robot.click(*finestra().BarraBase, frecciaApri()); });
        menu.then("la prima voce", [&] { robot.press(WXK_DOWN); });
        menu.then("sceglie", [&] { robot.press(WXK_RETURN); });
        menu.run([&] { EXPECT_TRUE(robot.waitUntil([&] { return titolo() == "La mia città"; })); });
    });
}

TEST_F(VisteFinestraTest, WithoutTheRightUltimoIsDisabled) {
    ricerca.SetUser("BIANCHI");
    apriConViste([&] {
        EXPECT_FALSE(barra("ultimo").Enabled);
        EXPECT_EQ(barra("Apri").ButtonMenus.size(), 1U);
        clicBarra("ultimo");
        EXPECT_EQ(righe().AbsolutePosition(), 1);
    });
}

TEST_F(VisteFinestraTest, AHostThatAskedForNoFilterBarGetsNoneWhateverTheLayoutHolds) {
    ricerca.SetFilterBar("0");
    salva("ROSSIMia.grx", "ROSSIMia", "x"); // its filter bar is on
    vista("Mia", true);
    apriConViste([&] { EXPECT_FALSE(griglia().SplitAt(0).FilterBar); });
}

TEST_F(VisteFinestraTest, TheToolbarMovesAndBouncesBackAtTheEdges) {
    apriConViste([&] {
        clicBarra("ultimo");
        EXPECT_EQ(righe().AbsolutePosition(), 7);
        EXPECT_EQ(stato(), "Record 7 di 7");
        clicBarra("avanti");
        EXPECT_TRUE(righe().EOF_());
        clicBarra("avanti");
        EXPECT_EQ(righe().AbsolutePosition(), 7);
        clicBarra("primo");
        EXPECT_EQ(stato(), "Record 1 di 7");
        clicBarra("indietro");
        EXPECT_TRUE(righe().BOF());
        clicBarra("indietro");
        EXPECT_EQ(righe().AbsolutePosition(), 1);
        clicBarra("avanti");
        EXPECT_EQ(righe().AbsolutePosition(), 2);
        clicBarra("Aggiorna"); // neither sqloledb nor SQL Server
        EXPECT_EQ(righe().AbsolutePosition(), 2);
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(VisteFinestraTest, FacilitataPaintsEveryOtherRowWhileItIsPressed) {
    apriConViste([&] {
        clicBarra("Facilitata");
        EXPECT_TRUE(griglia().SplitAt(0).AlternatingRowStyle);
        foto("facilitata");
        clicBarra("Facilitata");
        EXPECT_FALSE(griglia().SplitAt(0).AlternatingRowStyle);
    });
}

TEST_F(VisteFinestraTest, AViewsFontSizesTheRows) {
    grid::Layout grande;
    grande.Style.Font.Size = 18;
    grande.Style.Font.Bold = true;
    grid::saveLayout((cartella / "ROSSIGrande.grx").string(), "ROSSIGrande", grande);
    vista("Grande", true);
    apriConViste([&] {
        const wxFont font = griglia().GetFont();
        EXPECT_EQ(font.GetPointSize(), 18);
        EXPECT_EQ(font.GetWeight(), wxFONTWEIGHT_BOLD);
        EXPECT_GT(griglia().CellRect(0, Codice).height, 24);
        foto("vista-grande");
        griglia().Style().Font = {};
        griglia().Changed();
        EXPECT_LT(griglia().GetFont().GetPointSize(), 18) << "the window's own comes back";
    });
}

} // namespace
} // namespace norvel::search_window
