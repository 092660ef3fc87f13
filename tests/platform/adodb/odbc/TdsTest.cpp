// SQL Server's driver, on a server that stands in for one: what reaches the server, and what comes
// of its answers. No SQL is run here.
#include "query/ElaboraQuery.h"
#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/odbc/TdsServer.h"

#include <chrono>
#include <thread>

namespace norvel::adodb {
namespace {

using namespace std::chrono_literals;

class OdbcSqlServer : public testing::Test {
  protected:
    RecordsetRef open(const std::string& sql, int options = -1) {
        if (connection_->State() == adStateClosed) connection_->Open(server_.connection());
        auto recordset = makeClientRecordset();
        recordset->Open(sql, ObjectRef(connection_), adOpenStatic, adLockReadOnly, options);
        return recordset;
    }
    TdsServer server_;
    ConnectionRef connection_ = makeConnection();
};

TEST_F(OdbcSqlServer, RenderedQueriesArriveAsTheyAre) {
    Variant query =
        "SELECT codice, nome FROM clienti WHERE nato >= #03/15/2011# AND città='Forlì';";
    const std::string rendered = query::ElaboraQuery(query, server_.connection());
    open(rendered);
    ASSERT_EQ(server_.texts().size(), 1U);
    EXPECT_EQ(server_.texts().front(),
              "SELECT TOP 100 PERCENT codice, nome FROM clienti WHERE nato >=  CONVERT(DATETIME,"
              "'2011-03-15 00:00:00', 102)  AND città='Forlì'");
}

TEST_F(OdbcSqlServer, ItsTypesBecomeAdos) {
    const auto recordset = open("SELECT * FROM clienti");
    Fields& fields = recordset->Fields();
    ASSERT_EQ(recordset->RecordCount(), 2);
    EXPECT_EQ(fields("codice").Type(), adInteger);
    EXPECT_EQ(fields("codice").Value(), std::int32_t{7});
    EXPECT_EQ(fields("nome").Type(), adVarWChar);
    EXPECT_EQ(fields("nome").Value(), "Città");
    EXPECT_EQ(fields("importo").Type(), adNumeric);
    EXPECT_EQ(fields("importo").Value(), Decimal::fromScaled(123456, 2));
    EXPECT_EQ(fields("emessa").Type(), adDBTimeStamp);
    EXPECT_EQ(fields("emessa").Value(), Date{40617.5});
    EXPECT_EQ(fields("attivo").Type(), adBoolean);
    EXPECT_EQ(fields("attivo").Value(), true);
    recordset->MoveNext();
    for (int i = 0; i < fields.Count(); ++i)
        EXPECT_TRUE(fields(i).Value().isNull()) << i;
}

TEST_F(OdbcSqlServer, ItsErrorsKeepTheirText) {
    server_.refuses = true;
    const std::string text = descriptionOf([&] { open("SELECT manca FROM clienti"); });
    EXPECT_NE(text.find("Invalid column name 'manca'."), std::string::npos) << text;
}

TEST_F(OdbcSqlServer, ARefusedUserIsToldWithoutThePassword) {
    server_.refusesUsers = true;
    const auto call = [&] { open("SELECT 2"); };
    EXPECT_EQ(errorOf(call), dbAuthFailed) << descriptionOf(call);
    EXPECT_EQ(descriptionOf(call).find("segretissima"), std::string::npos);
}

TEST_F(OdbcSqlServer, ALongQueryIsCalledOff) {
    server_.silent = true;
    const auto recordset = open("SELECT * FROM enorme", adAsyncExecute | adAsyncFetchNonBlocking);
    EventLog log;
    recordset->Subscribe(&log);
    ASSERT_TRUE(deliverUntil([&] { return !server_.texts().empty(); }));
    recordset->Cancel();
    ASSERT_TRUE(deliverUntil([&] { return !log.lines.empty(); }, 20000));
    EXPECT_EQ(log.lines.back(), "FetchComplete error 3712");
    EXPECT_GE(server_.attentions, 1);
    recordset->Unsubscribe(&log);
}

} // namespace
} // namespace norvel::adodb
