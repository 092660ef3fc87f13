// What the tests over real servers share: each runs once a server.
#pragma once

#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/odbc/Servers.h"

#include <string>

namespace norvel::adodb {

class OnServer : public testing::TestWithParam<std::string> {
  protected:
    TestServer& server() const { return testServer(GetParam()); }
    bool postgres() const { return server().isPostgres(); }
    const std::string& pick(const std::string& mariaDb, const std::string& postgreSql) const {
        return postgres() ? postgreSql : mariaDb;
    }
    ConnectionRef open() const {
        auto connection = makeConnection();
        connection->Open(server().connection());
        return connection;
    }
    static RecordsetRef rows(const ConnectionRef& connection, const std::string& sql,
                             LockTypeEnum lock = adLockReadOnly, int options = -1) {
        auto recordset = makeClientRecordset();
        recordset->Open(sql, ObjectRef(connection), adOpenStatic, lock, options);
        return recordset;
    }
    static Variant first(const ConnectionRef& connection, const std::string& sql) {
        return rows(connection, sql)->Fields()(0).Value();
    }
    // A new table of that name.
    static void table(const ConnectionRef& connection, const std::string& name,
                      const std::string& columns) {
        connection->Execute("DROP TABLE IF EXISTS " + name);
        connection->Execute("CREATE TABLE " + name + " (" + columns + ")");
    }
};

// Every test of a suite on every server.
#define ON_SERVERS(suite)                                                                          \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(serverNames()),                            \
                             [](const auto& each) { return each.param; })

} // namespace norvel::adodb
