// Servers that refuse a password, or do not answer at all.
#include "tests/search_window/server/BancoServer.h"

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace norvel::search_window {
namespace {

using namespace adodb;

class AccessoServer : public BancoServer {
  protected:
    static constexpr const char* nuova = "Cambiata!9";
    void cambiaPassword(const char* in) const {
        altrove(
            pick("ALTER USER 'prova'@'127.0.0.1' IDENTIFIED BY '", "ALTER USER prova PASSWORD '") +
            in + "'");
    }
    void TearDown() override {
        server().thaw();
        cambiaPassword(TestServer::password);
        BancoServer::TearDown();
    }
    // What the program writes, and how it ends.
    static std::pair<std::string, int> programma(const std::string& stringa) {
        const std::string comando = std::string(NR_PROGRAMMA) + " --connessione '" + stringa +
                                    "' --QueryBase 'SELECT 1 AS codice' --CampoRicerca codice 2>&1";
        std::FILE* uscita = ::popen(comando.c_str(), "r");
        std::string testo;
        std::array<char, 4096> parte{};
        while (std::fgets(parte.data(), parte.size(), uscita))
            testo += parte.data();
        return {testo, WEXITSTATUS(::pclose(uscita))};
    }
};
SU_SERVER(AccessoServer);

TEST_P(AccessoServer, ThePasswordIsChangedUnderAnOpenWindow) {
    cercaSu(
        clientiServer(),
        [&] {
            cambiaPassword(nuova);
            tagliaConnessioni();
            aggiorna();
            ASSERT_TRUE(dettoAlmeno(1));
            EXPECT_NE(boxes.lastText().find("L'accesso al database è stato rifiutato: utente o "
                                            "password non validi."),
                      std::string::npos)
                << boxes.lastText();
            EXPECT_EQ(boxes.lastText().find(nuova), std::string::npos);
            EXPECT_EQ(stato(), "Record 1 di 30");
            apreLista(Citta);
            EXPECT_TRUE(robot.waitUntil([] { return listaNonRiuscita(); }, 60000));
            robot.press(WXK_ESCAPE);
            usaLeRighe();
            cambiaPassword(TestServer::password);
            aggiornaConUnaInPiu();
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "31");
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_P(AccessoServer, TheProgramTellsARefusedPasswordWithoutRepeatingIt) {
    const auto [testo, stato] = programma(server().connection("sbagliatissima"));
    EXPECT_EQ(stato, 2);
    EXPECT_NE(testo.find("L'accesso al database è stato rifiutato"), std::string::npos) << testo;
    EXPECT_EQ(testo.find("sbagliatissima"), std::string::npos) << testo;
    esamina(testo);
}

TEST_P(AccessoServer, AServerThatDoesNotAnswerHoldsNothingUp) {
    cercaSu(
        clientiServer(),
        [&] {
            altrove("INSERT INTO clienti VALUES (31, 'Cliente 31', 'Bari')");
            server().freeze();
            aggiorna();
            robot.press(WXK_DOWN);
            EXPECT_EQ(stato(), "Record 2 di 30");
            apreLista(Citta);
            EXPECT_EQ(voci().size(), 4U);
            robot.press(WXK_ESCAPE);
            EXPECT_FALSE(lista().IsShown());
            usaLeRighe();
            server().thaw();
            aggiorna(); // the first one may have been told as failed by now
            EXPECT_TRUE(righeArrivano(31));
            apreLista(Citta);
            EXPECT_TRUE(listaArriva(7));
            robot.press(WXK_ESCAPE);
        },
        0);
    EXPECT_EQ(ricerca.Risposta(), "31");
}

TEST_P(AccessoServer, AWindowClosesWhileItsServerDoesNotAnswer) {
    cercaSu(
        clientiServer(),
        [&] {
            server().freeze();
            aggiorna();
        },
        4);
    EXPECT_EQ(ricerca.Risposta(), "5");
    variabiliGlobali() = {}; // the rows go
    server().thaw();
}

} // namespace
} // namespace norvel::search_window
