// Exports for which there is no room.
#include "platform/grid/export/ExportFile.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"
#include "tests/platform/grid/export/Articles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>

namespace norvel::grid {
namespace {

namespace fs = std::filesystem;

class FullDiskPosixTest : public ::testing::TestWithParam<ExportFormat> {
  protected:
    void SetUp() override {
#ifdef __SANITIZE_THREAD__
        GTEST_SKIP() << "it allows a process that was forked no threads";
#endif
        std::string name = (fs::temp_directory_path() / "nr_pieno_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override {
        fs::remove_all(folder);
    }

    // 0, or the number of what was raised.
    static int written(adodb::Recordset& rows, const fs::path& path) {
        ExportSpec spec;
        spec.format = GetParam();
        try {
            ExportFile file(rows, exportTable(tests::columnsOf(rows), {}, ""), spec, path);
            while (file.Step()) {
            }
            return 0;
        } catch (const Errore& error) {
            return static_cast<int>(error.numero());
        }
    }
    fs::path folder;
};

TEST_P(FullDiskPosixTest, TheFirstBytesMayBeTooMany) {
    const auto rows = tests::articles();
    fs::create_symlink("/dev/full", folder / "elenco");
    EXPECT_EQ(written(*rows, folder / "elenco"), 61);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

// In a process of its own, whose files may not become longer than some pages.
TEST_P(FullDiskPosixTest, AnExportThatOutgrowsItsRoomLeavesWhatWasThereAndNothingElse) {
    const auto columns = adodb::makeClientRecordset();
    columns->Open("WITH RECURSIVE r(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM r LIMIT 60000) "
                  "SELECT i AS codice, 'Cliente ' || i AS nome FROM r",
                  "Provider=SQLite;Data Source=:memory:");
    const auto values = tests::GeneratedRecordset::make(tests::customerColumns(), 10'000);
    writeWholeFile(folder / "elenco", "vecchio");
    for (adodb::Recordset* rows : {columns.get(), static_cast<adodb::Recordset*>(values.get())}) {
        const auto inLittleRoom = [&] {
            const rlimit room{100'000, 100'000};
            if (::setrlimit(RLIMIT_FSIZE, &room) != 0) std::_Exit(99);
            std::signal(SIGXFSZ, SIG_IGN);
            std::_Exit(written(*rows, folder / "elenco"));
        };
        EXPECT_EXIT(inLittleRoom(), ::testing::ExitedWithCode(61), "");
        EXPECT_EQ(readWholeFile(folder / "elenco", 100), "vecchio");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, FullDiskPosixTest,
                         ::testing::Values(ExportFormat::Delimited, ExportFormat::Html),
                         [](const auto& given) {
                             return given.param == ExportFormat::Html ? "Html" : "Delimited";
                         });

} // namespace
} // namespace norvel::grid
