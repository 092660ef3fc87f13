// Views when the search window opens: permission, preferred view, base layout, menu, total.
#include "component/DatiHost.h"
#include "platform/runtime/Errore.h"
#include "tests/views/BancoViste.h"
#include "views/ArchivioViste.h"
#include "views/Avvio.h"
#include "views/Disposizioni.h"

#include <gtest/gtest.h>

#include <fstream>

namespace norvel::views {
namespace {

using namespace adodb;
using Voci = std::vector<std::string>;

RecordsetRef tabella(const std::vector<std::pair<const char*, DataTypeEnum>>& campi) {
    auto recordset = makeClientRecordset();
    for (const auto& [nome, tipo] : campi)
        recordset->Fields().Append(nome, tipo, tipo == adVarWChar ? 50 : 0);
    recordset->Open();
    return recordset;
}

class VisteTest : public BancoViste {
  protected:
    VisteTest() {
        sessione.gFilterBar = std::int32_t{1};
        sessione.gRecordsetOperatori =
            tabella({{"codiceutente", adVarWChar}, {"ricerchepers", adBoolean}});
        operatore("ROSSI", true);
        operatore("BIANCHI", false);
        sessione.gRecordsetViste = tabella({{"codiceoperatore", adVarWChar},
                                            {"codicericerca", adVarWChar},
                                            {"NomeVista", adVarWChar},
                                            {"preferito", adBoolean}});
        sessione.gRecordset = tabella({{"codice", adInteger}});
        sessione.gRecordset->AddNew({"codice"}, {std::int32_t{1}});
    }
    void operatore(const char* codice, bool permesso) {
        sessione.gRecordsetOperatori->AddNew({"codiceutente", "ricerchepers"}, {codice, permesso});
    }
    void vista(const char* nome, bool preferita, const char* utente = "ROSSI",
               const char* modulo = "CLI") {
        sessione.gRecordsetViste->AddNew(
            {"CodiceOperatore", "CODICERICERCA", "nomevista", "Preferito"},
            {utente, modulo, nome, preferita});
    }
    void avvia() {
        impostaStileGriglia(sessione, {custode, [this](bool si) { fatto("ultimo", si); },
                                       [this](const std::string& chiave, const std::string& testo) {
                                           voci.push_back(chiave + "|" + testo);
                                       },
                                       [this](RowCount righe) { totale = righe; },
                                       [this] { fatto("senza filtri", true); },
                                       [this] { fatto("timer", true); }});
    }
    void fatto(const char* cosa, bool si) { passi[cosa] = si; }

    std::map<std::string, bool> passi;
    Voci voci;
    RowCount totale = -1;
};

TEST_F(VisteTest, FiltersStandAsTheyAreWritten) {
    const Proprietario di{"U", "M"};
    EXPECT_EQ(filtroPreferita(di), "codiceoperatore='U' and preferito<>0 and codicericerca='M'");
    EXPECT_EQ(filtroViste(di), "codiceoperatore='U' and codicericerca='M'");
    EXPECT_EQ(filtroVisteElenco(di), "CodiceOperatore='U' AND CodiceRicerca='M'");
    EXPECT_EQ(filtroVistePerSalvare(di), "codiceoperatore='U' and codicericerca='M' ");
    EXPECT_EQ(filtroVista(di, "Mia"),
              "codiceoperatore='U' and codicericerca='M' and nomevista='Mia'");
    EXPECT_EQ(filtroOperatore("U"), " codiceutente='U'");
}

TEST_F(VisteTest, AUserWithoutARowOrWithoutTheRightSeesUltimoDisabledAndTheRestIsDone) {
    for (const char* utente : {"BIANCHI", "NESSUNO"}) {
        sessione.gUser = utente;
        voci.clear();
        vista("Sua", false, utente);
        avvia();
        EXPECT_FALSE(passi.at("ultimo")) << utente;
        EXPECT_EQ(voci, (Voci{"Sua|Sua", "Base:CLI|Vista predefinita"}));
        EXPECT_TRUE(passi.at("timer"));
    }
    sessione.gUser = "ROSSI";
    avvia();
    EXPECT_TRUE(passi.at("ultimo"));
}

TEST_F(VisteTest, WithoutViewsTheBaseLayoutIsLoadedAndTheMenuHasItsOneEntry) {
    scriviDisposizione("parametri/CLI.grx", "CLI", "base");
    vista("Altrui", true, "BIANCHI");
    vista("Altrove", true, "ROSSI", "ART");
    avvia();
    EXPECT_EQ(mostrata, "base");
    EXPECT_EQ(voci, (Voci{"Base:CLI|Vista predefinita"}));
    EXPECT_EQ(totale, 1);
}

TEST_F(VisteTest, OfTwoPreferredViewsTheFirstIsAppliedAndBothAreListed) {
    scriviDisposizione("ROSSIUna.grx", "ROSSIUna", "una");
    scriviDisposizione("ROSSIDue.grx", "ROSSIDue", "due");
    scriviDisposizione("parametri/CLI.grx", "CLI", "base");
    vista("Zero", false);
    vista("Due", true);
    vista("Una", true);
    avvia();
    EXPECT_EQ(mostrata, "due");
    EXPECT_EQ(voci, (Voci{"Zero|Zero", "Due|Due", "Una|Una", "Base:CLI|Vista predefinita"}));
}

TEST_F(VisteTest, APreferredViewWhoseFileIsMissingLeavesTheGridAsItWas) {
    scriviDisposizione("parametri/CLI.grx", "CLI", "base");
    vista("Manca", true);
    mostrata = "com'era";
    avvia();
    EXPECT_EQ(mostrata, "com'era");
}

TEST_F(VisteTest, AQuoteInANameOrAUserBreaksTheFilterAndEndsTheRoutineQuietly) {
    sessione.gUser = "D'AMICO";
    avvia();
    EXPECT_TRUE(passi.empty());
    EXPECT_TRUE(voci.empty());
    EXPECT_EQ(totale, -1);
}

TEST_F(VisteTest, NoRowsGiveATotalOfZero) {
    sessione.gRecordset = tabella({{"codice", adInteger}});
    avvia();
    EXPECT_EQ(totale, 0);
}

TEST_F(VisteTest, TheFirstRecordsetThatIsNotOpenEndsItAndWhatWasDoneStays) {
    sessione.gRecordset = makeClientRecordset();
    vista("Una", false);
    avvia();
    EXPECT_EQ(voci.size(), 2U);
    EXPECT_FALSE(passi.contains("timer"));
    sessione.gRecordsetViste = nullptr;
    passi.clear();
    avvia();
    EXPECT_TRUE(passi.at("ultimo"));
    EXPECT_EQ(passi.size(), 1U);
    sessione.gRecordsetOperatori = operatoriVuoti();
    sessione.gRecordsetViste = visteVuote();
    sessione.gRecordset = tabella({{"codice", adInteger}});
    sessione.gFilterBar = std::int32_t{0};
    avvia();
    EXPECT_FALSE(passi.at("ultimo"));
    EXPECT_TRUE(passi.at("senza filtri"));
    EXPECT_TRUE(passi.at("timer"));
}

// --- layout files ---

TEST_F(VisteTest, FilesAndLayoutsAreNamedByTheSession) {
    sessione.gPercorso = "C:\\dati\\";
    sessione.gPercorsoPers = "C:\\pers\\";
    EXPECT_EQ(disposizioneBase(sessione, "ART"),
              (FileDisposizione{"C:\\dati\\parametri\\ART.grx", "CLI"}));
    EXPECT_EQ(disposizionePersonale(sessione, "Clienti"),
              (FileDisposizione{"C:\\pers\\ROSSIClienti.grx", "ROSSIClienti"}));
}

TEST_F(VisteTest, APercorsoWithoutItsSeparatorIsNotRepaired) {
    sessione.gPercorso = "C:\\dir";
    EXPECT_EQ(disposizioneBase(sessione, "X").percorso, "C:\\dirparametri\\X.grx");
    fs::create_directories(cartella / "dirparametri");
    scriviDisposizione("dirparametri/X.grx", "CLI", "accanto alla cartella");
    scriviDisposizione("parametri/X.grx", "CLI", "nella cartella");
    sessione.gPercorso = (cartella / "dir").string();
    ApplicaVista(custode, sessione, "Base:X");
    EXPECT_EQ(mostrata, "accanto alla cartella");
}

TEST_F(VisteTest, ANameThatContainsBaseInAnyCaseIsTheKeyOfABaseLayout) {
    scriviDisposizione("parametri/ART.grx", "CLI", "base di ART");
    scriviDisposizione("ROSSIla base:ART.grx", "ROSSIla base:ART", "personale");
    EXPECT_TRUE(ApplicaVista(custode, sessione, "la base:ART").isEmpty());
    EXPECT_EQ(mostrata, "base di ART");
    EXPECT_EQ(custode.LayoutName, "CLI");
    ApplicaVista(custode, sessione, "a:b Base:c");
    EXPECT_EQ(custode.LayoutFileName, cartella.string() + "\\parametri\\b Base:c.grx")
        << "from the first colon on";
}

TEST_F(VisteTest, BaseWithAnEmptyModuleLoadsTheFileWithoutAName) {
    scriviDisposizione("parametri/.grx", "CLI", "senza nome");
    ApplicaVista(custode, sessione, "Base:");
    EXPECT_EQ(mostrata, "senza nome");
}

TEST_F(VisteTest, APersonalNameAnswersTrueWhetherItsFileIsThereOrNot) {
    mostrata = "com'era";
    EXPECT_EQ(ApplicaVista(custode, sessione, "Manca"), Variant(true));
    EXPECT_EQ(mostrata, "com'era");
    scriviDisposizione("rossimia.GRX", "ROSSIMia", "mia");
    EXPECT_EQ(ApplicaVista(custode, sessione, "Mia"), Variant(true));
    EXPECT_EQ(mostrata, "mia") << "names of files are matched without case";
}

TEST_F(VisteTest, ADamagedFileLeavesTheGridAsItWas) {
    std::ofstream(cartella / "ROSSIRotta.grx") << "NorvelRicerca grid layout 1\n[layout \"ROSSI";
    mostrata = "com'era";
    ApplicaVista(custode, sessione, "Rotta");
    EXPECT_EQ(mostrata, "com'era");
}

TEST_F(VisteTest, TwoUsersWhoseCodeAndViewReadTheSameShareAFile) {
    sessione.gUser = "AB";
    mostrata = "di AB";
    salvaDisposizionePersonale(custode, sessione, "C");
    sessione.gUser = "A";
    mostrata = "";
    EXPECT_TRUE(esisteDisposizionePersonale(sessione, "BC"));
    ApplicaVista(custode, sessione, "BC");
    EXPECT_EQ(mostrata, "di AB");
}

TEST_F(VisteTest, SavingPutsTheLayoutWhereLoadingLooks) {
    mostrata = "personale";
    EXPECT_FALSE(esisteDisposizionePersonale(sessione, "Mia"));
    salvaDisposizionePersonale(custode, sessione, "Mia");
    EXPECT_TRUE(esisteDisposizionePersonale(sessione, "MIA"));
    mostrata = "base";
    salvaDisposizioneBase(custode, sessione);
    EXPECT_TRUE(fs::exists(cartella / "parametri" / "CLI.grx"));
    ApplicaVista(custode, sessione, "Mia");
    EXPECT_EQ(mostrata, "personale");
    CaricaVistaBase(custode, sessione, "CLI");
    EXPECT_EQ(mostrata, "base");
}

} // namespace
} // namespace norvel::views
