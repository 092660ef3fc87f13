// Saving, activating and deleting views: questions, order of the steps, refusals, on real files and
// a real table.
#include "views/Salvataggio.h"

#include "platform/grid/layout/LayoutFile.h"
#include "platform/runtime/Text.h"
#include "tests/support/Boxes.h"
#include "tests/views/BancoViste.h"
#include "tests/views/ListaProva.h"
#include "views/Disposizioni.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace norvel::views {
namespace {

using namespace adodb;

class SalvataggioTest : public BancoViste {
  protected:
    SalvataggioTest() {
        mostrata = "propria";
        connessione = makeConnection();
        connessione->Open("Provider=SQLite;Data Source=:memory:");
        esegui("CREATE TABLE ricerchepers (codiceoperatore TEXT, codicericerca TEXT, "
               "NomeVista TEXT, preferito BOOLEAN, "
               "PRIMARY KEY (codiceoperatore, codicericerca, NomeVista))");
        riga("ROSSI", "CLI", "Mia", true);
        riga("ROSSI", "CLI", "Altra", false);
        riga("ROSSI", "ART", "Articoli", true);
        riga("BIANCHI", "CLI", "Sua", true);
    }
    ~SalvataggioTest() override {
        sessione = {};
        connessione->Close();
    }
    SalvataggioTest(const SalvataggioTest&) = delete;
    SalvataggioTest& operator=(const SalvataggioTest&) = delete;

    void esegui(const std::string& sql) const { connessione->Execute(sql); }
    void riga(const std::string& utente, const char* modulo, const char* vista, bool preferita) {
        esegui("INSERT INTO ricerchepers VALUES ('" + utente + "', '" + modulo + "', '" + vista +
               "', " + (preferita ? "1" : "0") + ")");
    }
    RecordsetRef apri(const std::string& sql, LockTypeEnum blocco = adLockOptimistic) const {
        auto recordset = makeClientRecordset();
        recordset->Open(sql, Variant(std::static_pointer_cast<Object>(connessione)), adOpenStatic,
                        blocco, adCmdText);
        return recordset;
    }
    // The table as the database has it: "ROSSI/CLI/Mia*", preferred views with a star.
    std::string tabella() const {
        auto righe = apri("SELECT * FROM ricerchepers ORDER BY rowid");
        std::string testo;
        for (; !righe->EOF_(); righe->MoveNext()) {
            Fields& campi = righe->Fields();
            testo += (testo.empty() ? "" : " ") + campi("codiceoperatore").Value().toText() + "/" +
                     campi("codicericerca").Value().toText() + "/" +
                     campi("NomeVista").Value().toText() +
                     (campi("preferito").Value().toBoolean() ? "*" : "");
        }
        return testo;
    }
    void prepara(LockTypeEnum blocco = adLockOptimistic) {
        sessione.gRecordsetViste = apri("SELECT * FROM ricerchepers", blocco);
        CaricaElencoViste(sessione, lista);
    }
    PartiSalvataggio parti() {
        return {custode,
                lista,
                [this] { return nome; },
                [this](const std::string& testo) { nome = testo; },
                [this] { return predefinito; },
                [this](bool si) { predefinito = si; },
                [this] { passi += "colonne "; },
                [this] { passi += "stile "; },
                [this] { passi += "senza-filtri "; },
                [this] { passi += "scarica "; }};
    }
    void salva(const std::string& vista, bool preferita = false) {
        nome = vista;
        predefinito = preferita;
        boxes.answer(BoxAnswer::Yes);
        salvaVista(sessione, parti());
    }
    void scegli(const char* vista) {
        for (int i = 0; i < lista.ListCount(); ++i)
            if (lista.List(i) == vista) lista.SetListIndex(i);
    }
    bool esiste(const std::string& file) const { return fs::exists(cartella / file); }
    void scrivi(const std::string& file, const std::string& testo) const {
        std::ofstream(cartella / file) << testo;
    }
    std::string contenuto(const std::string& file) const {
        std::ifstream in(cartella / file);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    // The boxes shown so far: "testo|titolo", questions with a mark before.
    std::vector<std::string> scatole() const {
        std::vector<std::string> tutte;
        for (const Messaggio& m : boxes.shown())
            tutte.push_back((m.pulsanti == BoxButtons::YesNo ? "? " : "") + m.testo + "|" +
                            m.titolo);
        return tutte;
    }

    ConnectionRef connessione;
    ListaProva lista;
    std::string nome, passi;
    bool predefinito = false;
    tests::Boxes boxes;
    using Testi = std::vector<std::string>;
};

TEST_F(SalvataggioTest, SavingANewNameWritesFileAndRowAndSaysSo) {
    prepara();
    salva("Nuova");
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia* ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua* "
                         "ROSSI/CLI/Nuova");
    EXPECT_EQ(grid::loadLayout((cartella / "ROSSINuova.grx").string(), "ROSSINuova")
                  .Columns.at(0)
                  .Caption,
              "propria");
    EXPECT_EQ(lista.tutte(), "Mia=0 Altra=0 Nuova=0");
    EXPECT_EQ(scatole(), (Testi{"? Salvo la vista corrente?|Conferma salvataggio",
                                "Salvataggio Completato|Salvataggio"}));
    EXPECT_EQ(boxes.shown()[1].icona, BoxIcon::Information);
}

TEST_F(SalvataggioTest, ANoLeavesEverythingAsItWas) {
    prepara();
    scegli("Mia");
    const std::string prima = tabella();
    nome = "Nuova";
    boxes.answer(BoxAnswer::No).answer(BoxAnswer::No).answer(BoxAnswer::No).answer(BoxAnswer::No);
    salvaVista(sessione, parti());
    attivaVista(sessione, parti());
    eliminaVista(sessione, parti());
    caricoBase(sessione, parti());
    EXPECT_EQ(scatole(), (Testi{"? Salvo la vista corrente?|Conferma salvataggio",
                                "? Vuoi modificare la vista selezionata|Conferma modifica",
                                "? Vuoi eliminare la vista selezionata|Conferma eliminazione",
                                "? Carico la vista base?|Conferma Lettura"}));
    EXPECT_EQ(tabella(), prima);
    EXPECT_EQ(lista.ListCount(), 2);
    EXPECT_FALSE(esiste("ROSSINuova.grx"));
    EXPECT_EQ(passi, "");
}

TEST_F(SalvataggioTest, ANameThatDiffersInCaseOnlyRewritesRowAndFile) {
    prepara();
    scrivi("ROSSIMia.grx", "vecchio");
    salva("mIA");
    EXPECT_EQ(tabella(), "ROSSI/CLI/mIA ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua*");
    EXPECT_NE(contenuto("ROSSIMia.grx"), "vecchio");
    const auto suo = [](const fs::directory_entry& file) {
        return equalsText(file.path().filename().string(), "ROSSIMia.grx");
    };
    EXPECT_EQ(std::count_if(fs::directory_iterator(cartella), {}, suo), 1)
        << "one file, not two that differ in case";
    EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
}

TEST_F(SalvataggioTest, ANewNameWhoseFileIsThereIsRefusedAndNothingChanges) {
    prepara();
    scrivi("ROSSIVecchia.grx", "di una vista cancellata");
    const std::string prima = tabella();
    salva("vecchia", true);
    EXPECT_EQ(scatole().back(), "Impossibile salvare la vista con questo nome, è già presente "
                                "un'altra vista salvata nello stesso modo.|TAMBORIN");
    EXPECT_EQ(boxes.shown().back().icona, BoxIcon::Information);
    EXPECT_EQ(tabella(), prima);
    EXPECT_EQ(contenuto("ROSSIVecchia.grx"), "di una vista cancellata");
}

TEST_F(SalvataggioTest, ANameDeletedOnceCannotBeSavedAgain) {
    prepara();
    salva("Breve");
    scegli("Breve");
    boxes.answer(BoxAnswer::Yes);
    eliminaVista(sessione, parti());
    EXPECT_TRUE(esiste("ROSSIBreve.grx"));
    salva("Breve");
    EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
}

TEST_F(SalvataggioTest, AnEmptyNameWritesTheFileOfTheUserAloneAndARowWithoutAName) {
    prepara();
    salva("");
    EXPECT_TRUE(esiste("ROSSI.grx"));
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia* ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua* "
                         "ROSSI/CLI/");
    EXPECT_EQ(lista.tutte(), "Mia=0 Altra=0 =0");
    salva("");
    EXPECT_EQ(lista.ListCount(), 3) << "the second time it is rewritten";
}

TEST_F(SalvataggioTest, ThePreferredFlagMovesAmongTheViewsOfOneUserAndSearch) {
    prepara();
    salva("Altra", true);
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia ROSSI/CLI/Altra* ROSSI/ART/Articoli* BIANCHI/CLI/Sua*");
    salva("Altra", false);
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua*");
    salva("Terza", true);
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua* "
                         "ROSSI/CLI/Terza*");
}

TEST_F(SalvataggioTest, AHostsOrderByTheFlagHidesNoPreferredViewFromTheClearing) {
    esegui("UPDATE ricerchepers SET preferito = 1 WHERE codicericerca = 'CLI'");
    for (const char* ordine : {"preferito DESC", "preferito"}) {
        prepara();
        sessione.gRecordsetViste->SetSort(ordine);
        salva(ordine, true);
        EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
        auto preferite = apri("SELECT * FROM ricerchepers WHERE codiceoperatore = 'ROSSI' AND "
                              "codicericerca = 'CLI' AND preferito <> 0");
        EXPECT_EQ(preferite->RecordCount(), 1) << ordine;
    }
}

TEST_F(SalvataggioTest, AQuoteInTheNameFailsAfterTheFileAndNothingElseIsTorn) {
    prepara();
    const std::string prima = tabella();
    salva("D'Amico");
    EXPECT_TRUE(esiste("ROSSID'Amico.grx"));
    EXPECT_EQ(tabella(), prima);
    EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
}

TEST_F(SalvataggioTest, ATableThatRefusesTheRowLeavesTheFileAndNoPendingRow) {
    prepara();
    esegui("CREATE TRIGGER no BEFORE INSERT ON ricerchepers BEGIN SELECT RAISE(ABORT, 'no'); END");
    const std::string prima = tabella();
    salva("Nuova");
    EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
    EXPECT_TRUE(esiste("ROSSINuova.grx")) << "the file comes first, and stays";
    esegui("DROP TRIGGER no");
    CaricaElencoViste(sessione, lista); // a filter would commit what were still pending
    EXPECT_EQ(tabella(), prima);
    salva("Nuova");
    EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN") << "the file left behind refuses the name";
}

TEST_F(SalvataggioTest, ARecordsetThatMayNotBeWrittenFailsTheSame) {
    prepara(adLockReadOnly);
    const std::string prima = tabella();
    salva("Nuova", true);
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
    EXPECT_EQ(tabella(), prima);
    EXPECT_TRUE(esiste("ROSSINuova.grx"));
}

TEST_F(SalvataggioTest, AFolderThatIsNotThereRefusesBeforeTheTableIsTouched) {
    prepara();
    sessione.gPercorsoPers = (cartella / "manca").string() + "\\";
    const std::string prima = tabella();
    salva("Mia", false);
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
    EXPECT_EQ(tabella(), prima) << "file before row: the flag is still there";
}

TEST_F(SalvataggioTest, WithoutARecordsetOfViewsTheFileIsWrittenAndTheBoxTells) {
    salva("Nuova");
    EXPECT_TRUE(esiste("ROSSINuova.grx"));
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
}

TEST_F(SalvataggioTest, ActivatingShowsNameFlagAndLayoutAndTouchesNoRow) {
    prepara();
    scriviDisposizione("ROSSIMia.grx", "ROSSIMia", "della Mia");
    const std::string prima = tabella();
    scegli("Mia");
    boxes.answer(BoxAnswer::Yes).answer(BoxAnswer::Yes);
    attivaVista(sessione, parti());
    EXPECT_EQ(nome, "Mia");
    EXPECT_TRUE(predefinito);
    EXPECT_EQ(mostrata, "della Mia");
    EXPECT_EQ(passi, "colonne stile ");
    scegli("Altra");
    attivaVista(sessione, parti());
    EXPECT_FALSE(predefinito);
    EXPECT_EQ(mostrata, "della Mia") << "a view without its file shows what the grid had";
    EXPECT_EQ(tabella(), prima);
    EXPECT_EQ(boxes.shown().size(), 2U);
}

TEST_F(SalvataggioTest, ActivatingAViewWhoseRowIsGoneKeepsTheBoxAsItWas) {
    prepara();
    esegui("DELETE FROM ricerchepers WHERE NomeVista = 'Altra'");
    sessione.gRecordsetViste = apri("SELECT * FROM ricerchepers");
    predefinito = true;
    scegli("Altra");
    boxes.answer(BoxAnswer::Yes);
    attivaVista(sessione, parti());
    EXPECT_TRUE(predefinito);
    EXPECT_EQ(nome, "Altra");
}

TEST_F(SalvataggioTest, AViewNamedAfterABaseHasItsOwnFileAndRowButActivatingShowsThatBase) {
    prepara();
    mostrata = "della vista";
    salva("Base:ART");
    EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
    EXPECT_TRUE(esiste("ROSSIBase:ART.grx"));
    EXPECT_NE(tabella().find("ROSSI/CLI/Base:ART"), std::string::npos);
    scriviDisposizione("parametri/ART.grx", "CLI", "degli articoli");
    scegli("Base:ART");
    boxes.answer(BoxAnswer::Yes);
    attivaVista(sessione, parti());
    EXPECT_EQ(mostrata, "degli articoli");
    EXPECT_EQ(nome, "Base:ART");
}

TEST_F(SalvataggioTest, WithoutAUserTheFileHasTheViewsNameAloneAndTheRowAnEmptyOperator) {
    sessione.gUser = Variant();
    prepara();
    salva("Comune", true);
    EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
    EXPECT_TRUE(esiste("Comune.grx"));
    EXPECT_EQ(lista.tutte(), "Comune=0");
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia* ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua* "
                         "/CLI/Comune*")
        << "preferred views of operators with a code stay so";
}

TEST_F(SalvataggioTest, SeparatorsInANameArePartOfThePath) {
    prepara();
    const std::string prima = tabella();
    for (const char* vista : {"sotto\\mia", "sotto/mia"}) {
        salva(vista);
        EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U)
            << vista << ": there is no such folder";
        EXPECT_EQ(tabella(), prima) << "the file comes first";
    }
    fs::create_directories(cartella / "ROSSIsotto");
    salva("sotto\\mia");
    EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
    EXPECT_TRUE(esiste("ROSSIsotto/mia.grx"));
    EXPECT_EQ(tabella(), prima + " ROSSI/CLI/sotto\\mia");
    scegli("sotto\\mia");
    boxes.answer(BoxAnswer::Yes);
    mostrata = "altra";
    attivaVista(sessione, parti());
    EXPECT_EQ(mostrata, "propria");
}

TEST_F(SalvataggioTest, ANameThatNoFileCanHaveIsToldAndTouchesNoRow) {
    prepara();
    const std::string prima = tabella();
    salva(std::string(300, 'x'), true);
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
    EXPECT_EQ(tabella(), prima);
    EXPECT_EQ(lista.ListCount(), 2);
}

TEST_F(SalvataggioTest, SignsOfPatternsAndFormatsInANameStandForThemselves) {
    prepara();
    for (const char* vista : {"100% [a]_", "%s%n", "M#a & co"}) {
        salva(vista, true);
        EXPECT_EQ(boxes.lastText(), "Salvataggio Completato") << vista;
        EXPECT_TRUE(esiste("ROSSI" + std::string(vista) + ".grx"));
    }
    EXPECT_EQ(tabella(), "ROSSI/CLI/Mia ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua* "
                         "ROSSI/CLI/100% [a]_ ROSSI/CLI/%s%n ROSSI/CLI/M#a & co*");
}

TEST_F(SalvataggioTest, AFileInAFolderBelowRefusesNoName) {
    prepara();
    fs::create_directories(cartella / "ROSSIsotto");
    scrivi("ROSSIsotto/mia.grx", "di una vista cancellata");
    for (const char* vista : {"sotto\\mia", "sotto/mia"}) {
        salva(vista);
        EXPECT_EQ(boxes.lastText(), "Salvataggio Completato") << vista;
    }
    EXPECT_EQ(lista.ListCount(), 4);
    EXPECT_NE(contenuto("ROSSIsotto/mia.grx"), "di una vista cancellata");
}

TEST_F(SalvataggioTest, DeletingTakesRowAndEntryAndLeavesTheFile) {
    prepara();
    scrivi("ROSSIMia.grx", "x");
    scegli("Mia");
    nome = "Altra";
    boxes.answer(BoxAnswer::Yes);
    eliminaVista(sessione, parti());
    EXPECT_EQ(tabella(), "ROSSI/CLI/Altra ROSSI/ART/Articoli* BIANCHI/CLI/Sua*");
    EXPECT_EQ(lista.tutte(), "Altra=0");
    EXPECT_TRUE(esiste("ROSSIMia.grx"));
    EXPECT_EQ(scatole(), (Testi{"? Vuoi eliminare la vista selezionata|Conferma eliminazione",
                                "Cancellazione effettuata|Personalizza Ricerche"}));
    EXPECT_EQ(custode.LayoutName, "ROSSIAltra") << "the grid shows the view of the name box";
}

TEST_F(SalvataggioTest, DeletingWithoutARowLeftReportsTheSame) {
    prepara();
    esegui("DELETE FROM ricerchepers WHERE NomeVista = 'Mia'");
    sessione.gRecordsetViste = apri("SELECT * FROM ricerchepers");
    scegli("Mia");
    boxes.answer(BoxAnswer::Yes);
    eliminaVista(sessione, parti());
    EXPECT_EQ(boxes.lastText(), "Cancellazione effettuata");
    EXPECT_EQ(lista.tutte(), "Altra=0");
}

TEST_F(SalvataggioTest, ADeletionThatTheDatabaseRefusesHasTakenTheEntryAndSaysNothingElse) {
    prepara();
    esegui("CREATE TRIGGER no BEFORE DELETE ON ricerchepers BEGIN SELECT RAISE(ABORT, 'no'); END");
    scegli("Mia");
    boxes.answer(BoxAnswer::Yes);
    eliminaVista(sessione, parti());
    EXPECT_EQ(boxes.shown().size(), 2U);
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
    EXPECT_EQ(lista.tutte(), "Altra=0");
    EXPECT_EQ(tabella().rfind("ROSSI/CLI/Mia*", 0), 0U) << "the row is still there";
}

TEST_F(SalvataggioTest, DeletingWithoutASelectionIsAnError) {
    prepara();
    const std::string prima = tabella();
    boxes.answer(BoxAnswer::Yes);
    eliminaVista(sessione, parti());
    EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
    EXPECT_EQ(tabella(), prima);
}

TEST_F(SalvataggioTest, LoadingTheBaseShowsItAndAMissingOneIsTold) {
    prepara();
    boxes.answer(BoxAnswer::Yes).answer(BoxAnswer::Yes);
    caricoBase(sessione, parti());
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
    EXPECT_EQ(passi, "");
    scriviDisposizione("parametri/CLI.grx", "CLI", "di tutti");
    caricoBase(sessione, parti());
    EXPECT_EQ(mostrata, "di tutti");
    EXPECT_EQ(passi, "colonne stile ");
}

TEST_F(SalvataggioTest, SavingAsBaseWritesTheFileAloneAndUnloads) {
    prepara();
    const std::string prima = tabella();
    boxes.answer(BoxAnswer::Yes);
    salvaComeBase(sessione, parti());
    EXPECT_EQ(passi, "senza-filtri scarica ");
    EXPECT_EQ(grid::loadLayout((cartella / "parametri/CLI.grx").string(), "CLI").Columns.size(),
              1U);
    EXPECT_EQ(tabella(), prima);
    EXPECT_EQ(sessione.gRecordsetViste->Filter().text(),
              "codiceoperatore='ROSSI' and codicericerca='CLI' ");
    EXPECT_EQ(scatole(), (Testi{"? Salvo la vista come vista base?|Conferma salvataggio",
                                std::string("Salvataggio effettuato|") + titoloPredefinito}));
    EXPECT_EQ(boxes.shown()[1].icona, BoxIcon::None);
}

TEST_F(SalvataggioTest, ANoToTheBaseStillSaysThatItWasSavedAndUnloads) {
    prepara();
    boxes.answer(BoxAnswer::No);
    salvaComeBase(sessione, parti());
    EXPECT_EQ(boxes.lastText(), "Salvataggio effettuato");
    EXPECT_EQ(passi, "scarica ");
    EXPECT_FALSE(esiste("parametri/CLI.grx"));
}

TEST_F(SalvataggioTest, ABaseThatCannotBeWrittenIsToldAndTheWindowStays) {
    prepara();
    fs::remove_all(cartella / "parametri");
    boxes.answer(BoxAnswer::Yes);
    salvaComeBase(sessione, parti());
    EXPECT_EQ(boxes.lastText().rfind("Errore nel modulo di ricerca", 0), 0U);
    EXPECT_EQ(passi, "senza-filtri ");
}

} // namespace
} // namespace norvel::views
