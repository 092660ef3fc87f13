// The cases of queries and value lists, run by every server: rendered for the dialect that its
// string names, and in the neutral notation. The embedded database says what they should bring.
#include "tests/platform/adodb/odbc/ServerTest.h"
#include "tests/query/Archivio.h"
#include "tests/query/Casi.h"

namespace norvel::adodb {
namespace {

using query::Caso;

constexpr const char* refused = "refused";

class OdbcRenderedCases : public OnServer {
  protected:
    void SetUp() override {
        connection_ = open();
        table(connection_, "clienti",
              "codice integer primary key, nome varchar(40), citta varchar(40), note varchar(40), "
              "nato date, prezzo double precision, attivo boolean, Annullato varchar(40)");
        connection_->Execute(
            "INSERT INTO clienti VALUES (1,'Anna','Roma',NULL,'1980-03-15',12.5,true,'si'),"
            "(2,'Bruno',NULL,'','1990-07-01',7,false,'no'),"
            "(3,'Carla d''Ami','Roma','x',NULL,NULL,NULL,NULL),"
            "(4,'Élodie','','y','2000-01-01',100,true,'')");
    }
    // The rows as the archive writes them, or that they were refused.
    static std::string rowsOf(const ConnectionRef& connection, const std::string& sql) {
        std::vector<std::string> all;
        const auto read = [&] {
            const auto recordset = rows(connection, sql);
            const int count = recordset->Fields().Count();
            for (; !recordset->EOF_(); recordset->MoveNext()) {
                std::vector<std::string> values(static_cast<std::size_t>(count));
                for (int i = 0; i < count; ++i)
                    values[static_cast<std::size_t>(i)] =
                        recordset->Fields()(i).Value().toDisplay();
                all.push_back(query::uniti(values));
            }
        };
        return errorOf(read) == 0 ? query::uniti(all, " / ") : refused;
    }
    // Every case runs by a connection's string and brings what the embedded database does, or what
    // the case says of that server.
    static void run(const std::string& connectionString, const std::string& server) {
        const query::Archivio archive;
        const auto embedded = makeConnection();
        embedded->Open(archive.connessione());
        const auto connection = makeConnection();
        connection->Open(connectionString);
        for (const Caso& caso : query::leggiCasi("server.casi")) {
            ASSERT_NE(caso.nome, "Illeggibile") << caso.luogo;
            const std::string sql = query::queryDelCaso(caso, connectionString);
            SCOPED_TRACE(caso.nome + ": " + sql);
            std::string expected =
                rowsOf(embedded, query::queryDelCaso(caso, archive.connessione()));
            if (const auto other = caso.testo("righe" + server)) expected = *other;
            if (caso.testo("rifiuta" + server)) expected = refused;
            EXPECT_EQ(rowsOf(connection, sql), expected);
        }
    }
    ConnectionRef connection_;
};
ON_SERVERS(OdbcRenderedCases);

TEST_P(OdbcRenderedCases, RunInTheServersDialect) {
    run(server().dialectConnection(), postgres() ? "PostgreSql" : "MySql");
}

TEST_P(OdbcRenderedCases, RunInTheNeutralNotation) {
    run(server().connection(), postgres() ? "PostgreSql" : "MariaDb");
}

} // namespace
} // namespace norvel::adodb
