// Moves on every kind of recordset, from every edge.
#include "tests/platform/adodb/AdodbTest.h"

#include <limits>

namespace norvel::adodb {
namespace {

// Where the cursor is, in the words of the test names.
std::string where(Recordset& rs) {
    if (rs.BOF() && rs.EOF_()) return "both";
    if (rs.BOF()) return "BOF";
    if (rs.EOF_()) return "EOF";
    return std::to_string(current(rs));
}

RecordsetRef at(const std::string& place) {
    auto rs = numbers(5);
    if (place == "BOF") rs->MovePrevious();
    if (place == "last" || place == "EOF") rs->MoveLast();
    if (place == "EOF") rs->MoveNext();
    if (place == "middle") rs->Move(2);
    return rs;
}

struct Case {
    const char* from;
    const char* first; // where each move ends; "3021" for the error
    const char* last;
    const char* next;
    const char* previous;
    const char* move0;
};

constexpr Case cases[] = {
    {"BOF", "1", "5", "1", "3021", "3021"}, {"first", "1", "5", "2", "BOF", "1"},
    {"middle", "1", "5", "4", "2", "3"},    {"last", "1", "5", "EOF", "4", "5"},
    {"EOF", "1", "5", "3021", "5", "3021"},
};

template <class Move>
std::string after(const char* from, Move move) {
    const auto rs = at(from);
    const std::string before = where(*rs);
    const auto error = errorOf([&] { move(*rs); });
    if (error == 0) return where(*rs);
    EXPECT_EQ(where(*rs), before) << "a refused move leaves the cursor";
    return std::to_string(error);
}

TEST(Moves, EveryEdgeAnswersAsTheTableSays) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.from);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.MoveFirst(); }), c.first);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.MoveLast(); }), c.last);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.MoveNext(); }), c.next);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.MovePrevious(); }), c.previous);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.Move(1); }), c.next);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.Move(-1); }), c.previous);
        EXPECT_EQ(after(c.from, [](Recordset& rs) { rs.Move(0); }), c.move0);
    }
}

TEST(Moves, EveryMoveOnAnEmptyRecordsetIs3021) {
    const auto rs = numbers(0);
    EXPECT_TRUE(rs->BOF());
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->MovePrevious(); }), 3021);
    for (const RowCount n : {-2, -1, 0, 1, 2})
        EXPECT_EQ(errorOf([&] { rs->Move(n); }), 3021) << n;
    EXPECT_EQ(errorOf([&] { rs->Move(0, std::int32_t{adBookmarkFirst}); }), 3021);
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_EQ(rs->AbsolutePosition(), adPosUnknown);
}

TEST(Moves, AnEmptyRecordsetHasNoValueBookmarkOrEditMode) {
    const auto rs = numbers(0);
    EXPECT_EQ(errorOf([&] { rs->Fields()("n").Value(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->Bookmark(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->EditMode(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->GetRows(); }), 3021);
}

TEST(Moves, OpenStandsOnTheFirstRow) {
    const auto rs = numbers(3);
    EXPECT_FALSE(rs->BOF());
    EXPECT_FALSE(rs->EOF_());
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(current(*rs), 1);
}

TEST(Moves, MoveBeyondAnEdgeStopsThere) {
    const auto rs = numbers(5);
    rs->Move(100);
    EXPECT_EQ(where(*rs), "EOF");
    EXPECT_EQ(rs->AbsolutePosition(), adPosEOF);
    rs->Move(-100);
    EXPECT_EQ(where(*rs), "BOF");
    EXPECT_EQ(rs->AbsolutePosition(), adPosBOF);
}

TEST(Moves, MoveByTheLargestNumbersStopsAtTheEdges) {
    const auto rs = numbers(5);
    rs->Move(2);
    rs->Move(std::numeric_limits<RowCount>::max());
    EXPECT_EQ(where(*rs), "EOF");
    rs->Move(std::numeric_limits<RowCount>::min());
    EXPECT_EQ(where(*rs), "BOF");
}

TEST(Moves, FromTheEdgesRelativeMovesCountFromOutside) {
    const auto rs = at("EOF");
    rs->Move(-2);
    EXPECT_EQ(where(*rs), "4");
    const auto other = at("BOF");
    other->Move(2);
    EXPECT_EQ(where(*other), "2");
}

TEST(Moves, MoveCountsFromAGivenStart) {
    const auto rs = numbers(9);
    rs->Move(3);
    const Variant fourth = rs->Bookmark();
    rs->MoveFirst();
    rs->Move(2, fourth);
    EXPECT_EQ(current(*rs), 6);
    rs->Move(-1, std::int32_t{adBookmarkLast});
    EXPECT_EQ(current(*rs), 8);
    rs->Move(1, std::int32_t{adBookmarkFirst});
    EXPECT_EQ(current(*rs), 2);
    rs->Move(1, std::int32_t{adBookmarkCurrent});
    EXPECT_EQ(current(*rs), 3);
    EXPECT_EQ(errorOf([&] { rs->Move(1, std::int32_t{7}); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->Move(1, "prima"); }), 3001);
    EXPECT_EQ(current(*rs), 3);
}

TEST(Moves, MoveWithAStartWorksFromAnEdge) {
    const auto rs = at("EOF");
    rs->Move(0, std::int32_t{adBookmarkFirst});
    EXPECT_EQ(current(*rs), 1);
    rs->MovePrevious();
    EXPECT_EQ(errorOf([&] { rs->Move(0, std::int32_t{adBookmarkCurrent}); }), 3021);
}

TEST(Moves, AWalkForwardSeesEveryRowOnceAndEndsAtEof) {
    const auto rs = numbers(1000);
    std::int64_t expected = 1;
    for (; !rs->EOF_(); rs->MoveNext(), ++expected)
        ASSERT_EQ(current(*rs), expected);
    EXPECT_EQ(expected, 1001);
    rs->MovePrevious();
    EXPECT_EQ(current(*rs), 1000);
}

TEST(Moves, AWalkBackSeesEveryRowOnceAndEndsAtBof) {
    const auto rs = numbers(300);
    rs->MoveLast();
    std::int64_t expected = 300;
    for (; !rs->BOF(); rs->MovePrevious(), --expected)
        ASSERT_EQ(current(*rs), expected);
    EXPECT_EQ(expected, 0);
}

TEST(Moves, AbsolutePositionCountsFromOneAndMoves) {
    const auto rs = numbers(700);
    rs->SetAbsolutePosition(650);
    EXPECT_EQ(current(*rs), 650);
    EXPECT_EQ(rs->AbsolutePosition(), 650);
    rs->SetAbsolutePosition(700);
    EXPECT_EQ(current(*rs), 700);
    rs->SetAbsolutePosition(1);
    EXPECT_EQ(current(*rs), 1);
}

TEST(Moves, AbsolutePositionOutOfRangeIs3001AndMovesNothing) {
    const auto rs = numbers(5);
    rs->Move(1);
    for (const RowCount p :
         {RowCount{0}, RowCount{-1}, RowCount{-2}, RowCount{-3}, RowCount{6},
          std::numeric_limits<RowCount>::max(), std::numeric_limits<RowCount>::min()})
        EXPECT_EQ(errorOf([&] { rs->SetAbsolutePosition(p); }), 3001) << p;
    EXPECT_EQ(current(*rs), 2);
    EXPECT_EQ(errorOf([&] { numbers(0)->SetAbsolutePosition(1); }), 3001);
}

TEST(Moves, ASingleRowIsFirstAndLast) {
    const auto rs = numbers(1);
    rs->MoveLast();
    EXPECT_EQ(where(*rs), "1");
    rs->MoveFirst();
    rs->MoveNext();
    EXPECT_EQ(where(*rs), "EOF");
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), 3021);
    rs->MovePrevious();
    rs->MovePrevious();
    EXPECT_EQ(where(*rs), "BOF");
    EXPECT_EQ(errorOf([&] { rs->MovePrevious(); }), 3021);
}

TEST(Moves, EveryMemberThatNeedsAnOpenRecordsetIs3704OnAClosedOne) {
    const auto rs = makeClientRecordset();
    const std::vector<std::function<void()>> calls = {
        [&] { rs->MoveFirst(); },
        [&] { rs->MoveLast(); },
        [&] { rs->MoveNext(); },
        [&] { rs->MovePrevious(); },
        [&] { rs->Move(1); },
        [&] { rs->BOF(); },
        [&] { rs->EOF_(); },
        [&] { rs->RecordCount(); },
        [&] { rs->AbsolutePosition(); },
        [&] { rs->SetAbsolutePosition(1); },
        [&] { rs->Bookmark(); },
        [&] { rs->SetBookmark(1.0); },
        [&] { rs->CompareBookmarks(1.0, 1.0); },
        [&] { rs->GetRows(); },
        [&] { rs->Requery(); },
        [&] { rs->Close(); },
        [&] { rs->Clone(); },
        [&] { rs->Cancel(); },
        [&] { rs->EditMode(); },
        [&] { rs->AddNew(); },
        [&] { rs->Update(); },
        [&] { rs->CancelUpdate(); },
        [&] { rs->Delete(); },
        [&] { rs->Supports(adBookmark); },
    };
    for (std::size_t i = 0; i < calls.size(); ++i)
        EXPECT_EQ(errorOf(calls[i]), 3704) << "call " << i;
}

} // namespace
} // namespace norvel::adodb
