// A random walk over both windows. The seed is printed, and so is the number of steps: the same two
// make the same walk again.
//     NR_SEME=12345 NR_PASSI=10000 tests/under_display …/test_passeggiata
#include "platform/controls/Toolkit.h"
#include "tests/views/passeggiata/Operatore.h"

#include <cstdlib>
#include <map>

namespace norvel::views {
namespace {

constexpr int passiDiSolito = 400;

unsigned numero(const char* variabile, unsigned altrimenti) {
    const char* testo = std::getenv(variabile);
    return testo != nullptr ? static_cast<unsigned>(std::strtoul(testo, nullptr, 10)) : altrimenti;
}

// What must hold whatever was done.
class Passeggiata : public BancoConfigura {
  protected:
    using Chiave = std::string; // "ROSSI/CLI/mia", folded

    struct Tabella {
        std::set<Chiave> righe;
        std::map<std::string, int> preferite; // by operator and search
    };
    Tabella leggi() {
        auto rs = apriTabella("SELECT * FROM ricerchepers");
        Tabella tabella;
        for (; !rs->EOF_(); rs->MoveNext()) {
            adodb::Fields& campi = rs->Fields();
            const std::string di = campi("codiceoperatore").Value().toText() + "/" +
                                   campi("codicericerca").Value().toText();
            tabella.righe.insert(foldText(di + "/" + campi("NomeVista").Value().toText()));
            if (campi("preferito").Value().toBoolean()) ++tabella.preferite[di];
        }
        return tabella;
    }
    void guarda(const std::string& azione, int passo) {
        const Tabella ora = leggi();
        std::size_t perse = 0;
        for (const Chiave& chiave : prima.righe)
            perse += ora.righe.contains(chiave) ? 0 : 1;
        const std::size_t concesse = azione == "elimina" ? 1 : 0;
        EXPECT_LE(perse, concesse) << "step " << passo << ": " << azione;
        for (const auto& [di, quante] : ora.preferite)
            EXPECT_LE(quante, 1) << "step " << passo << ": " << azione << " " << di;
        prima = ora;
    }
    // The search stays where it is while the configuration is open.
    void guardaRicerca(const std::string& azione, int passo) {
        if (!frmConfiguraReale()) {
            fermo.reset();
            return;
        }
        const std::pair<adodb::RowCount, grid::Layout> ora{righe().AbsolutePosition(),
                                                           griglia().Layouts().Present()};
        if (fermo) {
            EXPECT_EQ(ora.first, fermo->first) << "step " << passo << ": " << azione;
            EXPECT_EQ(ora.second, fermo->second) << "step " << passo << ": " << azione;
        }
        fermo = ora;
    }

    Tabella prima;
    std::optional<std::pair<adodb::RowCount, grid::Layout>> fermo;
};

TEST_F(Passeggiata, NothingIsLostOrTornWhateverTheOperatorDoes) {
    const unsigned seme = numero("NR_SEME", std::random_device()());
    const int passi = static_cast<int>(numero("NR_PASSI", passiDiSolito));
    std::printf("NR_SEME=%u NR_PASSI=%d\n", seme, passi);
    std::fflush(stdout);
    const bool parla = std::getenv("NR_PARLA") != nullptr;
    controls::avviaToolkit();
    {
        int passo = 0;
        Operatore operatore(seme, passi, [&](const std::string& azione) {
            ++passo;
            if (parla) std::fprintf(stderr, "%d %s\n", passo, azione.c_str());
            guarda(azione, passo);
            guardaRicerca(azione, passo);
        });
        operatore.database = [&](bool rifiuta) {
            esegui("DROP TRIGGER IF EXISTS no");
            if (rifiuta)
                esegui("CREATE TRIGGER no BEFORE " +
                       std::string(operatore.A_caso(2) == 0 ? "INSERT" : "UPDATE") +
                       " ON ricerchepers BEGIN SELECT RAISE(ABORT, 'no'); END");
        };
        operatore.cartella = [&](bool rifiuta) {
            ricerca.SetPercorsoPers((rifiuta ? cartella / "manca" : cartella).string() + "\\");
        };
        operatore.Inizia();
        int sessioni = 0;
        while (!operatore.Finito()) {
            static const char* const utenti[] = {"ROSSI", "BIANCHI"};
            static const char* const moduli[] = {"CLI", "ART"};
            this->operatore(utenti[operatore.A_caso(2)], moduli[operatore.A_caso(2)]);
            ricerca.SetPercorsoPers(cartella.string() + "\\");
            apriViste();
            ricerca.SetRecordset(operatore.A_caso(2) == 0 ? tabella() : clienti(300));
            ricerca.Cerca();
            ++sessioni;
            if (HasFatalFailure()) break;
        }
        std::printf("%d steps, %d searches, %zu views, %d errors told\n", operatore.Fatti(),
                    sessioni, prima.righe.size(), operatore.Errori());
    }
    esegui("DROP TRIGGER IF EXISTS no");
}

} // namespace
} // namespace norvel::views
