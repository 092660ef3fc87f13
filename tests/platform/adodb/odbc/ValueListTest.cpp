// A column's list of values over a server: composed, rendered, run, and what of it breaks.
#include "tests/platform/adodb/ValueItems.h"
#include "tests/platform/adodb/odbc/ServerTest.h"

namespace norvel::adodb {
namespace {

class OdbcValueList : public OnServer {
  protected:
    void SetUp() override {
        const auto connection = open();
        table(connection, "elenco",
              "codice integer primary key, citta varchar(40), attivo " + pick("bit(1)", "boolean") +
                  ", nato date");
        connection->Execute("INSERT INTO elenco VALUES (1, 'Roma', " + pick("1", "true") +
                            ", '2011-03-15'), (2, 'Romagnano', " + pick("0", "false") +
                            ", NULL), (3, '', NULL, '2011-03-16'), (12, 'L''Aquila', " +
                            pick("1", "true") + ", NULL)");
    }
};
ON_SERVERS(OdbcValueList);

TEST_P(OdbcValueList, EveryColumnUnderEveryFilter) {
    const struct {
        const char* filter;
        const char* field;
        const char* items;
    } cases[] = {
        {"", "citta", "L'Aquila|Roma|Romagnano|"},
        {"", "codice", "1|2|3|12|"},
        {"", "nato", "15/03/2011|16/03/2011|"},
        {"citta LIKE 'Rom*'", "codice", "1|2|"},
        {"citta = 'L''Aquila'", "codice", "12|"},
        {"codice >= 3", "citta", "L'Aquila|"},
        {"nato=NULL", "codice", "2|12|"},
        {"nato<>NULL", "codice", "1|2|3|12|"}, // widened by the list's own column
        {"attivo <> 0", "codice", "1|12|"},
    };
    for (const std::string& text : {server().connection(), server().dialectConnection()}) {
        const auto recordset = openOn(text, "SELECT * FROM elenco ORDER BY codice;");
        for (const auto& c : cases) {
            recordset->SetFilter(c.filter);
            EXPECT_EQ(valueItems(*recordset, c.field), c.items) << c.filter << " " << c.field;
        }
        recordset->SetFilter("");
        EXPECT_EQ(valueItems(*recordset, "attivo").find_first_not_of("-01|"), std::string::npos);
    }
}

TEST_P(OdbcValueList, TheServerStopsWhileItFills) {
    const std::string many =
        pick("SELECT seq AS n, repeat('x', 100) AS t FROM seq_1_to_500000",
             "SELECT n, repeat('x', 100) AS t FROM generate_series(1, 5000000) n");
    const auto recordset = openOn(server().connection(), "SELECT * FROM elenco");
    const auto values = makeClientRecordset();
    values->Open(many, recordset->ActiveConnection(), adOpenUnspecified, adLockUnspecified,
                 adAsyncFetch);
    server().stop();
    EXPECT_TRUE(values->WaitFetch(60000));
    EXPECT_GT(values->RecordCount(), 0); // what came stays
    EXPECT_EQ(recordset->RecordCount(), 4);
    EXPECT_NE(errorOf([&] { valueItems(*recordset, "citta"); }), 0);
    server().start();
    EXPECT_EQ(valueItems(*recordset, "citta"), "L'Aquila|Roma|Romagnano|");
}

} // namespace
} // namespace norvel::adodb
