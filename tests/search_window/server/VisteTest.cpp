// Views that are saved while their table's server fails: what stays as it was, and that saving
// works again.
#include "tests/search_window/server/BancoServer.h"

#include <thread>

namespace norvel::search_window {
namespace {

using Testi = std::vector<std::string>;

class VisteServer : public BancoServer {
  protected:
    void salva(std::string_view nome, bool preferita = false) {
        scriviNome(nome);
        if (configura().ChkPredefinito->GetValue() != preferita) premi(configura().ChkPredefinito);
        boxes.answer(BoxAnswer::Yes);
        premi(configura().CmdSalva);
    }
    // The last box is the usual one of a routine that fails, with these words.
    void errore(const char* parole) const {
        const std::string testo = boxes.lastText();
        EXPECT_TRUE(
            testo.starts_with("Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"))
            << testo;
        EXPECT_NE(testo.find(parole), std::string::npos) << testo;
        EXPECT_TRUE(configura().Finestra->IsShown());
    }
    void salvata(std::string_view nome) {
        salva(nome);
        EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
    }
    void rifiutata(std::string_view nome) {
        salva(nome);
        EXPECT_TRUE(boxes.lastText().starts_with("Impossibile salvare la vista con questo nome"))
            << boxes.lastText();
    }
    // One search, in which the operator does this on the page of views.
    void nellaConfigurazione(const std::function<void()>& passo) {
        apriViste();
        pronta();
        apreConfigura();
        intero("prova", [&] {
            vai("SALVA");
            passo();
        });
        chiudeConfigura();
        script.then("sceglie", [this] {
            robot.click(griglia(), cella(3));
            robot.press(WXK_RETURN);
        });
        cerca(clientiServer());
        EXPECT_EQ(ricerca.Risposta(), "4") << "the rows of the search are not touched";
    }
    static constexpr const char* interrotta = "La connessione con «127.0.0.1/azienda»";
};
SU_SERVER(VisteServer);

TEST_P(VisteServer, TheServerStopsBeforeAViewIsSaved) {
    nellaConfigurazione([&] {
        salvata("Prima");
        server().stop();
        salva("Mia", true);
        errore(interrotta);
        EXPECT_EQ(voci(configura().Lista), Testi{"Prima"});
        tests::screenshot(*configura().Finestra, "server-fermo-vista-" + GetParam());
        salva("Prima"); // a row that is there
        errore(interrotta);
        scegli(configura().Lista, "Prima");
        boxes.answer(BoxAnswer::Yes);
        premi(configura().CmdEliminaVista);
        errore(interrotta);

        server().start();
        amministra = makeConnection(server().connection());
        EXPECT_EQ(visteSalvate(), "Prima");
        rifiutata("Mia"); // its file was written before the row was refused
        salvata("Altra");
        EXPECT_EQ(voci(configura().Lista), (Testi{"Prima", "Altra"}));
        salvata("prima");
    });
    EXPECT_TRUE(esiste("ROSSIMia.grx"));
    EXPECT_EQ(visteSalvate(), "Altra prima");
}

TEST_P(VisteServer, TheServerStopsWhileAViewIsSaved) {
    nellaConfigurazione([&] {
        salvata("Prima");
        blocca("ricerchepers");
        std::thread arresto([&] { // once the server has the row, and cannot write it
            for (int n = 0; inAttesa() == 0 && n < 3000; ++n)
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            server().stop();
        });
        salva("Mia");
        arresto.join();
        errore(interrotta);
        EXPECT_EQ(voci(configura().Lista), Testi{"Prima"});
        server().start();
        amministra = makeConnection(server().connection());
        EXPECT_EQ(visteSalvate(), "Prima");
        salvata("Altra");
    });
    EXPECT_EQ(visteSalvate(), "Altra Prima");
}

TEST_P(VisteServer, ConnectionsThatWereCutAreNoMatterForAView) {
    nellaConfigurazione([&] {
        salvata("Prima");
        tagliaConnessioni();
        salvata("Mia");
        server().stop();
        server().start();
        amministra = makeConnection(server().connection());
        salvata("Altra");
    });
    EXPECT_EQ(visteSalvate(), "Altra Mia Prima");
}

TEST_P(VisteServer, ALockedTableOfViewsIsSaidAndLeftAlone) {
    nellaConfigurazione([&] {
        salvata("Prima");
        blocca("ricerchepers");
        salva("Mia");
        errore("ha i dati bloccati da altri. Riprovare tra poco.");
        salva("Prima", true);
        errore("ha i dati bloccati da altri. Riprovare tra poco.");
        libera();
        EXPECT_EQ(visteSalvate(), "Prima");
        salvata("Altra");
    });
    EXPECT_EQ(visteSalvate(), "Altra Prima");
}

} // namespace
} // namespace norvel::search_window
