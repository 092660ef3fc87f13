// The method that opens the window: what it asks of the window, in which order, and what happens
// when a step fails.
#include "tests/component/Componente.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace norvel::tests {
namespace {

using Righe = std::vector<std::string>;

class RicercaTest : public ComponenteTest {
  protected:
    void SetUp() override {
        ComponenteTest::SetUp();
        azioni["Show"] = [this] { scarica(); }; // the operator closes the window at once
    }

    // The part of the record that sizes and places the window.
    Righe geometria() const {
        Righe parte;
        for (const std::string& riga : registro)
            for (const char* nome : {"Height", "Width", "Top", "Left", "WindowState", "centraForm"})
                if (riga.rfind(nome, 0) == 0) parte.push_back(riga);
        return parte;
    }
    bool fatto(const std::string& riga) const {
        return std::find(registro.begin(), registro.end(), riga) != registro.end();
    }

    Ricerca ricerca;
};

constexpr const char* boxErrore = "Errore nella funzione NorvelRicerca.Ricerca\r";

TEST_F(RicercaTest, AsksTheWindowForEverythingInOrderAndShowsItModally) {
    ricerca.SetStatusBar("0");
    ricerca.SetToolbar("0");
    ricerca.SetCaption("Ricerca clienti");
    ricerca.SetWidth("9000");
    ricerca.SetHeight("6000,5");
    ricerca.SetTop("300");
    ricerca.SetLeft("-150");
    ricerca.Cerca();
    EXPECT_EQ(registro, (Righe{"Load", "StatusBar.Visible false", "BarraBase.Visible true",
                               "Caption Ricerca clienti", "Height 6000.5", "Width 9000", "Top 300",
                               "Left -150", "Recordset Nothing", "ImpostaStileGriglia",
                               "DataSource", "FilterCombo 0 true", "FilterCombo 1 false",
                               "FilterCombo 2 true", "Show modal"}));
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RicercaTest, OpensAtTheDefaultSizeWhichReadsBackAfterwards) {
    ricerca.Cerca();
    EXPECT_EQ(geometria(), (Righe{"Height 7000", "Width 11355", "Top 0", "Left 0"}));
    EXPECT_EQ(ricerca.Width(), "11355");
    EXPECT_EQ(ricerca.Height(), "7000");
    EXPECT_EQ(sessione().gWidth, Variant(std::int16_t{11355}));
    EXPECT_EQ(sessione().gHeight, Variant(std::int16_t{7000}));
}

TEST_F(RicercaTest, ASizeOfZeroIsTheDefaultEachOnItsOwn) {
    ricerca.SetWidth("0");
    ricerca.SetHeight("5000");
    ricerca.Cerca();
    EXPECT_EQ(ricerca.Width(), "11355");
    EXPECT_EQ(ricerca.Height(), "5000");
    EXPECT_TRUE(fatto("Height 5000"));
    EXPECT_TRUE(fatto("Width 11355"));
}

TEST_F(RicercaTest, WindowsState1CentresAndIgnoresTopAndLeft) {
    ricerca.SetWindowsState("1");
    ricerca.SetTop("300");
    ricerca.SetLeft("pippo");
    ricerca.Cerca();
    EXPECT_EQ(geometria(), (Righe{"Height 7000", "Width 11355", "centraForm"}));
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RicercaTest, WindowsState2Maximises) {
    ricerca.SetWindowsState("2");
    ricerca.SetTop("300");
    ricerca.Cerca();
    EXPECT_EQ(geometria(), (Righe{"Height 7000", "Width 11355", "WindowState 2"}));
}

TEST_F(RicercaTest, WindowsState0OrAnyOtherNumberPlacesAtTopAndLeft) {
    ricerca.SetTop("300");
    ricerca.SetLeft("450");
    for (const std::string stato : {"0", "3", "-1", "1,5"}) {
        registro.clear();
        ricerca.SetWindowsState(stato);
        ricerca.Cerca();
        EXPECT_EQ(geometria(), (Righe{"Height 7000", "Width 11355", "Top 300", "Left 450"}))
            << stato;
    }
}

TEST_F(RicercaTest, WindowsStateUnsetPlacesAtZeroWhenTopAndLeftAreUnset) {
    ricerca.Cerca();
    EXPECT_EQ(geometria(), (Righe{"Height 7000", "Width 11355", "Top 0", "Left 0"}));
}

TEST_F(RicercaTest, ToolbarZeroOrUnsetMakesTheToolbarVisibleOthersLeaveIt) {
    ricerca.Cerca();
    EXPECT_TRUE(fatto("BarraBase.Visible true"));
    registro.clear();
    ricerca.SetToolbar("0");
    ricerca.Cerca();
    EXPECT_TRUE(fatto("BarraBase.Visible true"));
    registro.clear();
    ricerca.SetToolbar("1");
    ricerca.Cerca();
    EXPECT_FALSE(fatto("BarraBase.Visible true"));
    EXPECT_FALSE(fatto("BarraBase.Visible false"));
}

TEST_F(RicercaTest, StatusBarZeroOrUnsetHidesTheStatusBarOthersLeaveIt) {
    ricerca.Cerca();
    EXPECT_TRUE(fatto("StatusBar.Visible false"));
    registro.clear();
    ricerca.SetStatusBar("0");
    ricerca.Cerca();
    EXPECT_TRUE(fatto("StatusBar.Visible false"));
    registro.clear();
    ricerca.SetStatusBar("-1");
    ricerca.Cerca();
    EXPECT_FALSE(fatto("StatusBar.Visible false"));
    EXPECT_FALSE(fatto("StatusBar.Visible true"));
}

TEST_F(RicercaTest, ResultIsEmptyThoughARowWasPickedAndThePickIsInRisposta) {
    azioni["Show"] = [this] {
        sessione().gRisposta = 4711;
        scarica();
    };
    const Variant risultato = ricerca.Cerca();
    EXPECT_TRUE(risultato.isEmpty());
    EXPECT_EQ(ricerca.Risposta(), "4711");
}

TEST_F(RicercaTest, AnAnswerIsNotClearedByTheNextSearch) {
    sessione().gRisposta = "vecchia";
    ricerca.Cerca();
    EXPECT_EQ(ricerca.Risposta(), "vecchia");
}

TEST_F(RicercaTest, HandsTheHostsRecordsetToTheDataControl) {
    const auto righe = adodb::makeClientRecordset();
    ricerca.SetRecordset(righe);
    adodb::RecordsetRef ricevuto;
    azioni["Recordset"] = [&] { ricevuto = finestra->righe; };
    ricerca.Cerca();
    EXPECT_EQ(ricevuto, righe);
}

TEST_F(RicercaTest, WindowIsMarkedNotReadyAfterTheGridIsBoundAndBeforeTheCombos) {
    sessione().gFinestraPronta = true;
    bool prontaAlCollegamento = false, prontaAlleCombo = true;
    azioni["DataSource"] = [&] { prontaAlCollegamento = sessione().gFinestraPronta; };
    azioni["FilterCombo"] = [&] { prontaAlleCombo = sessione().gFinestraPronta; };
    ricerca.Cerca();
    EXPECT_TRUE(prontaAlCollegamento);
    EXPECT_FALSE(prontaAlleCombo);
}

TEST_F(RicercaTest, EachSearchLoadsTheWindowAnewOnceItWasUnloaded) {
    ricerca.Cerca();
    ricerca.Cerca();
    EXPECT_EQ(std::count(registro.begin(), registro.end(), "Load"), 2);
}

TEST_F(RicercaTest, AWindowThatIsLoadedAlreadyIsUsed) {
    ricerca.SetAbilitaModificaCampi("a");
    ricerca.Cerca();
    EXPECT_EQ(std::count(registro.begin(), registro.end(), "Load"), 1);
    EXPECT_EQ(registro[1], "Button Modifica true");
}

// --- failures while the window is prepared ---

// A call of the window that fails, and the settings that lead to it.
struct CasoCaduta {
    std::string chiamata;
    std::string windowsState = "0";
};

class CadutaTest : public RicercaTest, public ::testing::WithParamInterface<CasoCaduta> {};

TEST_P(CadutaTest, EndsTheCallThereWithOneBoxAndAnEmptyResult) {
    ricerca.SetWindowsState(GetParam().windowsState);
    cade(GetParam().chiamata, 1234, "Guasto di prova");
    const Variant risultato = ricerca.Cerca();
    EXPECT_TRUE(risultato.isEmpty());
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_EQ(messaggi[0], (Messaggio{boxErrore + std::string("1234 - Guasto di prova"),
                                      "NorvelRicerca", BoxIcon::Critical, BoxButtons::Ok}));
    ASSERT_FALSE(registro.empty());
    EXPECT_EQ(registro.back().substr(0, GetParam().chiamata.size()), GetParam().chiamata)
        << "nothing is asked of the window after the step that failed";
    EXPECT_FALSE(fatto("Show modal"));
}

INSTANTIATE_TEST_SUITE_P(Ogni, CadutaTest,
                         ::testing::Values(CasoCaduta{"Load"}, CasoCaduta{"StatusBar.Visible"},
                                           CasoCaduta{"BarraBase.Visible"}, CasoCaduta{"Caption"},
                                           CasoCaduta{"Height"}, CasoCaduta{"Width"},
                                           CasoCaduta{"centraForm", "1"},
                                           CasoCaduta{"WindowState", "2"}, CasoCaduta{"Top"},
                                           CasoCaduta{"Left"}, CasoCaduta{"Recordset"},
                                           CasoCaduta{"ImpostaStileGriglia"},
                                           CasoCaduta{"DataSource"}, CasoCaduta{"FilterCombo"}),
                         [](const auto& caso) {
                             std::string nome = caso.param.chiamata;
                             std::erase(nome, '.');
                             return nome;
                         });

TEST_F(RicercaTest, AWindowWhosePreparationFailedStaysLoadedAndTheNextCallUsesIt) {
    cade("ImpostaStileGriglia");
    ricerca.Cerca();
    ASSERT_NE(finestra, nullptr);
    azioni.erase("ImpostaStileGriglia");
    registro.clear();
    ricerca.Cerca();
    EXPECT_FALSE(fatto("Load"));
    EXPECT_TRUE(fatto("Show modal"));
    EXPECT_EQ(messaggi.size(), 1U);
}

TEST_F(RicercaTest, SizesReadBackAsDefaultsThoughALaterStepFailed) {
    cade("Height");
    ricerca.Cerca();
    EXPECT_EQ(ricerca.Width(), "11355");
    EXPECT_EQ(ricerca.Height(), "7000");
}

// A setting whose text is no number, the last thing asked of the window before it is read.
struct CasoTestoNonNumerico {
    const char* nome;
    void (Ricerca::*scrivi)(const std::string&);
    const char* ultima;
};

class NonNumericoTest : public RicercaTest,
                        public ::testing::WithParamInterface<CasoTestoNonNumerico> {};

TEST_P(NonNumericoTest, IsError13InTheBox) {
    for (const std::string testo : {"pippo", "", "1 2", "0x10"}) {
        registro.clear();
        messaggi.clear();
        scarica();
        (ricerca.*GetParam().scrivi)(testo);
        EXPECT_TRUE(ricerca.Cerca().isEmpty());
        ASSERT_EQ(messaggi.size(), 1U) << testo;
        EXPECT_EQ(messaggi[0].testo, boxErrore + std::string("13 - Tipo non corrispondente"));
        EXPECT_EQ(registro.back(), GetParam().ultima);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Ogni, NonNumericoTest,
    ::testing::Values(
        CasoTestoNonNumerico{"StatusBar", &Ricerca::SetStatusBar, "Load"},
        CasoTestoNonNumerico{"Toolbar", &Ricerca::SetToolbar, "StatusBar.Visible false"},
        CasoTestoNonNumerico{"Width", &Ricerca::SetWidth, "Caption"},
        CasoTestoNonNumerico{"Height", &Ricerca::SetHeight, "Caption"},
        CasoTestoNonNumerico{"WindowsState", &Ricerca::SetWindowsState, "Width 11355"},
        CasoTestoNonNumerico{"Top", &Ricerca::SetTop, "Width 11355"},
        CasoTestoNonNumerico{"Left", &Ricerca::SetLeft, "Top 0"}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(RicercaTest, NumbersAreReadByItalianConventionsInEverySetting) {
    ricerca.SetStatusBar(" 0,0 ");
    ricerca.SetToolbar("00");
    ricerca.SetWidth("9.000");
    ricerca.SetHeight("6000,5");
    ricerca.SetWindowsState("1,0");
    ricerca.Cerca();
    EXPECT_TRUE(messaggi.empty());
    EXPECT_TRUE(fatto("StatusBar.Visible false"));
    EXPECT_TRUE(fatto("BarraBase.Visible true"));
    EXPECT_EQ(geometria(), (Righe{"Height 6000.5", "Width 9000", "centraForm"}));
}

TEST_F(RicercaTest, AFailureThatIsNoErroreReachesTheBoxToo) {
    azioni["Caption"] = [] { throw std::bad_alloc(); };
    ricerca.Cerca();
    azioni["Caption"] = [] { throw std::runtime_error("rotto"); };
    ricerca.Cerca();
    azioni["Caption"] = [] { throw 5; };
    ricerca.Cerca();
    ASSERT_EQ(messaggi.size(), 3U);
    EXPECT_EQ(messaggi[0].testo, boxErrore + std::string("7 - Memoria esaurita"));
    EXPECT_EQ(messaggi[1].testo, boxErrore + std::string("51 - Errore interno: rotto"));
    EXPECT_EQ(messaggi[2].testo, boxErrore + std::string("51 - Errore interno"));
}

TEST_F(RicercaTest, AProgramWithoutAnyWindowSaysSoInTheBox) {
    search_window::impostaFinestraRicerca({});
    ricerca.Cerca();
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_EQ(messaggi[0].testo,
              boxErrore +
                  std::string("91 - Variabile oggetto o variabile del blocco With non impostata"));
}

// --- failures of the show ---

TEST_F(RicercaTest, AWindowThatIsShownAlreadyIsShownModelesslyWithoutABox) {
    int volte = 0;
    azioni["Show"] = [&] {
        if (++volte == 1) throw Errore(400, "Form già visualizzato");
    };
    EXPECT_TRUE(ricerca.Cerca().isEmpty());
    EXPECT_EQ(registro[registro.size() - 2], "Show modal");
    EXPECT_EQ(registro.back(), "Show modeless");
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RicercaTest, AnyOtherFailureOfTheShowIsIgnored) {
    cade("Show", 5, "guasto");
    EXPECT_TRUE(ricerca.Cerca().isEmpty());
    EXPECT_EQ(registro.back(), "Show modal");
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RicercaTest, AFailureOfTheModelessShowIsIgnoredToo) {
    cade("Show", 400, "Form già visualizzato");
    EXPECT_TRUE(ricerca.Cerca().isEmpty());
    EXPECT_EQ(registro.back(), "Show modeless");
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RicercaTest, CalledFromTheWindowsOwnEventLoopItPreparesAgainAndReturnsAtOnce) {
    bool mostrata = false;
    std::size_t primaDelSecondo = 0;
    azioni["Show"] = [&] {
        if (registro.back() == "Show modeless") return;
        if (mostrata) throw Errore(400, "Form già visualizzato");
        mostrata = true;
        primaDelSecondo = registro.size();
        Ricerca seconda;
        seconda.SetCaption("di nuovo");
        seconda.Cerca();
        scarica();
    };
    ricerca.Cerca();
    ASSERT_GT(registro.size(), primaDelSecondo);
    EXPECT_EQ(registro[primaDelSecondo], "StatusBar.Visible false") << "no second load";
    EXPECT_TRUE(fatto("Caption di nuovo"));
    EXPECT_EQ(registro.back(), "Show modeless");
    EXPECT_TRUE(messaggi.empty());
}

// --- threads ---

// Runs an action on a thread of its own and gives the Errore that left it.
template <class Azione>
std::optional<Errore> erroreAltrove(Azione azione) {
    std::optional<Errore> caduta;
    std::thread([&] {
        try {
            azione();
        } catch (const Errore& errore) {
            caduta = errore;
        }
    }).join();
    return caduta;
}

TEST_F(RicercaTest, ACallFromAnotherThreadWhileTheWindowIsOpenIsAClearError) {
    std::optional<Errore> cerca, combo, campi;
    std::size_t chiamate = 0, dopo = 0;
    azioni["Show"] = [&] {
        chiamate = registro.size();
        cerca = erroreAltrove([&] { ricerca.Cerca(); });
        combo = erroreAltrove([&] { ricerca.abilitaCombo(); });
        campi = erroreAltrove([&] { ricerca.SetAbilitaModificaCampi("a"); });
        dopo = registro.size();
        scarica();
    };
    ricerca.Cerca();
    const Errore atteso(430, "La finestra di ricerca è aperta in un altro thread");
    EXPECT_EQ(cerca, atteso);
    EXPECT_EQ(combo, atteso);
    EXPECT_EQ(campi, atteso);
    EXPECT_EQ(chiamate, dopo) << "the window is not touched from the other thread";
    EXPECT_TRUE(messaggi.empty()) << "no box can be shown on the other thread";
}

TEST_F(RicercaTest, OnceTheWindowIsClosedTheSearchMovesToAnotherThread) {
    ricerca.Cerca();
    EXPECT_EQ(erroreAltrove([&] { ricerca.Cerca(); }), std::nullopt);
    ricerca.Cerca();
    EXPECT_EQ(std::count(registro.begin(), registro.end(), "Show modal"), 3);
}

TEST_F(RicercaTest, AFailedPreparationLeavesOtherThreadsFree) {
    cade("Caption");
    ricerca.Cerca();
    azioni.erase("Caption");
    EXPECT_EQ(erroreAltrove([&] { ricerca.Cerca(); }), std::nullopt);
}

TEST_F(RicercaTest, AWindowSystemThatBelongsToAnotherThreadIsNoBoxButTheError) {
    azioni["Load"] = [] { throw erroreAltroThread(); };
    try {
        ricerca.Cerca();
        FAIL() << "no error";
    } catch (const Errore& errore) {
        EXPECT_EQ(errore, erroreAltroThread());
    }
    EXPECT_TRUE(messaggi.empty());
}

} // namespace
} // namespace norvel::tests
