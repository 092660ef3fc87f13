// Hosts' connection strings, and where they lead.
#include "platform/adodb/odbc/OdbcErrors.h"
#include "platform/adodb/odbc/OdbcTarget.h"
#include "platform/adodb/odbc/StatementShape.h"
#include "platform/adodb/provider/Dialetto.h"
#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

const std::vector<OdbcEntry> drivers{{"MariaDB Unicode", ""}, {"Mio driver PostgreSQL", ""}};
const std::vector<OdbcEntry> sources{{"contabilita", "MariaDB Unicode"}};

std::string stringFor(const std::string& text) {
    const auto target = odbcTarget(ConnectionString(text), drivers, sources);
    return target ? driverString(*target) : "nulla";
}

TEST(OdbcTarget, HostsStringsLeadToDebiansDrivers) {
    const std::pair<const char*, const char*> cases[] = {
        {"Provider=SQLOLEDB;Data Source=srv;Initial Catalog=azienda;User ID=sa;Password=x",
         "DRIVER={FreeTDS};SERVER=srv;PORT=1433;DATABASE=azienda;UID=sa;PWD=x;"
         "ClientCharset=UTF-8;"},
        {"Provider=SQLNCLI11;Server=tcp:srv,1500;Database=a;Uid=u;Pwd=p",
         "DRIVER={FreeTDS};SERVER=srv;PORT=1500;DATABASE=a;UID=u;PWD=p;ClientCharset=UTF-8;"},
        {"Driver={SQL Server};Server=srv\\gest;Database=a;Trusted_Connection=yes",
         "DRIVER={FreeTDS};SERVER=srv\\gest;DATABASE=a;ClientCharset=UTF-8;"},
        {"Driver={MySQL ODBC 5.1 "
         "Driver};Server=srv;Port=3307;Database=a;User=u;Password=p;Option=3",
         "DRIVER={MariaDB Unicode};SERVER=srv;PORT=3307;DATABASE=a;UID=u;PWD=p;CHARSET=utf8mb4;"
         "OPTION=3;CONN_TIMEOUT=15;"},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\dati\\gest.mdb;User Id=admin",
         "DRIVER={MDBTools};DBQ=C:\\dati\\gest.mdb;"},
        {"Driver={Microsoft Access Driver (*.mdb)};DBQ=/dati/gest.mdb",
         "DRIVER={MDBTools};DBQ=/dati/gest.mdb;"},
        {"DSN=contabilita;UID=u;PWD=p",
         "DSN=contabilita;UID=u;PWD=p;CHARSET=utf8mb4;OPTION=2;CONN_TIMEOUT=15;"},
        {"Provider=MSDASQL;Data Source=contabilita;User ID=u;Password=p",
         "DSN=contabilita;UID=u;PWD=p;CHARSET=utf8mb4;OPTION=2;CONN_TIMEOUT=15;"},
        {"Provider=MSDASQL.1;Extended Properties=\"DRIVER=MySQL;SERVER=srv;UID=u;PWD=p\"",
         "DRIVER={MariaDB Unicode};SERVER=srv;UID=u;PWD=p;CHARSET=utf8mb4;OPTION=2;"
         "CONN_TIMEOUT=15;"},
        {"Provider=OraOLEDB.Oracle;Data Source=srv", "nulla"},
        {"Data Source=qualcosa", "nulla"},
        {"", "nulla"},
    };
    for (const auto& [host, driver] : cases)
        EXPECT_EQ(stringFor(host), driver) << host;
}

TEST(OdbcTarget, AnInstalledDriverOfTheVeryNameIsTaken) {
    EXPECT_TRUE(stringFor("Driver={Mio driver PostgreSQL};Server=s;sslmode=require")
                    .starts_with("DRIVER={Mio driver PostgreSQL};SERVERNAME=s;PORT=5432;"));
    EXPECT_NE(stringFor("Driver={Mio driver PostgreSQL};Server=s;sslmode=require")
                  .find("sslmode=require;"),
              std::string::npos);
}

TEST(OdbcTarget, ValuesKeepTheirSigns) {
    EXPECT_NE(stringFor("Driver=MySQL;Server=s;PWD=\"a;b{}c=d\"").find("PWD={a;b{}}c=d};"),
              std::string::npos);
}

TEST(OdbcTarget, QueriesAreNeutralWhereTheStringNamesNoServersDialect) {
    const std::pair<const char*, bool> cases[] = {
        {"Driver={MariaDB Unicode};Server=s", true},
        {"Driver={PostgreSQL Unicode};Server=s", true},
        {"Driver={MySQL ODBC 8.0 Unicode Driver};Server=s", false},
        {"Provider=SQLOLEDB;Data Source=s", false},
        {"DSN=contabilita", true},
    };
    for (const auto& [host, neutral] : cases)
        EXPECT_EQ(odbcTarget(ConnectionString(host), drivers, sources)->neutral, neutral) << host;
}

TEST(OdbcErrors, ServersTextsLoseWhoSpeaksAndPasswords) {
    EXPECT_EQ(plainText("[ma-3.1.15][10.11.19-MariaDB]Unknown column 'x'"), "Unknown column 'x'");
    EXPECT_EQ(plainText("ERROR: syntax error;\nError while executing the query"), "syntax error");
    EXPECT_EQ(plainText("refused\r\n\tIs it  there? \n"), "refused Is it  there?");
    const Errore error = odbcError({"42000", 1064, "near 'segreta' at line 1"}, "srv", "segreta");
    EXPECT_EQ(error.descrizione().find("segreta"), std::string::npos) << error.descrizione();
}

TEST(OdbcErrors, APasswordIsHiddenAsDriversWriteItToo) {
    for (const char* text : {"PWD={se}}gr'eta};", "IDENTIFIED BY 'se}gr''eta'", "se}gr'eta"}) {
        const Errore error = odbcError({"HY000", 0, text}, "srv", "se}gr'eta");
        EXPECT_EQ(error.descrizione().find("eta"), std::string::npos) << error.descrizione();
    }
}

TEST(OdbcErrors, AServerThatCannotBeFoundIsToldAsOneThatIsNotThere) {
    for (const OdbcDiagnostic& told :
         {OdbcDiagnostic{"HY000", 2005, "Unknown server host 'srv' (-2)"},
          OdbcDiagnostic{"HY000", 2002, "Can't connect to server on 'srv' (111)"},
          OdbcDiagnostic{"08001", 101, "could not translate host name \"srv\" to address"}})
        EXPECT_EQ(odbcError(told, "srv/azienda", "")
                      .descrizione()
                      .rfind("La connessione con «srv/azienda» non c'è", 0),
                  0U)
            << odbcError(told, "srv/azienda", "").descrizione();
}

TEST(StatementShape, WhatLeavesSomethingOnTheConnection) {
    const std::pair<const char*, StatementKind> cases[] = {
        {"SELECT * FROM t", StatementKind::Reads},
        {" ( select 1 ) union (select 2)", StatementKind::Reads},
        {"-- nota\nSELECT 'into' FROM t", StatementKind::Reads},
        {"WITH a AS (SELECT 1) SELECT * FROM a", StatementKind::Reads},
        {"WITH a AS (DELETE FROM t RETURNING *) SELECT * FROM a", StatementKind::Own},
        {"SELECT * INTO #x FROM t", StatementKind::Own},
        {"SELECT * FROM t FOR UPDATE", StatementKind::Own},
        {"SELECT @a := 1", StatementKind::Own},
        {"SELECT last_insert_id()", StatementKind::Own},
        {"UPDATE t SET a = 1", StatementKind::Writes},
        {"CREATE TABLE t (a int)", StatementKind::Writes},
        {"CREATE TEMPORARY TABLE t (a int)", StatementKind::Own},
        {"SET NAMES utf8", StatementKind::Own},
        {"", StatementKind::Own},
    };
    for (const auto& [sql, kind] : cases)
        EXPECT_EQ(kindOfStatement(sql), kind) << sql;
}

TEST(StatementShape, RowsOfOneTable) {
    EXPECT_TRUE(readsOneTable("SELECT a, b FROM t WHERE c IN (1, 2) ORDER BY a, b"));
    EXPECT_TRUE(readsOneTable("select * from s.t x"));
    for (const char* sql : {"SELECT * FROM a, b", "SELECT * FROM a JOIN b ON 1=1",
                            "SELECT * FROM (SELECT * FROM a) x", "SELECT * FROM a UNION SELECT 1",
                            "SELECT (SELECT 1) FROM a", "UPDATE a SET b = 1", ""})
        EXPECT_FALSE(readsOneTable(sql)) << sql;
}

} // namespace
} // namespace norvel::adodb
