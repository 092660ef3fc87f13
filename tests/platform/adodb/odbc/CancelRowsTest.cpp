// Cancelling while rows come one by one.
#include "tests/platform/adodb/odbc/ServerTest.h"

namespace norvel::adodb {
namespace {

class OdbcCancelRows : public OnServer {
  protected:
    // The first come at once, then each takes a second: a portion of them more than half an hour.
    std::string ever() const {
        return pick("SELECT seq AS n FROM seq_1_to_1000000 WHERE seq < 2500 OR sleep(1) = 0",
                    "SELECT n, CASE WHEN n > 2500 THEN pg_sleep(1)::text END AS t FROM "
                    "generate_series(1, 1000000) n");
    }
    RowCount running() const {
        return first(open(), pick("SELECT count(*) FROM information_schema.processlist WHERE state "
                                  "= 'User sleep'",
                                  "SELECT count(*) FROM pg_stat_activity WHERE state = 'active' "
                                  "AND pid <> pg_backend_pid()"))
            .toI8();
    }
};
ON_SERVERS(OdbcCancelRows);

// From MariaDB none have come yet: its driver has all before it gives the first.
TEST_P(OdbcCancelRows, RowsThatComeOneByOneEndOnTheServer) {
    const auto connection = open();
    connection->SetCommandTimeout(0);
    const auto recordset =
        rows(connection, ever(), adLockReadOnly, adAsyncExecute | adAsyncFetchNonBlocking);
    ASSERT_TRUE(deliverUntil([&] { return running() == 1; }, 60000));
    if (postgres()) {
        ASSERT_TRUE(deliverUntil(
            [&] {
                return (recordset->State() & adStateOpen) != 0 && recordset->RecordCount() >= 2000;
            },
            60000));
    }
    recordset->Cancel();
    ASSERT_TRUE(recordset->WaitFetch(60000));
    ASSERT_TRUE(recordset->FetchError());
    EXPECT_EQ(recordset->FetchError()->numero(), adErrOperationCancelled);
    EXPECT_TRUE(deliverUntil([&] { return running() == 0; }, 60000));
    EXPECT_EQ(first(connection, "SELECT 1").toI8(), 1);
    if (!postgres()) return;
    EXPECT_EQ(recordset->RecordCount(), 2000); // the portion that had come
    recordset->MoveFirst();
    EXPECT_EQ(current(*recordset), 1);
}

} // namespace
} // namespace norvel::adodb
