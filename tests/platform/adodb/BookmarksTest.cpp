// Bookmarks, clones, and blocks of rows.
#include "tests/platform/adodb/AdodbTest.h"

#include <cmath>
#include <limits>

namespace norvel::adodb {
namespace {

TEST(Bookmarks, ABookmarkBringsBackItsRow) {
    const auto rs = numbers(1000);
    rs->SetAbsolutePosition(777);
    const Variant mark = rs->Bookmark();
    EXPECT_EQ(mark.type(), VarType::R8);
    rs->MoveFirst();
    rs->SetBookmark(mark);
    EXPECT_EQ(current(*rs), 777);
}

TEST(Bookmarks, EveryRowHasItsOwn) {
    const auto rs = numbers(3);
    const Variant first = rs->Bookmark();
    rs->MoveNext();
    EXPECT_NE(rs->Bookmark(), first);
}

TEST(Bookmarks, AValueOfAnotherTypeIs3001) {
    const auto rs = numbers(3);
    EXPECT_EQ(errorOf([&] { rs->SetBookmark({}); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetBookmark(Variant::null()); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetBookmark(std::int32_t{1}); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetBookmark("1"); }), 3001);
}

TEST(Bookmarks, ANumberThatIsNoBookmarkIsABadBookmark) {
    const auto rs = numbers(3);
    const double mark = rs->Bookmark().toDouble();
    for (const double bad : {0.0, 1.0, -1.0, 0.5, 1e300, mark + 3, mark + 0.5, mark * 1e6,
                             std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(errorOf([&] { rs->SetBookmark(bad); }), dbBadBookmark) << bad;
    EXPECT_EQ(current(*rs), 1);
}

TEST(Bookmarks, OneOfBeforeARequeryIsABadBookmark) {
    const auto rs = numbers(3);
    const Variant old = rs->Bookmark();
    rs->Requery();
    EXPECT_EQ(errorOf([&] { rs->SetBookmark(old); }), dbBadBookmark);
    rs->SetBookmark(rs->Bookmark());
}

TEST(Bookmarks, OneOfAnotherRecordsetIsABadBookmark) {
    const auto a = numbers(3);
    const auto b = numbers(3);
    EXPECT_EQ(errorOf([&] { a->SetBookmark(b->Bookmark()); }), dbBadBookmark);
    EXPECT_EQ(a->CompareBookmarks(a->Bookmark(), b->Bookmark()), adCompareNotComparable);
}

TEST(Bookmarks, CompareTellsTheOrder) {
    const auto rs = numbers(3);
    const Variant first = rs->Bookmark();
    rs->MoveNext();
    const Variant second = rs->Bookmark();
    EXPECT_EQ(rs->CompareBookmarks(first, second), adCompareLessThan);
    EXPECT_EQ(rs->CompareBookmarks(second, second), adCompareEqual);
    EXPECT_EQ(rs->CompareBookmarks(second, first), adCompareGreaterThan);
    EXPECT_EQ(errorOf([&] { rs->CompareBookmarks(first, std::int32_t{1}); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->CompareBookmarks({}, first); }), 3001);
}

TEST(Clones, ShareTheRowsAndStandOnTheFirst) {
    const auto rs = numbers(9);
    rs->MoveLast();
    const auto clone = rs->Clone();
    EXPECT_EQ(clone->RecordCount(), 9);
    EXPECT_EQ(current(*clone), 1);
    EXPECT_EQ(current(*rs), 9);
    clone->Move(3);
    EXPECT_EQ(current(*rs), 9) << "each has its own cursor";
}

TEST(Clones, ExchangeBookmarks) {
    const auto rs = numbers(9);
    const auto clone = rs->Clone();
    rs->Move(6);
    clone->SetBookmark(rs->Bookmark());
    EXPECT_EQ(current(*clone), 7);
    EXPECT_EQ(rs->CompareBookmarks(rs->Bookmark(), clone->Bookmark()), adCompareEqual);
}

TEST(Clones, OutliveTheOriginal) {
    auto rs = numbers(9);
    const auto clone = rs->Clone();
    rs->Close();
    rs.reset();
    clone->MoveLast();
    EXPECT_EQ(current(*clone), 9);
    EXPECT_EQ(clone->Fields()("N").Name(), "n");
}

TEST(Clones, KeepTheOldRowsWhenTheOriginalIsRequeried) {
    const auto rs = numbers(9);
    const auto clone = rs->Clone();
    rs->Requery();
    EXPECT_EQ(clone->RecordCount(), 9);
    EXPECT_EQ(rs->CompareBookmarks(rs->Bookmark(), clone->Bookmark()), adCompareNotComparable);
    EXPECT_EQ(errorOf([&] { clone->SetBookmark(rs->Bookmark()); }), dbBadBookmark);
}

TEST(Clones, TakeOnlyTheTwoLockTypesThatAdoAllows) {
    const auto rs = numbers(2);
    EXPECT_EQ(rs->Clone(adLockReadOnly)->LockType(), adLockReadOnly);
    EXPECT_EQ(errorOf([&] { rs->Clone(adLockOptimistic); }), 3001);
}

TEST(Clones, OfAnEmptyRecordsetAreEmpty) {
    const auto clone = numbers(0)->Clone();
    EXPECT_TRUE(clone->BOF());
    EXPECT_TRUE(clone->EOF_());
}

TEST(Blocks, ReadFromTheCurrentRowAndLeaveTheCursorBehind) {
    const auto rs = numbers(1000);
    rs->SetAbsolutePosition(200);
    const RowBlock block = rs->GetRows(150);
    ASSERT_EQ(block.rows, 150);
    ASSERT_EQ(block.values.size(), 1U);
    EXPECT_EQ(block.values[0].front().toI8(), 200);
    EXPECT_EQ(block.values[0].back().toI8(), 349);
    EXPECT_EQ(current(*rs), 350);
}

TEST(Blocks, WithoutACountReadAllThatRemain) {
    const auto rs = numbers(1000);
    rs->SetAbsolutePosition(999);
    const RowBlock block = rs->GetRows();
    EXPECT_EQ(block.rows, 2);
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(errorOf([&] { rs->GetRows(); }), 3021);
}

TEST(Blocks, ShorterWhereTheRowsEnd) {
    const auto rs = numbers(10);
    const RowBlock block = rs->GetRows(50);
    EXPECT_EQ(block.rows, 10);
    EXPECT_EQ(block.bookmarks.size(), 10U);
    EXPECT_TRUE(rs->EOF_());
}

TEST(Blocks, StartWhereAsked) {
    const auto rs = numbers(10);
    rs->MoveLast();
    EXPECT_EQ(rs->GetRows(2, std::int32_t{adBookmarkFirst}).values[0][1].toI8(), 2);
    EXPECT_EQ(rs->GetRows(2, std::int32_t{adBookmarkLast}).rows, 1);
    rs->SetAbsolutePosition(4);
    const Variant mark = rs->Bookmark();
    rs->MoveFirst();
    EXPECT_EQ(rs->GetRows(1, mark).values[0][0].toI8(), 4);
    EXPECT_EQ(current(*rs), 5);
}

TEST(Blocks, CarryABookmarkARow) {
    const auto rs = numbers(600);
    const RowBlock block = rs->GetRows(600);
    rs->SetBookmark(block.bookmarks[598]);
    EXPECT_EQ(current(*rs), 599);
}

TEST(Blocks, HoldTheColumnsAskedInTheOrderAsked) {
    const auto rs = openOn("Provider=SQLite;Data Source=:memory:", "SELECT 1 AS a, 2 AS b, 3 AS c");
    const RowBlock block = rs->GetRows(1, std::int32_t{1}, {"C", std::int32_t{0}, "c"});
    ASSERT_EQ(block.values.size(), 3U);
    EXPECT_EQ(block.values[0][0].toI8(), 3);
    EXPECT_EQ(block.values[1][0].toI8(), 1);
    EXPECT_EQ(block.values[2][0].toI8(), 3);
    EXPECT_EQ(errorOf([&] { rs->GetRows(1, std::int32_t{1}, {"manca"}); }), 3265);
}

TEST(Blocks, OfNoRowsAreEmptyAndNegativeCountsAre3001) {
    const auto rs = numbers(3);
    EXPECT_EQ(rs->GetRows(0).rows, 0);
    EXPECT_EQ(current(*rs), 1);
    EXPECT_EQ(errorOf([&] { rs->GetRows(-2); }), 3001);
    EXPECT_EQ(rs->GetRows(std::numeric_limits<RowCount>::max()).rows, 3);
}

} // namespace
} // namespace norvel::adodb
