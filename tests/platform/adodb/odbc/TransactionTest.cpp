// Whole or not at all: what a transaction comes to when something gives way under it.
#include "tests/platform/adodb/odbc/ServerTest.h"

#include <chrono>
#include <dlfcn.h>
#include <functional>
#include <sql.h>
#include <sqlext.h>
#include <thread>
#include <utility>

namespace {

// What happens between a commit and the end of the transaction in the driver; once.
std::function<void()> afterCommit; // NOLINT(cert-err58-cpp): an empty function does not throw

} // namespace

// The driver manager's function, of which this program has its own: it goes on to the other one.
extern "C" SQLRETURN SQL_API SQLSetConnectAttr(SQLHDBC connection, SQLINTEGER attribute,
                                               SQLPOINTER value, SQLINTEGER length) {
    static const auto real =
        reinterpret_cast<decltype(&SQLSetConnectAttr)>(::dlsym(RTLD_NEXT, "SQLSetConnectAttr"));
    const bool on = reinterpret_cast<std::uintptr_t>(value) == SQL_AUTOCOMMIT_ON;
    if (attribute == SQL_ATTR_AUTOCOMMIT && on && afterCommit) std::exchange(afterCommit, {})();
    return real(connection, attribute, value, length);
}

namespace norvel::adodb {
namespace {

using namespace std::chrono_literals;

class OdbcTransaction : public OnServer {
  protected:
    void TearDown() override { afterCommit = {}; }
    // The numbers and texts of a table, those of a row together, rows between bars.
    std::string content(const std::string& name) const {
        const auto all = rows(open(), "SELECT n, t FROM " + name + " WHERE n < 100 ORDER BY n");
        std::string text;
        for (; !all->EOF_(); all->MoveNext())
            text += all->Fields()(0).Value().toText() + all->Fields()(1).Value().toText() + "|";
        return text;
    }
};
ON_SERVERS(OdbcTransaction);

TEST_P(OdbcTransaction, AServerThatStopsBehindACommitLeavesItCommitted) {
    for (const bool byHost : {false, true}) {
        server().start();
        const auto connection = open();
        table(connection, "registrata", "n integer primary key, t varchar(9)");
        const auto recordset = rows(connection, "SELECT * FROM registrata", adLockOptimistic);
        if (byHost) {
            connection->BeginTrans();
            connection->Execute("INSERT INTO registrata VALUES (1, 'a')");
        }
        bool stopped = false;
        afterCommit = [&] {
            stopped = true;
            server().stop();
        };
        EXPECT_EQ(descriptionOf([&] {
                      if (byHost)
                          connection->CommitTrans();
                      else
                          recordset->AddNew({Variant("n"), Variant("t")},
                                            {Variant(std::int32_t{1}), Variant("a")});
                  }),
                  "");
        EXPECT_TRUE(stopped);
        server().start();
        EXPECT_EQ(content("registrata"), "1a|") << "told as written, and written";
        EXPECT_EQ(first(connection, "SELECT 1").toI8(), 1) << "on a new connection";
    }
}

TEST_P(OdbcTransaction, AChangeThatWaitsForAnotherReadingLeavesTheTransactionAlone) {
    const auto connection = open();
    table(connection, "attesa", "n integer primary key, t varchar(9)");
    connection->Execute("INSERT INTO attesa VALUES (1, 'a')");
    connection->BeginTrans();
    connection->Execute("INSERT INTO attesa VALUES (2, 'b')");
    const auto recordset = rows(connection, "SELECT * FROM attesa WHERE n = 1", adLockOptimistic);
    const auto slow = rows(connection, pick("SELECT sleep(600)", "SELECT pg_sleep(600)"),
                           adLockReadOnly, adAsyncExecute | adAsyncFetchNonBlocking);
    std::this_thread::sleep_for(300ms);
    recordset->Fields()("t").SetValue("z");
    EXPECT_EQ(errorOf([&] { recordset->Update(); }), dbCommandTimeout);
    recordset->CancelUpdate();
    slow->Cancel();
    EXPECT_EQ(descriptionOf([&] { connection->Execute("INSERT INTO attesa VALUES (3, 'c')"); }),
              "");
    EXPECT_EQ(descriptionOf([&] { connection->CommitTrans(); }), "");
    EXPECT_EQ(content("attesa"), "1a|2b|3c|");
}

TEST_P(OdbcTransaction, ADeadlocksVictimIsNotCommittedByHalf) {
    const auto connection = open();
    const auto other = open();
    table(connection, "stallo", "n integer primary key, t varchar(9)");
    connection->Execute("INSERT INTO stallo VALUES (1, 'a'), (5, 'e')");
    connection->BeginTrans();
    connection->Execute("INSERT INTO stallo VALUES (2, 'b')");
    const auto recordset =
        rows(connection, "SELECT * FROM stallo WHERE n IN (1, 5) ORDER BY n", adLockOptimistic);
    recordset->Fields()("t").SetValue("z");
    recordset->Update();
    recordset->MoveNext();

    other->BeginTrans();
    std::string many = "INSERT INTO stallo VALUES (100, 'x')"; // MariaDB ends who wrote less
    for (int n = 101; n < 3000; ++n)
        many += ", (" + std::to_string(n) + ", 'x')";
    other->Execute(many);
    other->Execute("UPDATE stallo SET t = 'o' WHERE n = 5");
    std::thread waiting(
        [&] { descriptionOf([&] { other->Execute("UPDATE stallo SET t = 'o' WHERE n = 1"); }); });
    std::this_thread::sleep_for(500ms);
    recordset->Fields()("t").SetValue("z");
    EXPECT_NE(descriptionOf([&] { recordset->Update(); }), "");
    recordset->CancelUpdate();
    const std::string inserted =
        descriptionOf([&] { connection->Execute("INSERT INTO stallo VALUES (3, 'c')"); });
    const std::string committed =
        inserted.empty() ? descriptionOf([&] { connection->CommitTrans(); }) : inserted;
    waiting.join();
    other->RollbackTrans();
    if (committed.empty())
        EXPECT_EQ(content("stallo"), "1z|2b|3c|5e|");
    else
        EXPECT_EQ(content("stallo"), "1a|5e|") << committed;
    EXPECT_EQ(committed.empty(), postgres()) << "whose savepoint outlives a deadlock";
}

} // namespace
} // namespace norvel::adodb
