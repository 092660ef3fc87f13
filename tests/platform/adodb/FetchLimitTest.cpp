// More rows than memory.
#include "platform/adodb/fetch/FetchLimit.h"

#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

class FetchLimit : public testing::Test {
  protected:
    void TearDown() override { setFetchLimit(0); }
    static constexpr std::size_t megabyte = std::size_t{1024} * 1024;
    std::shared_ptr<Script> script_ = std::make_shared<Script>();
    ProviderDouble provider_{script_};
};

TEST_F(FetchLimit, IsAQuarterOfTheMachinesMemory) {
    EXPECT_GT(machineMemory(), 64 * megabyte);
    EXPECT_EQ(fetchLimit(), machineMemory() / 4);
    setFetchLimit(megabyte);
    EXPECT_EQ(fetchLimit(), megabyte);
}

TEST_F(FetchLimit, StopsTheFetchAndSaysThatThereIsMore) {
    setFetchLimit(megabyte);
    script_->rows = 100'000'000;
    const auto recordset = openDouble(adAsyncFetch);
    EventLog log;
    recordset->Subscribe(&log);
    ASSERT_TRUE(deliverUntil([&] { return (recordset->State() & adStateFetching) == 0; }, 60000));
    ASSERT_TRUE(deliverUntil(
        [&] { return !log.lines.empty() && log.lines.back().starts_with("FetchComplete"); }));
    EXPECT_EQ(log.lines.back(), "FetchComplete error " + std::to_string(dbStopLimit));
    recordset->Unsubscribe(&log);
    ASSERT_TRUE(recordset->FetchError());
    EXPECT_NE(recordset->FetchError()->descrizione().find("ce ne sono altri"), std::string::npos);
    EXPECT_NE(recordset->State() & adStateFetchBroken, 0);
    EXPECT_GT(recordset->RecordCount(), 100'000);
    EXPECT_LT(recordset->RecordCount(), 10'000'000);
}

TEST_F(FetchLimit, WhatCameIsFilteredSortedAndRead) {
    setFetchLimit(megabyte);
    script_->rows = 100'000'000;
    const auto recordset = openDouble(adAsyncFetch);
    ASSERT_TRUE(recordset->WaitFetch(60000));
    recordset->SetFilter("n < 10");
    EXPECT_EQ(recordset->RecordCount(), 10);
    recordset->SetSort("n DESC");
    recordset->MoveFirst();
    EXPECT_EQ(current(*recordset), 9);
    EXPECT_EQ(errorOf([&] { recordset->GetRows(); }), dbStopLimit); // there may be more that match
}

TEST_F(FetchLimit, AnOpenThatWaitsForEveryRowFails) {
    setFetchLimit(megabyte);
    script_->rows = 100'000'000;
    EXPECT_EQ(errorOf([] { openDouble(-1); }), dbStopLimit);
}

TEST_F(FetchLimit, FewerRowsAreAllThere) {
    setFetchLimit(megabyte);
    script_->rows = 1000;
    const auto recordset = openDouble(-1);
    EXPECT_EQ(recordset->RecordCount(), 1000);
    EXPECT_FALSE(recordset->FetchError());
}

} // namespace
} // namespace norvel::adodb
