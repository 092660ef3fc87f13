// The properties of the public class: what each stores, what it gives back.
#include "component/Versione.h"
#include "tests/component/Componente.h"

#include <gtest/gtest.h>

#include <string>

namespace norvel::tests {
namespace {

class ProprietaTest : public ComponenteTest {};

// Runs an action that must raise an Errore and gives its number.
template <class Azione>
std::int64_t numeroErrore(Azione azione) {
    try {
        azione();
    } catch (const Errore& errore) {
        return errore.numero();
    }
    return 0;
}

TEST_F(ProprietaTest, EveryPropertyReadsEmptyBeforeItIsSet) {
    const Ricerca ricerca;
    EXPECT_EQ(ricerca.PercorsoPers(), "");
    EXPECT_EQ(ricerca.Percorso(), "");
    EXPECT_EQ(ricerca.User(), "");
    EXPECT_EQ(ricerca.Risposta(), "");
    EXPECT_EQ(ricerca.Modulo(), "");
    EXPECT_FALSE(ricerca.SoloRicerca());
    EXPECT_EQ(ricerca.Caption(), "");
    EXPECT_EQ(ricerca.StatusBar(), "");
    EXPECT_EQ(ricerca.Toolbar(), "");
    EXPECT_EQ(ricerca.Top(), "");
    EXPECT_EQ(ricerca.Left(), "");
    EXPECT_EQ(ricerca.Height(), "");
    EXPECT_EQ(ricerca.Width(), "");
    EXPECT_EQ(ricerca.WindowsState(), "");
    EXPECT_FALSE(ricerca.SelezioneMultipla());
    EXPECT_EQ(ricerca.FilterBar(), "");
    EXPECT_EQ(ricerca.CampoRicerca(), "");
    EXPECT_EQ(ricerca.AbilitaModificaCampi(), "");
}

// A text property, the session's variable behind it.
struct CasoTesto {
    const char* nome;
    void (*scrivi)(Ricerca&, const std::string&);
    std::string (*leggi)(const Ricerca&);
    Variant VariabiliGlobali::*variabile;
};

class TestoTest : public ComponenteTest, public ::testing::WithParamInterface<CasoTesto> {};

TEST_P(TestoTest, KeepsTheTextAsGivenInItsSessionVariable) {
    const CasoTesto& caso = GetParam();
    Ricerca ricerca;
    for (const std::string testo : {"C:\\Dati\\città\\", "", "007", "non un numero", " 1 "}) {
        caso.scrivi(ricerca, testo);
        EXPECT_EQ(sessione().*caso.variabile, Variant(testo));
        EXPECT_EQ(caso.leggi(ricerca), testo);
    }
    EXPECT_TRUE(registro.empty()) << "no property of these may load the window";
}

TEST_P(TestoTest, ReadsWhateverTypeTheSessionHolds) {
    const CasoTesto& caso = GetParam();
    const Ricerca ricerca;
    sessione().*caso.variabile = 11355;
    EXPECT_EQ(caso.leggi(ricerca), "11355");
    sessione().*caso.variabile = 1.5;
    EXPECT_EQ(caso.leggi(ricerca), "1,5");
    sessione().*caso.variabile = Variant::null();
    EXPECT_EQ(numeroErrore([&] { caso.leggi(ricerca); }), 94);
}

template <auto Lettore, auto Scrittore>
CasoTesto caso(const char* nome, Variant VariabiliGlobali::*variabile) {
    return {nome, [](Ricerca& r, const std::string& testo) { (r.*Scrittore)(testo); },
            [](const Ricerca& r) { return (r.*Lettore)(); }, variabile};
}

using R = Ricerca;
using V = VariabiliGlobali;
INSTANTIATE_TEST_SUITE_P(
    Ogni, TestoTest,
    ::testing::Values(
        caso<&R::PercorsoPers, &R::SetPercorsoPers>("PercorsoPers", &V::gPercorsoPers),
        caso<&R::Percorso, &R::SetPercorso>("Percorso", &V::gPercorso),
        caso<&R::User, &R::SetUser>("User", &V::gUser),
        caso<&R::Modulo, &R::SetModulo>("Modulo", &V::gModulo),
        caso<&R::Caption, &R::SetCaption>("Caption", &V::gCaption),
        caso<&R::StatusBar, &R::SetStatusBar>("StatusBar", &V::gStatusBar),
        caso<&R::Toolbar, &R::SetToolbar>("Toolbar", &V::gToolbar),
        caso<&R::Top, &R::SetTop>("Top", &V::gTop), caso<&R::Left, &R::SetLeft>("Left", &V::gLeft),
        caso<&R::Height, &R::SetHeight>("Height", &V::gHeight),
        caso<&R::Width, &R::SetWidth>("Width", &V::gWidth),
        caso<&R::WindowsState, &R::SetWindowsState>("WindowsState", &V::gWindowsState),
        caso<&R::FilterBar, &R::SetFilterBar>("FilterBar", &V::gFilterBar),
        caso<&R::CampoRicerca, &R::SetCampoRicerca>("CampoRicerca", &V::gCampoRicerca)),
    [](const auto& uno) { return std::string(uno.param.nome); });

TEST_F(ProprietaTest, TwoObjectsShareEverySetting) {
    Ricerca uno;
    const Ricerca due;
    uno.SetCaption("Clienti");
    uno.SetWidth("9000");
    EXPECT_EQ(due.Caption(), "Clienti");
    EXPECT_EQ(due.Width(), "9000");
}

TEST_F(ProprietaTest, MakingAndEndingAnObjectClearsSoloRicercaAndNothingElse) {
    sessione().gSoloRicerca = true;
    sessione().gSelezioneMultipla = true;
    sessione().gRisposta = "42";
    sessione().gRecordset = adodb::makeClientRecordset();
    {
        Ricerca ricerca;
        EXPECT_FALSE(ricerca.SoloRicerca());
        ricerca.SetSoloRicerca(true);
        EXPECT_TRUE(sessione().gSoloRicerca);
        EXPECT_TRUE(ricerca.SoloRicerca());
    }
    EXPECT_FALSE(sessione().gSoloRicerca);
    EXPECT_TRUE(sessione().gSelezioneMultipla);
    EXPECT_EQ(sessione().gRisposta, Variant("42"));
    EXPECT_NE(sessione().gRecordset, nullptr);
}

TEST_F(ProprietaTest, SecondObjectSwitchesSoloRicercaOffForTheFirst) {
    Ricerca prima;
    prima.SetSoloRicerca(true);
    const Ricerca seconda;
    EXPECT_FALSE(prima.SoloRicerca());
}

TEST_F(ProprietaTest, RispostaIsTheAnswerAsText) {
    const Ricerca ricerca;
    sessione().gRisposta = 42;
    EXPECT_EQ(ricerca.Risposta(), "42");
    sessione().gRisposta = 1234.5;
    EXPECT_EQ(ricerca.Risposta(), "1234,5");
    sessione().gRisposta = "a|b|";
    EXPECT_EQ(ricerca.Risposta(), "a|b|");
    sessione().gRisposta = true;
    EXPECT_EQ(ricerca.Risposta(), "True");
    sessione().gRisposta = Variant::null();
    EXPECT_EQ(numeroErrore([&] { (void)ricerca.Risposta(); }), 94);
}

TEST_F(ProprietaTest, SelezioneMultiplaReadsBackTheWindowsStateNotWhatWasSet) {
    Ricerca ricerca;
    ricerca.SetSelezioneMultipla(true);
    EXPECT_TRUE(sessione().gSelezioneMultipla);
    EXPECT_FALSE(ricerca.SelezioneMultipla()) << "WindowsState was never set";

    ricerca.SetWindowsState("0");
    EXPECT_FALSE(ricerca.SelezioneMultipla());
    ricerca.SetWindowsState("1");
    EXPECT_TRUE(ricerca.SelezioneMultipla());
    ricerca.SetWindowsState("-3");
    EXPECT_TRUE(ricerca.SelezioneMultipla());

    ricerca.SetSelezioneMultipla(false);
    EXPECT_FALSE(sessione().gSelezioneMultipla);
    EXPECT_TRUE(ricerca.SelezioneMultipla()) << "WindowsState is still -3";
}

TEST_F(ProprietaTest, SelezioneMultiplaOfAPlacementThatIsNoNumberIsError13) {
    Ricerca ricerca;
    ricerca.SetWindowsState("centrata");
    EXPECT_EQ(numeroErrore([&] { (void)ricerca.SelezioneMultipla(); }), 13);
}

TEST_F(ProprietaTest, FieldsThatMayBeEditedReadBackAsGivenAndShowTheButtonModifica) {
    Ricerca ricerca;
    ricerca.SetAbilitaModificaCampi("a;b");
    EXPECT_EQ(sessione().gCampiModificabili, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(ricerca.AbilitaModificaCampi(), "a;b");
    EXPECT_EQ(registro, (std::vector<std::string>{"Load", "Button Modifica true"}));
}

TEST_F(ProprietaTest, AnEmptyListOfFieldsChangesNothingAndLeavesTheWindowAlone) {
    Ricerca ricerca;
    ricerca.SetAbilitaModificaCampi("");
    EXPECT_EQ(ricerca.AbilitaModificaCampi(), "");
    EXPECT_TRUE(registro.empty());

    ricerca.SetAbilitaModificaCampi("a;b");
    registro.clear();
    ricerca.SetAbilitaModificaCampi("");
    EXPECT_EQ(ricerca.AbilitaModificaCampi(), "a;b");
    EXPECT_TRUE(registro.empty());
}

TEST_F(ProprietaTest, EmptyNamesInTheListOfFieldsAreKeptAndJoinedAsTheTextGrows) {
    Ricerca ricerca;
    const auto giro = [&](const std::string& elenco) {
        ricerca.SetAbilitaModificaCampi(elenco);
        return ricerca.AbilitaModificaCampi();
    };
    EXPECT_EQ(giro("a"), "a");
    EXPECT_EQ(giro("a;;b"), "a;;b");
    EXPECT_EQ(sessione().gCampiModificabili.size(), 3U);
    EXPECT_EQ(giro("a;"), "a;");
    EXPECT_EQ(giro(";a"), "a") << "no separator before the first text";
    EXPECT_EQ(sessione().gCampiModificabili, (std::vector<std::string>{"", "a"}));
    EXPECT_EQ(giro(";;"), "");
    EXPECT_EQ(giro(" a ; b "), " a ; b ");
    EXPECT_EQ(giro("città;perché"), "città;perché");
}

TEST_F(ProprietaTest, ListOfFieldsIsStoredEvenWhereTheWindowCannotBeLoaded) {
    cade("Load", 430, "nessuno schermo");
    Ricerca ricerca;
    EXPECT_EQ(numeroErrore([&] { ricerca.SetAbilitaModificaCampi("a;b"); }), 430);
    EXPECT_EQ(ricerca.AbilitaModificaCampi(), "a;b");
    EXPECT_TRUE(messaggi.empty()) << "a property shows no box of its own";
}

TEST_F(ProprietaTest, QueryBaseAndRecordsetsGoToTheSession) {
    Ricerca ricerca;
    ricerca.SetQueryBase("SELECT * FROM clienti WHERE città = 'Forlì'");
    EXPECT_EQ(sessione().gQueryBase, "SELECT * FROM clienti WHERE città = 'Forlì'");

    const auto righe = adodb::makeClientRecordset();
    const auto operatori = adodb::makeClientRecordset();
    const auto viste = adodb::makeClientRecordset();
    ricerca.SetRecordset(righe);
    ricerca.SetRecordsetOperatori(operatori);
    ricerca.SetRecordsetViste(viste);
    EXPECT_EQ(sessione().gRecordset, righe);
    EXPECT_EQ(sessione().gRecordsetOperatori, operatori);
    EXPECT_EQ(sessione().gRecordsetViste, viste);
}

TEST_F(ProprietaTest, SessionKeepsARecordsetThatTheHostLetsGoUntilItSetsNothing) {
    Ricerca ricerca;
    std::weak_ptr<adodb::Recordset> debole;
    {
        const auto righe = adodb::makeClientRecordset();
        debole = righe;
        ricerca.SetRecordset(righe);
    }
    EXPECT_FALSE(debole.expired());
    ricerca.SetRecordset(nullptr);
    EXPECT_TRUE(debole.expired());
}

TEST_F(ProprietaTest, AbilitaComboInvertsEveryColumnsSwitch) {
    Ricerca ricerca;
    ricerca.abilitaCombo();
    EXPECT_EQ(finestra->combo, (std::vector<bool>{true, false, true}));
    ricerca.abilitaCombo();
    EXPECT_EQ(finestra->combo, (std::vector<bool>{false, true, false}));
    EXPECT_EQ(registro.front(), "Load");
}

TEST_F(ProprietaTest, AbilitaComboOfAGridWithoutColumnsDoesNothing) {
    Ricerca ricerca;
    search_window::frmRicerca();
    finestra->combo.clear();
    ricerca.abilitaCombo();
    EXPECT_EQ(registro, std::vector<std::string>{"Load"});
}

TEST_F(ProprietaTest, VerIsTheVersionWithThreeDigitsForMinorAndRevision) {
    EXPECT_EQ(Ricerca().Ver(), "1.000.094");
}

TEST(VersioneTest, NumbersOfMoreThanThreeDigitsKeepTheirLastThree) {
    EXPECT_EQ(testoVersione({1, 0, 94}), "1.000.094");
    EXPECT_EQ(testoVersione({2, 7, 100}), "2.007.100");
    EXPECT_EQ(testoVersione({12, 1234, 5678}), "12.234.678");
    EXPECT_EQ(testoVersione({0, 0, 0}), "0.000.000");
    EXPECT_STREQ(versioneBreve(), "1.0.94");
}

} // namespace
} // namespace norvel::tests
