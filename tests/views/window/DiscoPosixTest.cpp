// A disk that is full and a folder that may not be written: nothing is torn.
#include "tests/views/window/BancoConfigura.h"

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace norvel::views {
namespace {

// While it lives no file grows: what a full disk does to whoever writes.
class DiscoPieno {
  public:
    DiscoPieno() : segnale_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &prima_);
        rlimit niente = prima_;
        niente.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &niente);
    }
    ~DiscoPieno() {
        setrlimit(RLIMIT_FSIZE, &prima_);
        std::signal(SIGXFSZ, segnale_);
    }
    DiscoPieno(const DiscoPieno&) = delete;
    DiscoPieno& operator=(const DiscoPieno&) = delete;

  private:
    rlimit prima_{};
    void (*segnale_)(int);
};

// While it lives nobody writes into the folder; an operator whom nothing is forbidden is another
// one meanwhile.
class SolaLettura {
  public:
    explicit SolaLettura(fs::path cartella) : cartella_(std::move(cartella)), prima_(geteuid()) {
        fs::permissions(cartella_, fs::perms(0555));
        if (prima_ == 0 && seteuid(qualunque) != 0) ADD_FAILURE();
    }
    ~SolaLettura() {
        if (prima_ == 0 && seteuid(prima_) != 0) ADD_FAILURE();
        fs::permissions(cartella_, fs::perms(0755));
    }
    SolaLettura(const SolaLettura&) = delete;
    SolaLettura& operator=(const SolaLettura&) = delete;

  private:
    static constexpr uid_t qualunque = 65534;
    fs::path cartella_;
    uid_t prima_;
};

class DiscoTest : public BancoConfigura {
  protected:
    // A view that was saved once, and is saved again over its file.
    void preparaMia() {
        riga("Mia", true);
        grid::Layout disposizione;
        disposizione.Columns.push_back({"citta", "Città", 2000, 0, true, {}});
        grid::saveLayout((cartella / "ROSSIMia.grx").string(), "ROSSIMia", disposizione);
        prima = contenuto();
    }
    std::string contenuto() const {
        std::ifstream in(cartella / "ROSSIMia.grx");
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void salvaMia() {
        vai("SALVA");
        scriviNome("Mia");
        boxes.answer(BoxAnswer::Yes);
        premi(configura().CmdSalva);
    }
    void nienteDiRotto() {
        EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
        EXPECT_EQ(contenuto(), prima) << "the file that was there is whole";
        std::size_t quanti = 0;
        for (const auto& voce : fs::directory_iterator(cartella))
            quanti += voce.is_regular_file() ? 1 : 0;
        EXPECT_EQ(quanti, 1U) << "and nothing half-written beside it";
    }
    std::string prima;
};

TEST_F(DiscoTest, AFullDiskIsToldAndTheFileAndTheRowStayAsTheyWere) {
    preparaMia();
    provaConfigura([&] {
        {
            const DiscoPieno pieno;
            salvaMia();
        }
        nienteDiRotto();
        boxes.clear();
        salvaMia(); // with room again
        EXPECT_EQ(boxes.lastText(), "Salvataggio Completato");
        EXPECT_NE(contenuto(), prima);
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Mia");
}

TEST_F(DiscoTest, AFolderThatMayNotBeWrittenIsTold) {
    preparaMia();
    provaConfigura([&] {
        {
            const SolaLettura chiusa(cartella);
            salvaMia();
        }
        nienteDiRotto();
    });
    EXPECT_EQ(righeViste(), "ROSSI/CLI/Mia*");
}

TEST_F(DiscoTest, ABaseThatCannotBeWrittenIsToldAndTheWindowStays) {
    provaConfigura([&] {
        vai("SALVA");
        boxes.answer(BoxAnswer::Yes);
        {
            const DiscoPieno pieno;
            robot.doubleClick(*configura().l1[0]->GetParent(),
                              configura().l1[0]->GetPosition() + wxPoint(8, 6));
        }
        EXPECT_EQ(boxes.shown().back().titolo, "TAMBORIN");
        EXPECT_NE(frmConfiguraReale(), nullptr);
    });
    EXPECT_FALSE(esiste("parametri/CLI.grx"));
}

} // namespace
} // namespace norvel::views
