// The shortcuts with which a host makes its recordsets.
#include "component/DatiHost.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel::tests {
namespace {

std::vector<std::string> nomi(adodb::Recordset& righe) {
    std::vector<std::string> elenco;
    elenco.reserve(righe.Fields().Count());
    for (int campo = 0; campo < righe.Fields().Count(); ++campo)
        elenco.push_back(righe.Fields()(campo).Name());
    return elenco;
}

TEST(DatiHostTest, EmptyOperatorsAndViewsAreOpenWithTheFieldsThatTheWindowAsksFor) {
    const auto operatori = operatoriVuoti();
    EXPECT_EQ(operatori->State(), adodb::adStateOpen);
    EXPECT_EQ(operatori->RecordCount(), 0);
    EXPECT_EQ(nomi(*operatori), (std::vector<std::string>{"codiceutente", "ricerchepers"}));
    const auto viste = visteVuote();
    EXPECT_EQ(viste->State(), adodb::adStateOpen);
    EXPECT_TRUE(viste->BOF() && viste->EOF_());
    EXPECT_EQ(nomi(*viste), (std::vector<std::string>{"codiceoperatore", "codicericerca",
                                                      "NomeVista", "preferito"}));
}

TEST(DatiHostTest, AStatementOpensAsAStaticClientRecordset) {
    const auto righe = apriRecordset("Provider=SQLite;Data Source=:memory:",
                                     "SELECT 7 AS codice UNION ALL SELECT 8");
    EXPECT_EQ(righe->CursorType(), adodb::adOpenStatic);
    EXPECT_EQ(righe->CursorLocation(), adodb::adUseClient);
    EXPECT_EQ(righe->LockType(), adodb::adLockReadOnly);
    EXPECT_EQ(righe->RecordCount(), 2);
    EXPECT_EQ(righe->Fields()("codice").Value().toI4(), 7);
}

TEST(DatiHostTest, StatementsShareAConnectionThatIsOpen) {
    const auto connessione = adodb::makeConnection();
    connessione->Open("Provider=SQLite;Data Source=:memory:");
    connessione->Execute("CREATE TABLE articoli (codice TEXT)");
    connessione->Execute("INSERT INTO articoli VALUES ('A1')");
    const auto righe = apriRecordset(ObjectRef(connessione), "SELECT * FROM articoli",
                                     adodb::adLockReadOnly, adodb::adAsyncFetch);
    ASSERT_TRUE(righe->WaitFetch(5000));
    EXPECT_EQ(righe->RecordCount(), 1);
    EXPECT_EQ(righe->Fields()("codice").Value(), Variant("A1"));
}

TEST(DatiHostTest, AnEmptyRecordsetNeedsNamesThatDiffer) {
    const auto numero = [](const std::vector<std::string>& campi) {
        try {
            recordsetVuoto(campi);
        } catch (const Errore& errore) {
            return errore.numero();
        }
        return std::int64_t{0};
    };
    EXPECT_EQ(numero({}), 3001);
    EXPECT_EQ(numero({"a", "A"}), 3367);
    EXPECT_EQ(numero({"a", "b"}), 0);
}

TEST(DatiHostTest, WhatTheDatabaseRefusesIsRaised) {
    EXPECT_THROW(apriRecordset("Provider=SQLite;Data Source=/non/esiste/x.db", "SELECT 1"), Errore);
    EXPECT_THROW(apriRecordset("Provider=SQLite;Data Source=:memory:", "SELECT * FROM nessuna"),
                 Errore);
    EXPECT_THROW(apriRecordset("", "SELECT 1"), Errore);
}

} // namespace
} // namespace norvel::tests
