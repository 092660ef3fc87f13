// Rows changed in servers' tables, by one and by two at once.
#include "tests/platform/adodb/odbc/ServerTest.h"

#include <sys/wait.h>
#include <unistd.h>

namespace norvel::adodb {
namespace {

class OdbcChange : public OnServer {
  protected:
    void SetUp() override {
        connection_ = open();
        table(connection_, "clienti",
              "codice integer primary key, nome varchar(50), nato date, modificato " +
                  pick("datetime", "timestamp") +
                  ", saldo decimal(12,2), peso double precision, attivo " +
                  pick("bit(1)", "boolean") + ", nota " + pick("longtext", "text") + ", foto " +
                  pick("longblob", "bytea"));
        connection_->Execute(
            "INSERT INTO clienti (codice, nome, saldo) VALUES (1, 'Uno', 1.5), (2, "
            "'Due', 2.5)");
    }
    RecordsetRef clienti() const {
        return rows(connection_, "SELECT * FROM clienti ORDER BY codice", adLockOptimistic);
    }
    Variant value(const std::string& expression, int codice) const {
        return first(connection_, "SELECT " + expression +
                                      " FROM clienti WHERE codice = " + std::to_string(codice));
    }
    ConnectionRef connection_;
};
ON_SERVERS(OdbcChange);

TEST_P(OdbcChange, EveryTypeIsWrittenAndReadBack) {
    const auto recordset = clienti();
    Fields& fields = recordset->Fields();
    const std::string text = "l'è \"così\" \\ ; 日本";
    fields("nome").SetValue(text);
    fields("nato").SetValue(Date{40617});
    fields("modificato").SetValue(Date{40617.25});
    fields("saldo").SetValue(Decimal::fromScaled(-123456, 2));
    fields("peso").SetValue(0.1);
    fields("attivo").SetValue(true);
    fields("nota").SetValue(std::string(100000, 'x'));
    fields("foto").SetValue(Bytes{0, 1, 255});
    recordset->Update();
    const auto again = clienti();
    for (const auto& each : {recordset, again}) {
        EXPECT_EQ(each->Fields()("nome").Value(), text);
        EXPECT_EQ(each->Fields()("nato").Value(), Date{40617});
        EXPECT_EQ(each->Fields()("modificato").Value(), Date{40617.25});
        EXPECT_EQ(each->Fields()("saldo").Value(), Decimal::fromScaled(-123456, 2));
        EXPECT_EQ(each->Fields()("peso").Value(), 0.1);
        EXPECT_EQ(each->Fields()("attivo").Value(), true);
        EXPECT_EQ(each->Fields()("nota").Value().text().size(), 100000U);
        EXPECT_EQ(each->Fields()("foto").Value(), (Bytes{0, 1, 255}));
    }
    recordset->Fields()("nome").SetValue(Variant::null());
    recordset->Update();
    EXPECT_TRUE(value("nome", 1).isNull());
    EXPECT_EQ(value("nome", 2), "Due");
}

TEST_P(OdbcChange, RowsAreAddedAndDeleted) {
    const auto recordset = clienti();
    recordset->AddNew();
    recordset->Fields()("codice").SetValue(std::int32_t{7});
    recordset->Fields()("nome").SetValue("Sette");
    recordset->Update();
    EXPECT_EQ(value("nome", 7), "Sette");
    EXPECT_EQ(recordset->RecordCount(), 3);
    recordset->MoveFirst();
    recordset->Delete();
    EXPECT_EQ(first(connection_, "SELECT count(*) FROM clienti").toI8(), 2);
}

TEST_P(OdbcChange, TheNumberThatTheServerGivesIsReadBack) {
    table(connection_, "numerati",
          pick("id integer auto_increment primary key", "id serial primary key") +
              ", nome varchar(20)");
    const auto recordset = rows(connection_, "SELECT * FROM numerati", adLockOptimistic);
    for (int n = 1; n <= 2; ++n) {
        recordset->AddNew({Variant("nome")}, {Variant("x")});
        EXPECT_EQ(recordset->Fields()("id").Value().toI8(), n);
    }
}

TEST_P(OdbcChange, ARowWhoseKeyTheDatabaseMadeIsReadBack) {
    table(connection_, "altri",
          pick("id integer auto_increment primary key", "id serial primary key"));
    connection_->Execute(pick("INSERT INTO altri VALUES ()", "INSERT INTO altri DEFAULT VALUES"));
    for (const auto& key :
         {std::string("k integer default 5"),
          pick("k char(36) default (uuid())", "k uuid default gen_random_uuid()")}) {
        table(connection_, "chiavi", key + " primary key, nome varchar(20)");
        const bool number = key.starts_with("k integer");
        if (number) connection_->Execute("INSERT INTO chiavi VALUES (1, 'un altro')");
        const auto recordset = rows(connection_, "SELECT k, nome FROM chiavi", adLockOptimistic);
        recordset->AddNew({Variant("nome")}, {Variant("nuovo")});
        EXPECT_EQ(recordset->Fields()("nome").Value(), "nuovo") << key;
        recordset->Fields()("nome").SetValue("mio");
        recordset->Update();
        EXPECT_EQ(first(connection_, "SELECT count(*) FROM chiavi WHERE nome = 'mio'").toI8(), 1);
        EXPECT_EQ(first(connection_, "SELECT count(*) FROM chiavi WHERE nome = 'un altro'").toI8(),
                  number ? 1 : 0);
    }
}

TEST_P(OdbcChange, WhatOthersChangedIsNotOverwritten) {
    const auto recordset = clienti();
    open()->Execute("UPDATE clienti SET nome = 'Altro' WHERE codice = 1");
    recordset->Fields()("nome").SetValue("Mio");
    EXPECT_EQ(errorOf([&] { recordset->Update(); }), dbConcurrency);
    recordset->CancelUpdate();
    EXPECT_EQ(value("nome", 1), "Altro");
    recordset->Fields()("saldo").SetValue(std::int32_t{9}); // another column
    recordset->Update();
    EXPECT_EQ(value("saldo", 1).toDouble(), 9);
    open()->Execute("DELETE FROM clienti WHERE codice = 2");
    recordset->MoveLast();
    EXPECT_EQ(errorOf([&] { recordset->Delete(); }), dbConcurrency);
}

TEST_P(OdbcChange, ADuplicateKeyChangesNothing) {
    const auto recordset = clienti();
    recordset->Fields()("codice").SetValue(std::int32_t{2});
    EXPECT_EQ(errorOf([&] { recordset->Update(); }), dbIntegrityViolation);
    recordset->CancelUpdate();
    EXPECT_EQ(value("nome", 1), "Uno");
    EXPECT_EQ(value("nome", 2), "Due");
}

TEST_P(OdbcChange, ATransactionTakesChangesBack) {
    const auto recordset = clienti();
    connection_->BeginTrans();
    recordset->Fields()("nome").SetValue("Provvisorio");
    recordset->Update();
    recordset->Fields()("codice").SetValue(std::int32_t{2});
    EXPECT_EQ(errorOf([&] { recordset->Update(); }), dbIntegrityViolation);
    recordset->CancelUpdate();
    EXPECT_EQ(value("nome", 1), "Provvisorio"); // the refused one took back itself alone
    connection_->RollbackTrans();
    EXPECT_EQ(value("nome", 1), "Uno");
}

TEST_P(OdbcChange, WithoutAKeyAllColumnsTellARowApart) {
    table(connection_, "ricerchepers",
          "codiceoperatore varchar(50), codicericerca varchar(50), NomeVista varchar(50), "
          "preferito " +
              pick("tinyint(1)", "boolean"));
    connection_->Execute("INSERT INTO ricerchepers VALUES ('anna', 'clienti', 'Una', " +
                         pick("0", "false") +
                         "), ('anna', 'clienti', 'Due', NULL), ('x', 'x', 'x', "
                         "NULL), ('x', 'x', 'x', NULL)");
    const auto viste = rows(connection_, "SELECT * FROM ricerchepers", adLockOptimistic);
    viste->SetFilter("codiceoperatore='anna' and codicericerca='clienti' and nomevista='Due'");
    viste->Fields()("preferito").SetValue(true);
    viste->Update();
    viste->SetFilter("codiceoperatore='anna' and preferito<>0 and codicericerca='clienti'");
    ASSERT_EQ(viste->RecordCount(), 1);
    EXPECT_EQ(viste->Fields()("NomeVista").Value(), "Due");
    viste->SetFilter("codiceoperatore='x'");
    viste->Fields()("NomeVista").SetValue("y");
    EXPECT_NE(errorOf([&] { viste->Update(); }), 0); // which of the two
    viste->CancelUpdate();
    EXPECT_EQ(first(connection_, "SELECT count(*) FROM ricerchepers WHERE NomeVista='x'").toI8(),
              2);
}

// MariaDB names a derived table as if it were one; PostgreSQL tells the table behind it.
TEST_P(OdbcChange, RowsOfADerivedTableWithoutAKeyAreForReading) {
    for (const char* text : {"SELECT codice, nome FROM (SELECT * FROM clienti) q ORDER BY codice",
                             "WITH q AS (SELECT * FROM clienti) SELECT codice, nome FROM q "
                             "ORDER BY codice"}) {
        const auto recordset = rows(connection_, text, adLockOptimistic);
        ASSERT_EQ(recordset->Supports(adUpdate), postgres()) << text;
        if (postgres()) continue;
        EXPECT_EQ(errorOf([&] { recordset->Fields()("nome").SetValue("x"); }),
                  adErrFeatureNotAvailable);
    }
}

// What an operator's window does to the views, from two programs at the same time: each saves and
// marks its own, and none loses the other's.
TEST_P(OdbcChange, TwoProgramsKeepTheirViewsAtOnce) {
    table(connection_, "ricerchepers",
          "codiceoperatore varchar(50), codicericerca varchar(50), NomeVista varchar(50), "
          "preferito " +
              pick("tinyint(1)", "boolean") +
              ", primary key (codiceoperatore, codicericerca, NomeVista)");
    constexpr int views = 40;
    const auto program = [&](const std::string& user) {
        const auto viste = rows(open(), "SELECT * FROM ricerchepers", adLockOptimistic);
        for (int n = 0; n < views; ++n) {
            viste->SetFilter("codiceoperatore='" + user + "' and codicericerca='clienti' ");
            for (; !viste->EOF_(); viste->MoveNext()) {
                viste->Fields()("preferito").SetValue(false);
                viste->Update();
            }
            viste->AddNew();
            viste->Fields()("codiceoperatore").SetValue(user);
            viste->Fields()("codicericerca").SetValue("clienti");
            viste->Fields()("NomeVista").SetValue("Vista " + std::to_string(n));
            viste->Fields()("preferito").SetValue(true);
            viste->Update();
        }
    };
    std::vector<pid_t> children;
    for (const char* user : {"anna", "mario"}) {
        const pid_t child = ::fork();
        if (child == 0) {
            int status = 0;
            try {
                program(user);
            } catch (const std::exception& error) {
                std::fprintf(stderr, "%s: %s\n", user, error.what());
                status = 1;
            }
            ::_exit(status);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    for (const std::string user : {"anna", "mario"}) {
        const std::string of = " FROM ricerchepers WHERE codiceoperatore = '" + user + "'";
        EXPECT_EQ(first(connection_, "SELECT count(*)" + of).toI8(), views);
        EXPECT_EQ(first(connection_, "SELECT count(*)" + of + " AND preferito<>0").toI8(), 1);
    }
}

} // namespace
} // namespace norvel::adodb
