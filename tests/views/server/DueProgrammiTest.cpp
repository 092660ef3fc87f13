// Two programs that save views in one table at the same time, each with the commands of the
// configuration window's page of views.
#include "platform/runtime/MessageBox.h"
#include "tests/platform/adodb/odbc/Servers.h"
#include "tests/views/ListaProva.h"
#include "views/Salvataggio.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace norvel::views {
namespace {

namespace fs = std::filesystem;
using namespace adodb;

// One operator's session over the server's table; boxes are answered with Yes and kept.
class Operatore {
  public:
    Operatore(const std::string& connessione, const fs::path& cartella, const std::string& utente) {
        impostaGestoreMessaggi([this](const Messaggio& box) {
            ultima_ = box.testo;
            return box.pulsanti == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
        });
        sessione_.gPercorso = cartella.string() + "\\";
        sessione_.gPercorsoPers = cartella.string() + "\\";
        sessione_.gUser = utente;
        sessione_.gModulo = "CLI";
        auto viste = makeClientRecordset();
        viste->Open("SELECT * FROM ricerchepers", connessione, adOpenStatic, adLockOptimistic,
                    adCmdText);
        sessione_.gRecordsetViste = viste;
        CaricaElencoViste(sessione_, lista_);
    }
    ~Operatore() { impostaGestoreMessaggi(nullptr); }
    Operatore(const Operatore&) = delete;
    Operatore& operator=(const Operatore&) = delete;

    // What the last box says.
    const std::string& salva(const std::string& nome) {
        nome_ = nome;
        salvaVista(sessione_, parti());
        return ultima_;
    }
    const std::string& elimina(const std::string& nome) {
        for (int i = 0; i < lista_.ListCount(); ++i)
            if (lista_.List(i) == nome) lista_.SetListIndex(i);
        eliminaVista(sessione_, parti());
        return ultima_;
    }

  private:
    PartiSalvataggio parti() {
        return {custode_,
                lista_,
                [this] { return nome_; },
                [this](const std::string& testo) { nome_ = testo; },
                [] { return true; },
                [](bool) {},
                [] {},
                [] {},
                [] {},
                [] {}};
    }
    VariabiliGlobali sessione_;
    ListaProva lista_;
    std::string nome_, ultima_;
    grid::LayoutKeeper custode_{[] {
                                    grid::Layout presente;
                                    presente.Columns.resize(1);
                                    presente.Columns[0].DataField = "codice";
                                    return presente;
                                },
                                [](const grid::Layout&) {}};
};

class DueProgrammi : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override {
        cartella = fs::temp_directory_path() /
                   ("nr_due_programmi_" + std::to_string(std::random_device()()));
        fs::create_directories(cartella);
        auto& server = testServer(GetParam());
        connessione = makeConnection();
        connessione->Open(server.connection());
        connessione->Execute("DROP TABLE IF EXISTS ricerchepers");
        connessione->Execute(
            "CREATE TABLE ricerchepers (codiceoperatore varchar(50), codicericerca varchar(50), "
            "NomeVista varchar(50), preferito " +
            std::string(server.isPostgres() ? "boolean" : "tinyint(1)") +
            ", PRIMARY KEY (codiceoperatore, codicericerca, NomeVista))");
    }
    void TearDown() override {
        connessione->Close();
        fs::remove_all(cartella);
    }
    // Runs both in processes of their own, the operators' sessions open before either does
    // anything; their statuses.
    std::array<int, 2> insieme(const std::function<std::string(int)>& utente,
                               const std::function<int(Operatore&)>& programma) const {
        std::array<int, 2> pronti{};
        std::array<int, 2> via{};
        EXPECT_EQ(::pipe(pronti.data()) | ::pipe(via.data()), 0);
        std::array<pid_t, 2> figli{};
        for (int i = 0; i < 2; ++i) {
            figli[i] = ::fork();
            if (figli[i] != 0) continue;
            int stato = 99;
            try {
                const fs::path propria = cartella / std::to_string(i);
                fs::create_directories(propria);
                Operatore operatore(stringa(), propria, utente(i));
                char segno = 0;
                const bool detto = ::write(pronti[1], "x", 1) == 1;
                ::close(pronti[1]); // or the other program's early end is not seen
                if (detto && ::read(via[0], &segno, 1) == 1) stato = programma(operatore);
            } catch (const std::exception& errore) {
                std::fprintf(stderr, "%s\n", errore.what());
            }
            ::_exit(stato);
        }
        ::close(pronti[1]); // a program that ends early is not waited for
        std::array<char, 2> segni{'x', 'x'};
        for (int i = 0; i < 2 && ::read(pronti[0], segni.data(), 1) == 1; ++i) {
        }
        EXPECT_EQ(::write(via[1], segni.data(), segni.size()), 2);
        std::array<int, 2> stati{};
        for (int i = 0; i < 2; ++i) {
            int stato = -1;
            ::waitpid(figli[i], &stato, 0);
            stati[i] = WEXITSTATUS(stato);
        }
        for (const int fine : {pronti[0], via[0], via[1]})
            ::close(fine);
        return stati;
    }
    std::string contati(const std::string& dove) const {
        auto rs = makeClientRecordset();
        rs->Open("SELECT count(*) FROM ricerchepers WHERE " + dove, ObjectRef(connessione),
                 adOpenStatic, adLockReadOnly, adCmdText);
        return rs->Fields()(0).Value().toText();
    }
    std::string stringa() const { return testServer(GetParam()).connection(); }

    fs::path cartella;
    ConnectionRef connessione;
};
INSTANTIATE_TEST_SUITE_P(, DueProgrammi, testing::ValuesIn(serverNames()),
                         [](const auto& uno) { return uno.param; });

TEST_P(DueProgrammi, TwoOperatorsSaveMarkAndDeleteAtOnceAndNeitherLosesAnything) {
    constexpr int viste = 30;
    const auto programma = [](Operatore& operatore) {
        int falliti = 0;
        const auto prova = [&](const std::string& detto, const char* atteso) {
            if (detto == atteso) return;
            std::fprintf(stderr, "%s\n", detto.c_str());
            ++falliti;
        };
        for (int n = 0; n < viste; ++n) {
            const std::string nome = "Vista " + std::to_string(n);
            prova(operatore.salva(nome), "Salvataggio Completato");
            if (n % 3 != 0) continue;
            prova(operatore.salva(nome), "Salvataggio Completato"); // over itself
            operatore.salva("Di troppo " + std::to_string(n));
            operatore.elimina("Di troppo " + std::to_string(n));
            prova(operatore.salva(nome), "Salvataggio Completato");
        }
        return falliti;
    };
    EXPECT_EQ(insieme([](int i) { return i == 0 ? "ANNA" : "MARIO"; }, programma),
              (std::array{0, 0}));
    for (const std::string utente : {"ANNA", "MARIO"}) {
        const std::string di = "codiceoperatore = '" + utente + "'";
        EXPECT_EQ(contati(di), std::to_string(viste));
        EXPECT_EQ(contati(di + " AND preferito"), "1");
        EXPECT_EQ(contati(di + " AND preferito AND NomeVista = 'Vista 29'"), "1");
    }
}

TEST_P(DueProgrammi, OneOperatorAtTwoComputersSavesTheSameNameOnce) {
    constexpr int viste = 20;
    // Of each name one program saves the row, the other is told; its status is how often.
    const auto programma = [](Operatore& operatore) {
        int rifiutate = 0;
        for (int n = 0; n < viste; ++n) {
            const std::string detto = operatore.salva("Vista " + std::to_string(n));
            const bool rifiutata = detto.starts_with("Errore nel modulo di ricerca") &&
                                   detto.find("viola un vincolo di integrità") != std::string::npos;
            if (!rifiutata && detto != "Salvataggio Completato") {
                std::fprintf(stderr, "%s\n", detto.c_str());
                return 99;
            }
            rifiutate += rifiutata ? 1 : 0;
        }
        return rifiutate;
    };
    const auto [prima, seconda] = insieme([](int) { return "ANNA"; }, programma);
    EXPECT_EQ(prima + seconda, viste);
    EXPECT_EQ(contati("codiceoperatore = 'ANNA'"), std::to_string(viste));
}

} // namespace
} // namespace norvel::views
