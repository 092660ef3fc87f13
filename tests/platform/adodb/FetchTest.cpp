// Rows that come in the background: waiting, failing half way, cancelling, closing.
#include "platform/adodb/fetch/Fetch.h"

#include "platform/runtime/OwnerQueue.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace norvel::adodb {
namespace {

using Clock = std::chrono::steady_clock;

class FetchTest : public testing::Test {
  protected:
    FetchTest() : script(std::make_shared<Script>()), provider(script) { runOwnerQueue(); }
    ~FetchTest() override { script->go(); }
    FetchTest(const FetchTest&) = delete;
    FetchTest& operator=(const FetchTest&) = delete;

    static double seconds(Clock::time_point since) {
        return std::chrono::duration<double>(Clock::now() - since).count();
    }
    std::shared_ptr<Script> script;
    ProviderDouble provider;
};

constexpr RowCount many = 200'000;

TEST_F(FetchTest, OpenReturnsAfterTheFirstBlock) {
    script->rows = many;
    script->holdAt = 50'000;
    const auto rs = openDouble(adAsyncFetch);
    EXPECT_EQ(rs->State(), adStateOpen | adStateFetching);
    EXPECT_GE(rs->RecordCount(), 1);
    EXPECT_EQ(current(*rs), 0);
    EXPECT_FALSE(rs->WaitFetch(20));
    script->go();
    EXPECT_TRUE(rs->WaitFetch(10'000));
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_EQ(rs->RecordCount(), many);
    EXPECT_FALSE(rs->FetchError());
}

TEST_F(FetchTest, WithoutOptionsEveryRowIsThereOnReturn) {
    script->rows = many;
    const auto rs = openDouble(-1);
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_EQ(rs->RecordCount(), many);
    EXPECT_EQ(runOwnerQueue(), 0U) << "no fetch event of a synchronous Open";
}

TEST_F(FetchTest, EveryRowComesOnceAndInOrder) {
    script->rows = many + 17;
    const auto rs = openDouble(adAsyncFetch);
    const RowBlock block = rs->GetRows();
    ASSERT_EQ(block.rows, many + 17);
    for (RowCount i = 0; i < block.rows; ++i)
        ASSERT_EQ(block.values[0][static_cast<std::size_t>(i)].toI8(), i);
}

TEST_F(FetchTest, ASlowSourceShowsItsRows) {
    script->rows = 40;
    script->millisecondsPerRow = 15;
    const auto rs = openDouble(adAsyncFetch);
    EXPECT_LT(rs->RecordCount(), 20);
    RowCount seen = rs->RecordCount();
    int growths = 0;
    while (!rs->WaitFetch(5)) {
        if (rs->RecordCount() > seen) ++growths;
        seen = rs->RecordCount();
    }
    EXPECT_GE(growths, 2) << "rows show about every tenth of a second";
    EXPECT_EQ(rs->RecordCount(), 40);
}

TEST_F(FetchTest, RowsBeforeAStallShowWhileItLasts) {
    script->rows = 5'000;
    script->holdAt = 3'333;
    const auto rs = openDouble(adAsyncFetch);
    const auto start = Clock::now();
    while (rs->RecordCount() < 3'333 && seconds(start) < 5)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(rs->RecordCount(), 3'333);
    script->go();
    rs->MoveLast();
    EXPECT_EQ(current(*rs), 4'999);
}

TEST_F(FetchTest, AMoveToARowStillToComeWaitsForIt) {
    script->rows = many;
    script->holdAt = 100'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->SetAbsolutePosition(90'000);
    EXPECT_EQ(current(*rs), 89'999);
    std::thread releaser([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        script->go();
    });
    rs->Move(60'000);
    EXPECT_EQ(current(*rs), 149'999);
    rs->MoveLast();
    EXPECT_EQ(current(*rs), many - 1);
    releaser.join();
}

TEST_F(FetchTest, MoveNextOnTheLastKnownRowWaitsForTheNext) {
    script->rows = 20'000;
    const auto rs = openDouble(adAsyncFetch);
    RowCount walked = 0;
    for (; !rs->EOF_(); rs->MoveNext())
        ASSERT_EQ(current(*rs), walked++);
    EXPECT_EQ(walked, 20'000);
}

TEST_F(FetchTest, NonBlockingMoveLastGoesToTheLastKnownRow) {
    script->rows = many;
    script->holdAt = 70'000;
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    const RowCount known = rs->RecordCount();
    rs->MoveLast();
    EXPECT_GE(current(*rs), known - 1);
    EXPECT_LT(current(*rs), 70'000);
    EXPECT_EQ(rs->State(), adStateOpen | adStateFetching);
}

TEST_F(FetchTest, NonBlockingMovesBeyondTheKnownRowsGoToEof) {
    script->rows = many;
    script->holdAt = 256;
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    rs->Move(100'000);
    EXPECT_TRUE(rs->EOF_());
    rs->MovePrevious();
    EXPECT_LT(current(*rs), 256);
    rs->SetAbsolutePosition(150'000);
    EXPECT_TRUE(rs->EOF_());
    const RowBlock block = rs->GetRows(1'000, std::int32_t{adBookmarkFirst});
    EXPECT_LE(block.rows, 256);
    script->go();
    rs->WaitFetch(10'000);
    rs->SetAbsolutePosition(150'000);
    EXPECT_EQ(current(*rs), 149'999);
}

TEST_F(FetchTest, AFailureHalfWayIsStateErrorAndEvent) {
    script->rows = many;
    script->failAt = 60'000;
    EventLog log;
    const auto rs = openDouble(adAsyncFetch);
    rs->Subscribe(&log);
    ASSERT_TRUE(rs->WaitFetch(10'000));
    EXPECT_EQ(rs->State(), adStateOpen | adStateFetchBroken);
    ASSERT_TRUE(rs->FetchError());
    EXPECT_EQ(rs->FetchError()->descrizione(), "linea interrotta");
    EXPECT_EQ(rs->RecordCount(), 60'000) << "what came stays";
    ASSERT_TRUE(deliverUntil(
        [&] { return !log.lines.empty() && log.lines.back().starts_with("FetchComplete"); }));
    EXPECT_EQ(log.lines.back(), "FetchComplete error " + std::to_string(oleFail));
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, ABrokenFetchIsNeverShownAsTheEnd) {
    script->rows = many;
    script->failAt = 60'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->WaitFetch(10'000);
    rs->SetAbsolutePosition(60'000);
    const std::vector<std::function<void()>> beyond = {
        [&] { rs->MoveNext(); },
        [&] { rs->MoveLast(); },
        [&] { rs->Move(1); },
        [&] { rs->Move(1'000'000); },
        [&] { rs->GetRows(); },
        [&] { rs->GetRows(2); },
        [&] { rs->SetAbsolutePosition(60'001); },
        [&] { rs->Move(0, std::int32_t{adBookmarkLast}); },
    };
    for (std::size_t i = 0; i < beyond.size(); ++i) {
        EXPECT_EQ(descriptionOf(beyond[i]), "linea interrotta") << "call " << i;
        EXPECT_FALSE(rs->EOF_());
        EXPECT_EQ(current(*rs), 59'999);
    }
    EXPECT_EQ(rs->GetRows(10, std::int32_t{adBookmarkFirst}).rows, 10);
}

TEST_F(FetchTest, TheLastRowsOfABrokenFetchAreReadWhenNoMoreIsAsked) {
    script->rows = 20'000;
    script->failAt = 9'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->WaitFetch(10'000);
    RowCount read = 0;
    const auto error = errorOf([&] {
        while (!rs->EOF_())
            read += rs->GetRows(3'000).rows;
    });
    EXPECT_EQ(read, 9'000);
    EXPECT_EQ(error, oleFail) << "a walk in blocks that end at the last row is no short result";
}

TEST_F(FetchTest, AProvisionalEofTellsOfTheFailureThatFollowed) {
    script->rows = many;
    script->failAt = 50'000;
    script->holdAt = 300;
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    rs->Move(100'000);
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), 3021) << "still coming";
    script->go();
    rs->WaitFetch(10'000);
    EXPECT_EQ(descriptionOf([&] { rs->MoveNext(); }), "linea interrotta");
    rs->MovePrevious();
    EXPECT_EQ(current(*rs), 49'999);
}

TEST_F(FetchTest, AWalkOverABrokenFetchEndsInItsError) {
    script->rows = 20'000;
    script->failAt = 9'000;
    const auto rs = openDouble(adAsyncFetch);
    RowCount walked = 1;
    const auto error = errorOf([&] {
        for (; !rs->EOF_(); ++walked)
            rs->MoveNext();
    });
    EXPECT_EQ(error, oleFail);
    EXPECT_EQ(walked, 9'000);
}

TEST_F(FetchTest, AFailureInTheFirstBlockFailsTheOpen) {
    script->rows = many;
    script->failAt = 5;
    EXPECT_EQ(descriptionOf([] { openDouble(adAsyncFetch); }), "linea interrotta");
    EXPECT_EQ(script->live, 0);
}

TEST_F(FetchTest, ASynchronousOpenThatFailsHalfWayRaisesAndStaysClosed) {
    script->rows = many;
    script->failAt = 100'000;
    const auto rs = makeClientRecordset();
    EXPECT_EQ(descriptionOf([&] { rs->Open("righe", "Provider=Doppio"); }), "linea interrotta");
    EXPECT_EQ(rs->State(), adStateClosed);
    EXPECT_EQ(script->live, 0);
}

TEST_F(FetchTest, CancelKeepsWhatCameAndBreaksTheFetch) {
    script->rows = many;
    script->holdAt = 50'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->SetAbsolutePosition(40'000);
    const auto start = Clock::now();
    rs->Cancel();
    EXPECT_LT(seconds(start), 30.0) << "it would never end by itself";
    EXPECT_EQ(rs->State(), adStateOpen | adStateFetchBroken);
    EXPECT_EQ(rs->FetchError()->numero(), 3712);
    EXPECT_GE(rs->RecordCount(), 40'000);
    EXPECT_EQ(errorOf([&] { rs->MoveLast(); }), 3712);
    EXPECT_EQ(current(*rs), 39'999);
}

TEST_F(FetchTest, CancelAfterTheLastRowChangesNothing) {
    script->rows = 1'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->WaitFetch(10'000);
    rs->Cancel();
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_FALSE(rs->FetchError());
}

TEST_F(FetchTest, CloseStopsARunningFetchPromptly) {
    script->rows = many;
    script->holdAt = 1'000;
    const auto rs = openDouble(adAsyncFetch);
    const auto start = Clock::now();
    rs->Close();
    EXPECT_LT(seconds(start), 30.0) << "it would never end by itself";
    EXPECT_EQ(rs->State(), adStateClosed);
    EXPECT_EQ(script->live, 0);
    runOwnerQueue();
}

TEST_F(FetchTest, DestroyingTheRecordsetStopsARunningFetch) {
    script->rows = many;
    script->holdAt = 1'000;
    openDouble(adAsyncFetchNonBlocking);
    EXPECT_EQ(script->live, 0);
    EXPECT_EQ(script->reading, 0);
    runOwnerQueue();
}

TEST_F(FetchTest, ClosingAtEveryMomentNeverCrashes) {
    for (int i = 0; i < 60; ++i) {
        const auto own = std::make_shared<Script>();
        own->rows = 100'000;
        const ProviderDouble again(own);
        auto rs = openDouble(i % 2 ? adAsyncFetch : adAsyncFetchNonBlocking);
        std::this_thread::sleep_for(std::chrono::microseconds(i * 50));
        if (i % 3 == 0) rs->Close();
        if (i % 3 == 1) rs->Cancel();
        rs.reset();
        EXPECT_EQ(own->live, 0);
        runOwnerQueue();
    }
}

TEST_F(FetchTest, TheFetchGoesOnWhileACloneIsOpen) {
    script->rows = many;
    script->holdAt = 50'000;
    auto rs = openDouble(adAsyncFetch);
    const auto clone = rs->Clone();
    rs->Close();
    EXPECT_EQ(clone->State(), adStateOpen | adStateFetching);
    script->go();
    clone->MoveLast();
    EXPECT_EQ(current(*clone), many - 1);
}

TEST_F(FetchTest, EventsComeOnTheOwnerThreadAndEndWithFetchComplete) {
    script->rows = many;
    const auto owner = std::this_thread::get_id();
    EventLog log;
    log.onEvent = [&](const std::string&, Recordset& r) {
        EXPECT_EQ(std::this_thread::get_id(), owner);
        EXPECT_EQ(r.RecordCount(), many);
    };
    const auto rs = openDouble(adAsyncFetch);
    rs->WaitFetch(10'000);
    rs->Subscribe(&log);
    ASSERT_TRUE(
        deliverUntil([&] { return !log.lines.empty() && log.lines.back() == "FetchComplete"; }));
    EXPECT_EQ(log.lines.front(), "FetchProgress 200000");
    runOwnerQueue();
    EXPECT_EQ(std::ranges::count(log.lines, "FetchComplete"), 1);
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, ProgressComesAtMostTwentyTimesASecond) {
    script->rows = 120;
    script->millisecondsPerRow = 5;
    EventLog log;
    const auto rs = openDouble(adAsyncFetch);
    rs->Subscribe(&log);
    const auto start = Clock::now();
    ASSERT_TRUE(
        deliverUntil([&] { return !log.lines.empty() && log.lines.back() == "FetchComplete"; }));
    const double most = seconds(start) * 20 + 2;
    EXPECT_LE(static_cast<double>(log.lines.size()), most);
    EXPECT_GE(log.lines.size(), 3U);
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, ABusyOwnerFindsOnePieceOfNewsNotAHundred) {
    script->rows = 60;
    script->millisecondsPerRow = 6;
    const auto rs = openDouble(adAsyncFetch);
    rs->WaitFetch(10'000);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(runOwnerQueue(), 1U);
}

TEST_F(FetchTest, FetchCompleteComesAlsoWhereTheFirstBlockWasAll) {
    script->rows = 3;
    EventLog log;
    const auto rs = openDouble(adAsyncFetch);
    EXPECT_EQ(rs->State(), adStateOpen);
    rs->Subscribe(&log);
    runOwnerQueue();
    EXPECT_EQ(log.lines, (std::vector<std::string>{"FetchProgress 3", "FetchComplete"}));
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, AHandlerOfFetchCompleteMayMove) {
    script->rows = many;
    EventLog log;
    log.onEvent = [](const std::string& line, Recordset& r) {
        if (line == "FetchComplete") r.MoveLast();
    };
    const auto rs = openDouble(adAsyncFetch);
    rs->Subscribe(&log);
    ASSERT_TRUE(deliverUntil(
        [&] { return std::ranges::find(log.lines, "MoveComplete 15") != log.lines.end(); }));
    EXPECT_EQ(current(*rs), many - 1);
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, AHandlerOfFetchProgressMayClose) {
    script->rows = many;
    EventLog log;
    log.onEvent = [](const std::string& line, Recordset& r) {
        if (line.starts_with("FetchProgress")) r.Close();
    };
    const auto rs = openDouble(adAsyncFetch);
    rs->Subscribe(&log);
    ASSERT_TRUE(deliverUntil([&] { return rs->State() == adStateClosed; }));
    runOwnerQueue();
    EXPECT_EQ(std::ranges::count(log.lines, "FetchComplete"), 0);
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, NothingIsToldOfAFetchThatWasClosedOrRequeried) {
    script->rows = many;
    EventLog log;
    const auto rs = openDouble(adAsyncFetch);
    rs->WaitFetch(10'000);
    rs->Requery();
    rs->Subscribe(&log);
    runOwnerQueue();
    EXPECT_EQ(log.lines, std::vector<std::string>{});
    rs->Unsubscribe(&log);
}

TEST_F(FetchTest, RequeryWhileFetchingStartsAfresh) {
    script->rows = many;
    const auto rs = openDouble(adAsyncFetch);
    for (int i = 0; i < 5; ++i)
        rs->Requery(adAsyncFetch);
    rs->MoveLast();
    EXPECT_EQ(current(*rs), many - 1);
    EXPECT_EQ(script->live, 0);
}

TEST_F(FetchTest, ARequeryThatFailsBeforeItsFirstBlockKeepsTheRows) {
    script->rows = 1'000;
    const auto rs = openDouble(-1);
    rs->SetAbsolutePosition(500);
    script->failAt = 0;
    EXPECT_EQ(descriptionOf([&] { rs->Requery(adAsyncFetch); }), "linea interrotta");
    EXPECT_EQ(rs->RecordCount(), 1'000);
    EXPECT_EQ(current(*rs), 499);
    EXPECT_EQ(rs->State(), adStateOpen);
}

TEST_F(FetchTest, ASynchronousRequeryThatFailsHalfWayIsBrokenNotShort) {
    script->rows = many;
    const auto rs = openDouble(-1);
    script->failAt = 1'500;
    EXPECT_EQ(descriptionOf([&] { rs->Requery(); }), "linea interrotta");
    EXPECT_EQ(rs->State(), adStateOpen | adStateFetchBroken);
    EXPECT_EQ(rs->RecordCount(), 1'500);
    EXPECT_EQ(descriptionOf([&] { rs->MoveLast(); }), "linea interrotta");
}

TEST_F(FetchTest, ReadersOfPublishedRowsNeverMeetTheFetch) {
    script->rows = many;
    script->holdAt = many / 2; // so that there is something to read beside it
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    const auto clone = rs->Clone();
    std::int64_t read = 0;
    do {
        const RowCount known = clone->RecordCount();
        clone->SetAbsolutePosition(known);
        ASSERT_EQ(current(*clone), known - 1);
        const RowBlock block = clone->GetRows(50, std::int32_t{adBookmarkFirst});
        read += block.rows;
        script->go();
    } while (rs->State() & adStateFetching);
    EXPECT_GT(read, 0);
    rs->WaitFetch(10'000);
}

} // namespace
} // namespace norvel::adodb
