// Long work on the real window: its progress, and stopping it.
#include "search_window/Avanzamento.h"

#include "tests/search_window/Banco.h"

#include <wx/dialog.h>
#include <wx/gauge.h>

#include <thread>

namespace norvel::search_window {
namespace {

// Steps of some milliseconds, as many as the test lets it do.
class Lungo : public output::Lavoro {
  public:
    bool passo() override {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        if (cade) throw Errore(61, "Disco pieno");
        if (ingordo) std::string().reserve(std::size_t{1} << (sizeof(void*) * 8 - 2));
        ++passi;
        return !finito;
    }
    double fatto() const override { return quanto; }

    int passi = 0;
    double quanto = 0.25;
    bool finito = false, cade = false, ingordo = false;
};

class AvanzamentoTest : public Banco {
  protected:
    static wxDialog* dialogo() {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* d = dynamic_cast<wxDialog*>(w); d && d->IsShown()) return d;
        return nullptr;
    }
    static wxGauge* barra() {
        for (wxWindow* w : dialogo()->GetChildren())
            if (auto* g = dynamic_cast<wxGauge*>(w)) return g;
        return nullptr;
    }
    // The work, begun by a step of the script.
    tests::Script& comincia() {
        return pronta().then("comincia", [this] {
            try {
                esito = eseguiConAvanzamento(*finestra().Finestra, lungo) ? 1 : 0;
            } catch (const Errore& errore) {
                caduto = errore.numero();
            }
            finestra().Scarica(ModoScarico::Codice);
        });
    }

    Lungo lungo;
    int esito = -1;
    std::int64_t caduto = 0;
};

TEST_F(AvanzamentoTest, AfterASecondItIsShownAndAnnullaStopsIt) {
    comincia()
        .waitFor("si vede", [] { return dialogo() && dialogo()->IsActive(); })
        .then("annulla", [&] {
            EXPECT_EQ(barra()->GetValue(), 250);
            EXPECT_FALSE(finestra().Finestra->IsEnabled());
            const int prima = lungo.passi;
            EXPECT_TRUE(robot.waitUntil([&] { return lungo.passi > prima + 3; }))
                << "the work goes on";
            tests::screenshotOfDisplay("avanzamento");
            robot.press(WXK_ESCAPE);
        });
    cerca(clienti(3));
    EXPECT_EQ(esito, 0);
}

TEST_F(AvanzamentoTest, WorkThatEndsClosesIt) {
    lungo.quanto = -1; // nobody knows
    comincia().waitFor("si vede", [] { return dialogo() != nullptr; }).then("finisce", [&] {
        lungo.finito = true;
    });
    cerca(clienti(3));
    EXPECT_EQ(esito, 1);
}

TEST_F(AvanzamentoTest, AnErrorEndsItAndIsRaised) {
    comincia().waitFor("si vede", [] { return dialogo() != nullptr; }).then("cade", [&] {
        lungo.cade = true;
    });
    cerca(clienti(3));
    EXPECT_EQ(caduto, 61);
}

TEST_F(AvanzamentoTest, MemoryThatRunsOutEndsItAndIsRaised) {
    comincia().waitFor("si vede", [] { return dialogo() != nullptr; }).then("ingordo", [&] {
        lungo.ingordo = true;
    });
    cerca(clienti(3));
    EXPECT_EQ(caduto, 7);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(AvanzamentoTest, ShortWorkShowsNothing) {
    lungo.finito = true;
    comincia();
    cerca(clienti(3));
    EXPECT_EQ(esito, 1);
    EXPECT_EQ(lungo.passi, 1);
}

} // namespace
} // namespace norvel::search_window
