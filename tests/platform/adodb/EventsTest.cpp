// What a recordset tells of itself, and what its handlers may do.
#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

using Lines = std::vector<std::string>;

// What rs tells while call runs.
template <class Call>
Lines told(Recordset& rs, Call call, EventLog& log) {
    log.lines.clear();
    rs.Subscribe(&log);
    call();
    rs.Unsubscribe(&log);
    return log.lines;
}

template <class Call>
Lines told(Recordset& rs, Call call) {
    EventLog log;
    return told(rs, call, log);
}

TEST(Events, EveryMoveTellsItsReasonBeforeAndAfter) {
    const auto rs = numbers(5);
    EXPECT_EQ(told(*rs, [&] { rs->MoveLast(); }), (Lines{"WillMove 15", "MoveComplete 15"}));
    EXPECT_EQ(told(*rs, [&] { rs->MoveFirst(); }), (Lines{"WillMove 12", "MoveComplete 12"}));
    EXPECT_EQ(told(*rs, [&] { rs->MoveNext(); }), (Lines{"WillMove 13", "MoveComplete 13"}));
    EXPECT_EQ(told(*rs, [&] { rs->MovePrevious(); }), (Lines{"WillMove 14", "MoveComplete 14"}));
    EXPECT_EQ(told(*rs, [&] { rs->Move(2); }), (Lines{"WillMove 10", "MoveComplete 10"}));
    EXPECT_EQ(told(*rs, [&] { rs->SetAbsolutePosition(1); }),
              (Lines{"WillMove 10", "MoveComplete 10"}));
    EXPECT_EQ(told(*rs, [&] { rs->SetBookmark(rs->Bookmark()); }),
              (Lines{"WillMove 10", "MoveComplete 10"}));
    EXPECT_EQ(told(*rs, [&] { rs->SetFilter(""); }), (Lines{"WillMove 10", "MoveComplete 10"}));
}

TEST(Events, TheMoveIsDoneWhenMoveCompleteComes) {
    const auto rs = numbers(5);
    EventLog log;
    std::vector<std::int64_t> seen;
    log.onEvent = [&](const std::string&, Recordset& r) { seen.push_back(current(r)); };
    told(
        *rs, [&] { rs->MoveLast(); }, log);
    EXPECT_EQ(seen, (std::vector<std::int64_t>{1, 5}));
}

TEST(Events, ReachingTheEndIsTold) {
    const auto rs = numbers(2);
    rs->MoveLast();
    EXPECT_EQ(told(*rs, [&] { rs->MoveNext(); }),
              (Lines{"WillMove 13", "EndOfRecordset", "MoveComplete 13"}));
}

TEST(Events, AMoveThatTheTableForbidsTellsNothing) {
    const auto rs = numbers(0);
    EXPECT_EQ(told(*rs, [&] { errorOf([&] { rs->MoveNext(); }); }), Lines{});
}

TEST(Events, ACancelledMoveIs3712AndMovesNothing) {
    const auto rs = numbers(5);
    EventLog log;
    log.cancel = "WillMove 13";
    std::int64_t error = 0;
    const auto lines = told(
        *rs, [&] { error = errorOf([&] { rs->MoveNext(); }); }, log);
    EXPECT_EQ(error, 3712);
    EXPECT_EQ(lines, (Lines{"WillMove 13", "MoveComplete 13 error 3712"}));
    EXPECT_EQ(current(*rs), 1);
}

TEST(Events, NavigationFromAHandlerIs3710) {
    const auto rs = numbers(5);
    EventLog log;
    std::vector<std::int64_t> errors;
    log.onEvent = [&](const std::string&, Recordset& r) {
        const std::vector<std::function<void()>> calls = {
            [&] { r.MoveNext(); },
            [&] { r.MoveFirst(); },
            [&] { r.Move(1); },
            [&] { r.SetAbsolutePosition(3); },
            [&] { r.SetBookmark(r.Bookmark()); },
            [&] { r.GetRows(1); },
            [&] { r.SetFilter(""); },
            [&] { r.SetSort(""); },
            [&] { r.Requery(); },
            [&] { r.Close(); },
            [&] { r.Open(); },
        };
        for (const auto& call : calls)
            errors.push_back(errorOf(call));
    };
    told(
        *rs, [&] { rs->MoveLast(); }, log);
    EXPECT_EQ(errors, std::vector<std::int64_t>(22, 3710));
    EXPECT_EQ(current(*rs), 5);
}

TEST(Events, AHandlerMayReadAndClone) {
    const auto rs = numbers(5);
    EventLog log;
    std::int64_t last = 0;
    log.onEvent = [&](const std::string&, Recordset& r) {
        const auto clone = r.Clone();
        clone->MoveLast();
        last = current(*clone);
    };
    told(
        *rs, [&] { rs->MoveNext(); }, log);
    EXPECT_EQ(last, 5);
}

TEST(Events, AHandlerMayLeaveWhileItIsTold) {
    const auto rs = numbers(5);
    EventLog first;
    EventLog second;
    first.onEvent = [&](const std::string&, Recordset& r) {
        r.Unsubscribe(&first);
        r.Unsubscribe(&second);
    };
    rs->Subscribe(&first);
    rs->Subscribe(&second);
    rs->MoveNext();
    EXPECT_EQ(first.lines, Lines{"WillMove 13"});
    EXPECT_EQ(second.lines, Lines{});
}

TEST(Events, AHandlerMayDropTheLastReference) {
    auto rs = numbers(5);
    EventLog log;
    log.onEvent = [&](const std::string&, Recordset&) { rs.reset(); };
    Recordset* raw = rs.get();
    raw->Subscribe(&log);
    raw->MoveNext();
    EXPECT_EQ(log.lines, (Lines{"WillMove 13", "MoveComplete 13"}));
}

TEST(Events, CloneAndOriginalTellTheirOwnMovesOnly) {
    const auto rs = numbers(5);
    const auto clone = rs->Clone();
    EXPECT_EQ(told(*rs, [&] { clone->MoveLast(); }), Lines{});
}

TEST(Events, OpenRequeryAndCloseAreTold) {
    auto rs = makeClientRecordset();
    const std::string connection = "Provider=SQLite;Data Source=:memory:";
    EXPECT_EQ(told(*rs, [&] { rs->Open("SELECT 1", connection); }),
              (Lines{"WillMove 10", "ViewChanged", "MoveComplete 10"}));
    EXPECT_EQ(told(*rs, [&] { rs->Requery(); }),
              (Lines{"WillChangeRecordset 7", "WillMove 7", "RecordsetChangeComplete 7",
                     "ViewChanged", "MoveComplete 7"}));
    EXPECT_EQ(told(*rs, [&] { rs->Close(); }),
              (Lines{"WillChangeRecordset 9", "RecordsetChangeComplete 9", "ViewChanged"}));
}

TEST(Events, ACancelledRequeryKeepsRowsAndPosition) {
    const auto rs = numbers(5);
    rs->Move(2);
    const Variant mark = rs->Bookmark();
    EventLog log;
    log.cancel = "WillChangeRecordset 7";
    std::int64_t error = 0;
    told(
        *rs, [&] { error = errorOf([&] { rs->Requery(); }); }, log);
    EXPECT_EQ(error, 3712);
    rs->SetBookmark(mark);
    EXPECT_EQ(current(*rs), 3);
}

TEST(Events, ACancelledCloseLeavesItOpen) {
    const auto rs = numbers(5);
    EventLog log;
    log.cancel = "WillChangeRecordset 9";
    std::int64_t error = 0;
    told(
        *rs, [&] { error = errorOf([&] { rs->Close(); }); }, log);
    EXPECT_EQ(error, 3712);
    EXPECT_EQ(rs->State(), adStateOpen);
}

TEST(Events, ACancelledOpenLeavesItClosed) {
    const auto rs = makeClientRecordset();
    EventLog log;
    log.cancel = "WillMove 10";
    std::int64_t error = 0;
    told(
        *rs,
        [&] {
            error = errorOf([&] { rs->Open("SELECT 1", "Provider=SQLite;Data Source=:memory:"); });
        },
        log);
    EXPECT_EQ(error, 3712);
    EXPECT_EQ(rs->State(), adStateClosed);
}

TEST(Events, ASubscriberIsToldOnceHoweverOftenItSubscribed) {
    const auto rs = numbers(5);
    EventLog log;
    rs->Subscribe(&log);
    rs->Subscribe(&log);
    rs->Subscribe(nullptr);
    rs->MoveNext();
    EXPECT_EQ(log.lines.size(), 2U);
    rs->Unsubscribe(&log);
}

} // namespace
} // namespace norvel::adodb
