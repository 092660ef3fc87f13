// The grid over the project's own recordset and a real database, rows arriving in the background.
#include "tests/platform/grid/window/GridFixture.h"

#include <wx/frame.h>

namespace norvel::tests {
namespace {

using namespace adodb;

class DatabaseTest : public GridTest {
  protected:
    // select: of the columns of n, which has the numbers from 1 to count in i.
    void show(int count, const std::string& select, int options) {
        recordset_ = makeClientRecordset();
        recordset_->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT " +
                             std::to_string(count) + ") SELECT " + select + " FROM n",
                         "Provider=SQLite;Data Source=:memory:", adOpenStatic, adLockReadOnly,
                         adCmdText | options);
        openOver(recordset_);
    }
    RecordsetRef recordset_;
};

TEST_F(DatabaseTest, ShowsRowsWhileTheRestArrives) {
    constexpr int count = 400'000;
    show(count, "i AS codice, 'Cliente ' || i AS nome, i % 2 = 0 AS pari", adAsyncFetch);
    EXPECT_EQ(grid_->CellText(0, 1), "Cliente 1");
    EXPECT_GT(grid_->RowsInView(), 5);
    ASSERT_TRUE(robot_.waitUntil(
        [&] { return recordset_->WaitFetch(0) && recordset_->RecordCount() == count; }, 20'000));
    robot_.pump();
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(recordset_->AbsolutePosition(), count);
    EXPECT_EQ(grid_->CurrentRow(), count - 1);
    EXPECT_EQ(grid_->CellText(count - 1, 1), "Cliente " + std::to_string(count));
    screenshot(*frame_, "grid_database_last");
}

TEST_F(DatabaseTest, WhatWasSelectedWhileRowsArrivedIsReadBackInOrder) {
    show(50'000, "i AS codice", adAsyncFetch);
    robot_.click(*grid_, cellCentre(4, 0), wxMOD_CONTROL);
    robot_.click(*grid_, cellCentre(1, 0), wxMOD_CONTROL);
    ASSERT_TRUE(robot_.waitUntil([&] { return recordset_->WaitFetch(0); }, 20'000));
    std::vector<std::int64_t> codes;
    while (grid_->SelBookmarks().Count() > 0) {
        grid_->SetBookmark(grid_->SelBookmarks().Item(0));
        codes.push_back(recordset_->Fields()("codice").Value().toI8());
        grid_->SelBookmarks().Remove(0);
    }
    EXPECT_EQ(codes, (std::vector<std::int64_t>{5, 2}));
    robot_.press('A', wxMOD_CONTROL);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 50'000);
}

TEST_F(DatabaseTest, AFetchThatBreaksOffLeavesTheRowsThatCame) {
    show(200'000, "CASE WHEN i = 150000 THEN abs(-9223372036854775807 - 1) ELSE i END AS codice",
         adAsyncFetch);
    ASSERT_TRUE(robot_.waitUntil([&] { return recordset_->WaitFetch(0); }, 20'000));
    robot_.pump();
    ASSERT_TRUE(recordset_->FetchError());
    const RowCount came = recordset_->RecordCount();
    EXPECT_LT(came, 150'000);
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(grid_->CurrentRow(), came - 1);
    EXPECT_EQ(grid_->CellText(came - 1, 0), std::to_string(came));
    robot_.press(WXK_DOWN);
    EXPECT_EQ(grid_->CurrentRow(), came - 1);
}

TEST_F(DatabaseTest, NullsBlobsAndBytesThatAreNoUtf8AreShown) {
    show(30,
         "i AS codice, NULL AS niente, x'00FF10' AS dati, CAST(x'6369747420E0' AS TEXT) AS citta",
         0);
    EXPECT_EQ(grid_->CellText(0, 1), "");
    EXPECT_EQ(grid_->CellText(0, 2), "(binario)");
    EXPECT_EQ(grid_->CellText(0, 3), "citt à");
    screenshot(*frame_, "grid_database_types");
}

TEST_F(DatabaseTest, AnEmptyResultAndARecordsetNeverOpenedAreEmptyGrids) {
    show(0, "i AS codice", 0);
    EXPECT_EQ(grid_->Columns().Count(), 1);
    EXPECT_EQ(grid_->RowsInView(), 0);
    source_.SetRecordset(makeClientRecordset());
    robot_.pump();
    EXPECT_EQ(grid_->RowsInView(), 0);
    robot_.press(WXK_DOWN);
    robot_.press('A', wxMOD_CONTROL);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
}

TEST_F(DatabaseTest, ClosingTheRecordsetUnderTheGridEmptiesIt) {
    show(1000, "i AS codice", 0);
    recordset_->Close();
    robot_.pump();
    EXPECT_EQ(grid_->RowsInView(), 0);
    EXPECT_EQ(grid_->CurrentRow(), -1);
    robot_.click(*grid_, {60, 100});
}

TEST_F(DatabaseTest, RequeryShowsTheRowsAgain) {
    show(1000, "i AS codice", 0);
    robot_.press('A', wxMOD_CONTROL);
    robot_.press(WXK_END, wxMOD_CONTROL | wxMOD_SHIFT);
    recordset_->Requery();
    robot_.pump();
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    EXPECT_EQ(grid_->CurrentRow(), 0);
    EXPECT_EQ(grid_->CellText(999, 0), "1000");
}

} // namespace
} // namespace norvel::tests
