// The neutral notation in the servers' own words, and run by them.
#include "platform/adodb/odbc/ServerNotation.h"
#include "query/ElaboraQuery.h"
#include "tests/platform/adodb/odbc/ServerTest.h"

namespace norvel::adodb {
namespace {

TEST(ServerNotation, EachServersWords) {
    const struct {
        const char* neutral;
        const char* mySql;
        const char* postgreSql;
        const char* sqlServer;
    } cases[] = {
        {"d>=#03/15/2011#", "d>=DATE '2011-03-15'", "d>=DATE '2011-03-15'",
         "d>=CONVERT(DATETIME, '2011-03-15 00:00:00', 120)"},
        {"d=#2011-03-15 14:30:05#", "d=TIMESTAMP '2011-03-15 14:30:05'",
         "d=TIMESTAMP '2011-03-15 14:30:05'", "d=CONVERT(DATETIME, '2011-03-15 14:30:05', 120)"},
        {"iif(a=1;'x';iif(b;2,3);)", "IF(a=1, 'x', IF(b, 2, 3))",
         "CASE WHEN a=1 THEN 'x' ELSE CASE WHEN b THEN 2 ELSE 3 END END",
         "CASE WHEN a=1 THEN 'x' ELSE CASE WHEN b THEN 2 ELSE 3 END END"},
        {"datediff('d',a,f(b,1))", "DATEDIFF(f(b,1), a)",
         "(CAST(f(b,1) AS date) - CAST(a AS date))", "DATEDIFF(day, a, f(b,1))"},
        {"[Data Nascita], [codice]", "`Data Nascita`, `codice`", "\"Data Nascita\", \"codice\"",
         "[Data Nascita], [codice]"},
        {"a=True or b=False", "a=True or b=False", "a=True or b=False", "a=1 or b=0"},
        {"RTRIM(myTR.n)<>''", "RTRIM(myTR.n)<>''", "rtrim((myTR.n)::text)<>''",
         "RTRIM(myTR.n)<>''"},
        {"n LIKE 'a%' or m not like '%b\\%'", "n LIKE 'a%' or m not like '%b\\\\%'",
         "n::text ILIKE 'a%' ESCAPE '' or m::text NOT ILIKE '%b\\%' ESCAPE ''",
         "n LIKE 'a%' or m not like '%b\\%'"},
        {"'#03/15/2011# [x] iif(a;b;c;)' -- #1/1/2011#",
         "'#03/15/2011# [x] iif(a;b;c;)' -- #1/1/2011#",
         "'#03/15/2011# [x] iif(a;b;c;)' -- #1/1/2011#",
         "'#03/15/2011# [x] iif(a;b;c;)' -- #1/1/2011#"},
        {"iif(a;b) datediff('w',a,b) # iif", "iif(a;b) datediff('w',a,b) # iif",
         "iif(a;b) datediff('w',a,b) # iif", "iif(a;b) datediff('w',a,b) # iif"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(serverNotation(c.neutral, ServerKind::MySql), c.mySql);
        EXPECT_EQ(serverNotation(c.neutral, ServerKind::PostgreSql), c.postgreSql);
        EXPECT_EQ(serverNotation(c.neutral, ServerKind::SqlServer), c.sqlServer);
    }
}

TEST(ServerNotation, BooleansMeetBooleans) {
    const NameSet booleans{"attivo"};
    const std::pair<const char*, const char*> cases[] = {
        {"attivo=-1", "attivo=TRUE"},
        {"myTR.Attivo <> 0", "myTR.Attivo<>FALSE"},
        {"0 = t.attivo", "FALSE = t.attivo"},
        {"-1=attivo", "TRUE=attivo"},
        {"codice=1", "codice=1"},
        {"attivo=True", "attivo=True"},
    };
    for (const auto& [neutral, server] : cases)
        EXPECT_EQ(serverNotation(neutral, ServerKind::PostgreSql, booleans), server);
}

class OdbcNotation : public OnServer {
  protected:
    void SetUp() override {
        connection_ = open();
        table(connection_, "fatture",
              "numero integer primary key, cliente varchar(40), emessa date, scadenza " +
                  pick("datetime", "timestamp") + ", importo decimal(10,2), pagata " +
                  pick("tinyint(1)", "boolean") + ", nota " + pick("text", "text"));
        const std::string yes = pick("1", "true");
        const std::string no = pick("0", "false");
        connection_->Execute("INSERT INTO fatture VALUES (1, 'Rossi', '2011-03-15', '2011-04-15 "
                             "00:00:00', 10.50, " +
                             yes +
                             ", 'a'), (2, 'Bianchi', '2011-03-16', '2011-03-31 12:00:00', 20, " +
                             no + ", ''), (12, 'rossi', NULL, NULL, NULL, NULL, NULL)");
    }
    // The first column of the rows, one after the other.
    std::string list(const std::string& sql) const {
        std::string text;
        const auto recordset = rows(connection_, sql);
        for (; !recordset->EOF_(); recordset->MoveNext())
            text += recordset->Fields()(0).Value().toDisplay() + "|";
        return text;
    }
    ConnectionRef connection_;
};
ON_SERVERS(OdbcNotation);

TEST_P(OdbcNotation, QueriesInTheNeutralNotationRun) {
    EXPECT_EQ(list("SELECT numero FROM fatture WHERE emessa>=#03/16/2011#"), "2|");
    EXPECT_EQ(list("SELECT numero FROM fatture WHERE scadenza=#04/15/2011# ORDER BY numero"), "1|");
    EXPECT_EQ(list("SELECT datediff('d',emessa,scadenza) FROM fatture WHERE numero<3 ORDER BY 1"),
              "15|31|");
    EXPECT_EQ(list("SELECT datediff('m',emessa,scadenza) FROM fatture WHERE numero<3 ORDER BY 1"),
              "0|1|");
    EXPECT_EQ(list("SELECT iif(importo>15;'tanto';'poco';) FROM fatture WHERE numero<3 ORDER BY 1"),
              "poco|tanto|");
    EXPECT_EQ(list("SELECT [numero] FROM [fatture] WHERE pagata=True"), "1|");
    EXPECT_EQ(list("SELECT numero FROM fatture WHERE cliente LIKE 'ROS%' ORDER BY numero"),
              "1|12|");
    EXPECT_EQ(list("SELECT numero FROM fatture WHERE numero LIKE '1%' ORDER BY numero"), "1|12|");
}

TEST_P(OdbcNotation, ABooleanIsComparedWithANumber) {
    EXPECT_EQ(list("SELECT numero FROM fatture WHERE pagata<>0"), "1|");
    EXPECT_EQ(list("SELECT myTR.numero FROM (SELECT * FROM fatture) myTR WHERE myTR.pagata=0"),
              "2|");
}

// Exactly what a column's drop-down asks, rendered for the connection's own string.
TEST_P(OdbcNotation, ValueListsOfEveryTypeRun) {
    const std::pair<const char*, const char*> cases[] = {
        {"numero", "1|2|12|"},
        {"emessa", "15/03/2011|16/03/2011|"},
        {"importo", "10,5|20|"},
        {"nota", "a|"},
    };
    for (const std::string& text : {server().connection(), server().dialectConnection()}) {
        connection_ = makeConnection();
        connection_->Open(text);
        for (const auto& [field, expected] : cases) {
            Variant query = replaceText("SELECT myTR.campo FROM (SELECT * FROM fatture) myTR WHERE "
                                        "RTRIM(myTR.campo)<>'' GROUP BY myTR.campo ORDER BY "
                                        "myTR.campo",
                                        "campo", field);
            EXPECT_EQ(list(query::ElaboraQuery(query, connection_->ConnectionString())), expected);
        }
    }
}

TEST_P(OdbcNotation, RenderedDatesAndConditionsRunOnTheirServer) {
    connection_ = makeConnection();
    connection_->Open(server().dialectConnection());
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT numero FROM fatture WHERE emessa>=#03/16/2011# and emessa<#2011-12-31#;", "2|"},
        {"SELECT  iif(importo>15;'tanto';'poco';) FROM fatture WHERE numero<3 ORDER BY numero",
         "poco|tanto|"},
        {"SELECT abs(datediff('d',emessa,scadenza)) FROM fatture WHERE numero=1", "31|"},
    };
    for (const auto& [neutral, expected] : cases) {
        Variant query = neutral;
        EXPECT_EQ(list(query::ElaboraQuery(query, connection_->ConnectionString())), expected)
            << neutral;
    }
}

} // namespace
} // namespace norvel::adodb
