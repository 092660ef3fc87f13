// Pages as they are asked for, over rows that tell when they are read.
#include "platform/grid/print/PrintJob.h"

#include "platform/grid/export/ExportRows.h"
#include "platform/grid/print/PreviewZoom.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using adodb::RowCount;

class PrintJobTest : public testing::Test {
  protected:
    void open(RowCount rows) {
        rows_ = tests::GeneratedRecordset::make(tests::customerColumns(), rows);
        Columns columns;
        for (int i = 0; i < 3; ++i) {
            Column column;
            column.DataField = rows_->Fields()(i).Name();
            column.Caption = column.DataField;
            column.DataType = rows_->Fields()(i).Type();
            column.Width = 3000;
            columns.Add(column);
        }
        GridStyle style;
        style.DataView = group_.empty() ? 0 : groupView;
        style.GroupColumns = group_;
        const ExportTable shown = exportTable(columns, style, "");
        const auto read = std::make_shared<ExportRows>(*rows_, shown);
        PageTextSizes sizes;
        sizes.width = [](PageFont, std::string_view text) {
            return 90.0 * static_cast<double>(text.size());
        };
        sizes.lineHeight = {220, 220, 220};
        job_ = std::make_unique<PrintJob>(
            printTable(shown, {}, {}, {}), read->Count(),
            [read](RowCount first, RowCount count) { return read->Values(first, count); }, sizes);
        before_ = rows_->rowsRead();
    }
    RowCount read() const { return rows_->rowsRead() - before_; }
    bool shows(RowCount page, std::string_view wanted) {
        for (const PageText& text : job_->Page(page).texts)
            if (text.text == wanted) return true;
        return false;
    }

    std::shared_ptr<tests::GeneratedRecordset> rows_;
    std::unique_ptr<PrintJob> job_;
    RowCount before_ = 0;
    std::vector<std::string> group_;
};

TEST_F(PrintJobTest, AMillionRowsAreReadPageByPageAsTheyAreLookedAt) {
    open(1000000);
    const RowCount pages = job_->PageCount();
    EXPECT_GT(pages, 15000);
    EXPECT_EQ(read(), 0) << "counting pages reads nothing";
    const RowCount aPage = job_->Layout().PageAt(1).rows;
    job_->Page(1);
    EXPECT_EQ(read(), aPage);
    job_->Page(pages);
    EXPECT_LE(read(), 2 * aPage);
    job_->Page(pages / 2);
    EXPECT_LE(read(), 3 * aPage);
    EXPECT_EQ(rows_->moves(), 0) << "the host's current record stays";
}

TEST_F(PrintJobTest, APageThatIsLookedAtAgainIsNotReadAgain) {
    open(1000);
    job_->Page(3);
    const RowCount once = read();
    job_->Page(3);
    EXPECT_EQ(read(), once);
}

TEST_F(PrintJobTest, TheLastPageEndsWithTheLastRow) {
    open(1000);
    EXPECT_TRUE(shows(job_->PageCount(), "1000"));
    EXPECT_FALSE(shows(1, "1000"));
}

TEST_F(PrintJobTest, InTheGroupViewTheGroupColumnsComeFirst) {
    group_ = {"citta"};
    open(100);
    EXPECT_EQ(job_->Page(1).texts[0].text, "citta");
}

TEST_F(PrintJobTest, TurningThePaperReadsNothingUntilAPageIsLookedAt) {
    open(1000);
    const RowCount upright = job_->PageCount();
    job_->SetPaper({}, PageOrientation::Landscape);
    EXPECT_GT(job_->PageCount(), upright);
    EXPECT_EQ(read(), 0);
}

TEST_F(PrintJobTest, AReadThatFailsIsTriedAgain) {
    open(1000);
    rows_->failReads(Errore(3709, "La connessione \xC3\xA8 chiusa"));
    EXPECT_THROW(job_->Page(1), Errore);
    EXPECT_THROW(job_->Page(1), Errore);
    rows_->healReads();
    EXPECT_TRUE(shows(1, "1"));
}

TEST_F(PrintJobTest, ARowThatGoesWhileItIsOpenLeavesItsPageShorter) {
    open(200);
    const RowCount last = job_->PageCount();
    ASSERT_GT(job_->Layout().PageAt(last).rows, 1);
    rows_->Delete(adodb::adAffectCurrent);
    EXPECT_FALSE(shows(last, "200"));
    EXPECT_TRUE(shows(last, "199"));
}

TEST(PreviewZoomTest, StepsLeadFromAnyZoomToTheNext) {
    EXPECT_EQ(nextZoom(1, true), 1.1);
    EXPECT_EQ(nextZoom(1, false), 0.9);
    EXPECT_EQ(nextZoom(0.714, true), 0.75);
    EXPECT_EQ(nextZoom(0.714, false), 0.67);
    EXPECT_EQ(nextZoom(5, true), 5);
    EXPECT_EQ(nextZoom(0.1, false), 0.1);
    EXPECT_EQ(nextZoom(0.01, false), 0.1);
    EXPECT_EQ(nextZoom(99, true), 5);
}

TEST(PreviewZoomTest, FittingShowsThePageWholeOrInItsWidth) {
    const PaperSize paper{10000, 20000};
    EXPECT_EQ(fittingZoom(ZoomMode::Page, paper, 10000, 10000), 0.5);
    EXPECT_EQ(fittingZoom(ZoomMode::Width, paper, 10000, 10000), 1);
    EXPECT_EQ(fittingZoom(ZoomMode::Page, paper, 0, -100), leastZoom);
    EXPECT_EQ(fittingZoom(ZoomMode::Width, paper, 1e9, 1), mostZoom);
}

} // namespace
} // namespace norvel::grid
