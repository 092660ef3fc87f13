#include "platform/spreadsheet/Application.h"

#include "platform/runtime/WholeFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace norvel::spreadsheet {
namespace {

namespace fs = std::filesystem;

class ApplicationTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::random_device random;
        do
            folder = fs::temp_directory_path() / ("nr_foglio_" + std::to_string(random()));
        while (!fs::create_directory(folder));
        rows->Open("SELECT 1 AS n, 'uno' AS t", "Provider=SQLite;Data Source=:memory:");
    }
    void TearDown() override { fs::remove_all(folder); }

    fs::path folder;
    adodb::RecordsetRef rows = adodb::makeClientRecordset();
};

TEST_F(ApplicationTest, SavesWhatWasCopied) {
    const auto application = createApplication(*rows);
    const auto book = application->Workbooks()->Add();
    book->Worksheets(1)->Range("A1")->CopyFromRecordset(*rows);
    const auto saving = book->SaveAs(folder.string() + "\\export.xls");
    while (saving->Step()) {
    }
    EXPECT_EQ(saving->Done(), 1);
    EXPECT_FALSE(saving->Losses().any());
    application->Quit();
    const std::string file = readWholeFile(folder / "export.xls", 1 << 20);
    EXPECT_TRUE(file.starts_with("\xD0\xCF\x11\xE0")) << "a compound file";
    EXPECT_NE(file.find("uno"), std::string::npos);
}

TEST_F(ApplicationTest, AnEmptyWorkbookCanBeSaved) {
    const auto saving = makeApplication()->Workbooks()->Add()->SaveAs(folder.string() + "/x.xls");
    while (saving->Step()) {
    }
    EXPECT_TRUE(fs::exists(folder / "x.xls"));
}

TEST_F(ApplicationTest, ASavingThatIsGivenUpLeavesNothing) {
    makeApplication()->Workbooks()->Add()->SaveAs(folder.string() + "/x.xls");
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(ApplicationTest, OtherSheetsAndRangesAreRefused) {
    const auto book = makeApplication()->Workbooks()->Add();
    EXPECT_THROW(book->Worksheets(2), Errore);
    EXPECT_THROW(book->Worksheets(1)->Range("B2"), Errore);
    EXPECT_NO_THROW(book->Worksheets(1)->Range("a1"));
}

} // namespace
} // namespace norvel::spreadsheet
