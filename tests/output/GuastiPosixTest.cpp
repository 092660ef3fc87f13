// Exports where the disk is full or nothing may be written, in a process of its own each.
#include "platform/runtime/RandomNumbers.h"
#include "tests/output/Parte.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sys/resource.h>
#include <unistd.h>

namespace norvel::output {
namespace {

namespace fs = std::filesystem;

class GuastiPosixTest : public BancoEsporta {
  protected:
    void SetUp() override {
        BancoEsporta::SetUp();
#ifdef __SANITIZE_THREAD__
        GTEST_SKIP() << "it allows a process that was forked no threads";
#endif
        processRandomNumbers() = {};
        recordset =
            tabella("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 30000) "
                    "SELECT i AS codice, 'Cliente ' || i AS nome FROM n");
        colonneDa(*recordset, true);
        fs::create_directory(cartella / "export");
    }

    static void pocoSpazio() {
        const rlimit spazio{50'000, 50'000};
        if (::setrlimit(RLIMIT_FSIZE, &spazio) != 0) std::_Exit(99);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    // Without the rights that root has over every file.
    static void nessuno() {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && ::setuid(nobody) != 0) std::_Exit(99);
    }
    // 0: the last box said this; or, of "", there was none.
    void prova(const std::function<void()>& guasto, const std::function<void()>& comando,
               const std::string& detto) {
        const auto processo = [&] {
            guasto();
            boxes.answer(BoxAnswer::Yes);
            comando();
            if (detto.empty()) std::_Exit(boxes.shown().empty() && aperti.empty() ? 0 : 1);
            std::_Exit(boxes.lastText().find("\r" + detto) == std::string::npos ? 2 : 0);
        };
        EXPECT_EXIT(processo(), ::testing::ExitedWithCode(0), "");
    }
    void provaFile(const std::function<void()>& guasto) {
        for (const FormatoFile formato : {FormatoFile::Csv, FormatoFile::Html})
            prova(
                guasto, [&] { esportaFile(parte(), formato); }, "");
    }
    void provaCartella(const std::function<void()>& guasto, const std::string& detto) {
        prova(
            guasto, [&] { esportaExcel(parte()); }, detto);
    }
};

TEST_F(GuastiPosixTest, ADiskThatFillsUpLeavesTheOldFilesAndOpensNothing) {
    for (const char* nome : {"Clienti705.csv", "Clienti705.HTM", "export.xls"})
        std::ofstream(cartella / "export" / nome) << "vecchio";
    provaFile(pocoSpazio);
    provaCartella(pocoSpazio, "61 - Disco pieno");
    for (const char* nome : {"Clienti705.csv", "Clienti705.HTM", "export.xls"})
        EXPECT_EQ(file(std::string("export/") + nome), "vecchio");
    EXPECT_EQ(quantiFile(), 3);
}

TEST_F(GuastiPosixTest, AFolderInWhichNothingMayBeWrittenEndsFilesSilentlyAndIsSaidOfTheWorkbook) {
    fs::permissions(cartella, fs::perms(0755));
    fs::permissions(cartella / "export", fs::perms(0555));
    provaFile(nessuno);
    provaCartella(nessuno, "70 - Autorizzazione negata");
    EXPECT_EQ(quantiFile(), 0);
    fs::permissions(cartella / "export", fs::perms(0755));
}

TEST_F(GuastiPosixTest, AFolderThatCannotBeMadeIsMissedByTheWorkbook) {
    fs::remove(cartella / "export");
    fs::permissions(cartella, fs::perms(0555));
    provaFile(nessuno);
    provaCartella(nessuno, "76 - Impossibile trovare il percorso");
    fs::permissions(cartella, fs::perms(0755));
    EXPECT_TRUE(fs::is_empty(cartella));
}

TEST_F(GuastiPosixTest, AFileInThePlaceOfTheFolderStaysWhatItIs) {
    fs::remove(cartella / "export");
    std::ofstream(cartella / "export") << "un file";
    provaFile([] {});
    provaCartella([] {}, "76 - Impossibile trovare il percorso");
    EXPECT_EQ(file("export"), "un file");
}

TEST_F(GuastiPosixTest, AFolderOfTheFilesNameStaysWhatItIs) {
    for (const char* nome : {"Clienti705.csv", "Clienti705.HTM", "export.xls"})
        fs::create_directory(cartella / "export" / nome);
    provaFile([] {});
    provaCartella([] {}, "75 - Errore di accesso al file");
    EXPECT_EQ(quantiFile(), 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(cartella / "export"), {}), 3);
}

} // namespace
} // namespace norvel::output
