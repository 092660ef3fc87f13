// What can be asked of an Access file: the whole notation, value lists, filters and sorts, while
// others read or write.
#include "query/ElaboraQuery.h"
#include "tests/platform/adodb/ValueItems.h"
#include "tests/platform/adodb/access/AccessTest.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace norvel::adodb {
namespace {

class AccessQueries : public testing::Test {
  protected:
    void SetUp() override { writeCustomers(file()); }
    std::string file() const { return folder_.file("gest.mdb"); }
    std::string connection() const { return jetProvider(file()); }
    std::string rows(const std::string& sql) const { return rowsOf(connection(), sql); }
    TemporaryFolder folder_;
};

TEST_F(AccessQueries, TheConnectionsTextNamesAccess) {
    for (const std::string& text : {connection(), accessDriver(file())}) {
        const auto recordset = openOn(text, "clienti");
        EXPECT_EQ(query::richiestaValori(*recordset, "nome", "").strConnessione, text);
        EXPECT_EQ(query::riconosciDialetto(text), query::Dialetto::Access);
    }
}

TEST_F(AccessQueries, RenderedForAccessAndRun) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT codice FROM clienti WHERE nato >= #03/16/2011#;", "2|"},
        {"SELECT codice FROM clienti WHERE nato = #2011-03-15#", "1|"},
        {"SELECT codice, iif(saldo>0;'a';'b';) FROM clienti WHERE codice<3 ORDER BY codice",
         "1,a|2,b|"},
        {"SELECT datediff('d',nato,#03/20/2011#) FROM clienti WHERE codice<3 ORDER BY codice",
         "5|4|"},
        {"SELECT DISTINCT attivo FROM clienti ORDER BY attivo", "True|False|"},
        {"SELECT x.c FROM (SELECT codice AS c FROM clienti) x WHERE x.c<3 ORDER BY x.c", "1|2|"},
        {"SELECT [codice] FROM [clienti] WHERE attivo=True ORDER BY [codice]", "1|3|"},
        {"SELECT c.nome, sum(r.pezzi) FROM clienti c INNER JOIN [Righe Ordine] r ON "
         "c.codice=r.codice GROUP BY c.nome ORDER BY c.nome",
         "D'Amì €,5|Rossi,7|"},
        {"SELECT codice FROM clienti WHERE attivo=-1 ORDER BY codice", "1|3|"},
        {"SELECT c.codice FROM clienti c WHERE c.[attivo] = -1 AND c.attivo<>0 ORDER BY c.codice",
         "1|3|"},
        {"SELECT codice FROM clienti WHERE NOT attivo OR attivo=False ORDER BY codice", "2|12|"},
        {"SELECT sum(attivo), 'True' FROM clienti", "-2,True|"},
        {"SELECT iif(attivo=1;'si';'no';) FROM clienti WHERE attivo AND codice=1", "si|"},
        {"SELECT nome FROM clienti WHERE nome = 'ROSSI'", "Rossi|"},
        {"SELECT nome FROM clienti WHERE nome = 'D''AMÌ €'", "D'Amì €|"},
        {"SELECT count(*) FROM clienti WHERE nome IS NULL", "1|"},
    };
    for (const auto& [neutral, expected] : cases) {
        Variant query = neutral;
        EXPECT_EQ(rows(query::ElaboraQuery(query, connection())), expected) << neutral;
    }
}

TEST_F(AccessQueries, ValueListsUnderEveryFilter) {
    const struct {
        const char* filter;
        const char* field;
        const char* items;
    } cases[] = {
        {"", "citta", "L'Aquila|Roma|"}, // "roma" is the same text
        {"", "codice", "1|2|3|12|"},
        {"", "attivo", "-1|0|"},
        {"", "saldo", "-12,3456|0|10,5|"},
        {"", "nato", "01/01/1900|15/03/2011|16/03/2011 12.00.00|"},
        {"citta LIKE 'ROM*'", "nome", "Bianchi|Rossi|"},
        {"citta=NULL", "codice", "12|"},
        {"citta<>NULL AND citta<>''", "citta", "L'Aquila|Roma|"},
        {"attivo=1", "codice", "1|3|"},
        {"attivo=0", "codice", "2|12|"},
        {"saldo=10.5", "nome", "Rossi|"},
        {"nome = 'D''Amì €'", "codice", "2|"},
        {"nome <> 'Rossi'", "codice", "2|3|"},
        {"nato=#15-03-2011#", "nome", "Rossi|"},
    };
    const auto recordset = openOn(connection(), "SELECT * FROM clienti ORDER BY codice;");
    for (const auto& c : cases) {
        recordset->SetFilter(c.filter);
        EXPECT_EQ(valueItems(*recordset, c.field), c.items) << c.filter << " " << c.field;
    }
}

TEST_F(AccessQueries, FilterAndSortOnTheRows) {
    const auto recordset = openOn(connection(), "clienti");
    EXPECT_EQ(recordset->RecordCount(), 4);
    recordset->SetFilter("citta = 'Roma'");
    recordset->SetSort("nome");
    recordset->MoveFirst();
    EXPECT_EQ(recordset->RecordCount(), 2);
    EXPECT_EQ(recordset->Fields()("nome").Value().text(), "Bianchi");
    recordset->SetFilter("citta=NULL");
    EXPECT_EQ(recordset->Fields()("codice").Value().toI8(), 12);
}

TEST_F(AccessQueries, NothingIsWritten) {
    const auto connection = makeConnection();
    connection->Open(this->connection());
    for (const char* sql : {"UPDATE clienti SET nome='x'", "DELETE FROM clienti",
                            "DROP TABLE clienti", "INSERT INTO clienti (codice) VALUES (9)"}) {
        const auto change = [&] { connection->Execute(sql); };
        EXPECT_EQ(errorOf(change), adErrFeatureNotAvailable) << sql;
        EXPECT_NE(descriptionOf(change).find("solo leggere"), std::string::npos);
    }
    const auto recordset = makeClientRecordset();
    recordset->Open("SELECT * FROM clienti", ObjectRef(connection), adOpenStatic, adLockOptimistic);
    const auto edit = [&] {
        recordset->Fields()("nome").SetValue("Verdi");
        recordset->Update();
    };
    EXPECT_NE(descriptionOf(edit).find("solo leggere"), std::string::npos) << descriptionOf(edit);
    recordset->CancelUpdate();
    EXPECT_EQ(recordset->Fields()("nome").Value().text(), "Rossi");
}

TEST_F(AccessQueries, WhatTheDatabaseCannotReadIsRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT * FROM manca", "«manca»"},
        {"SELECT manca FROM clienti", "«manca»"},
        {"TRANSFORM sum(codice) SELECT nome FROM clienti GROUP BY nome PIVOT citta", "leggere"},
        {"SELECT FROM WHERE", "sintassi"},
        {"SELECT nome & ' ' & citta FROM clienti", "«&»"},
        {"SELECT Format (nato,'yyyy') FROM clienti", "«Format»"},
        {"SELECT TOP 2 nome FROM clienti", "sintassi"},
        {"", ""},
    };
    for (const auto& [sql, part] : cases) {
        const std::string text = descriptionOf([&, s = sql] { rows(s); });
        EXPECT_NE(text, "") << sql;
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }
    EXPECT_EQ(rows("SELECT count(*) FROM clienti"), "4|"); // the provider lives on
}

TEST_F(AccessQueries, TwoAtOnceWhileRowsStillCome) {
    writeCustomers(file(), 20000);
    const auto first = makeClientRecordset();
    first->Open("SELECT * FROM clienti", connection(), adOpenStatic, adLockReadOnly, adAsyncFetch);
    const auto second = openOn(connection(), "SELECT * FROM [Righe Ordine]");
    EXPECT_EQ(valueItems(*first, "citta").substr(0, 18), "Comune 0|Comune 1|");
    EXPECT_EQ(second->RecordCount(), 3);
    EXPECT_TRUE(first->WaitFetch(60000));
    EXPECT_EQ(first->RecordCount(), 20004);
}

TEST_F(AccessQueries, RefreshingShowsWhatWasWrittenMeanwhile) {
    const auto recordset = openOn(connection(), "SELECT codice FROM clienti");
    EXPECT_EQ(recordset->RecordCount(), 4);
    writeCustomers(file(), 10);
    EXPECT_EQ(recordset->RecordCount(), 4); // what was read stays
    recordset->Requery();
    EXPECT_EQ(recordset->RecordCount(), 14);
    // As old a file keeps its copy, which takes in a further table when one is asked for.
    using namespace std::chrono_literals;
    std::filesystem::last_write_time(file(), std::filesystem::file_time_type::clock::now() - 1h);
    recordset->Requery();
    EXPECT_EQ(recordset->RecordCount(), 14);
    EXPECT_EQ(rowsOf(connection(), "SELECT count(*) FROM [righe ordine]"), "3|");
    EXPECT_EQ(valueItems(*recordset, "codice").substr(0, 7), "1|2|3|1");
    std::filesystem::remove(file());
    const std::string text = descriptionOf([&] { recordset->Requery(); });
    EXPECT_NE(text.find("gest.mdb» non esiste"), std::string::npos) << text;
}

// Within the tick of a coarse clock neither time nor size need tell of a change.
TEST_F(AccessQueries, AChangeInTheSameTickIsSeen) {
    const auto time = std::filesystem::last_write_time(file());
    const auto size = std::filesystem::file_size(file());
    const auto recordset = openOn(connection(), "SELECT codice FROM clienti");
    writeCustomers(file(), 1);
    std::filesystem::last_write_time(file(), time);
    ASSERT_EQ(std::filesystem::file_size(file()), size);
    recordset->Requery();
    EXPECT_EQ(recordset->RecordCount(), 5);
}

TEST_F(AccessQueries, AnotherProgramHoldsTheFileOpen) {
    const std::fstream writer(file(), std::ios::in | std::ios::out | std::ios::binary);
    ASSERT_TRUE(writer.is_open());
    EXPECT_EQ(rows("SELECT count(*) FROM clienti"), "4|");
}

// Access asks for the password before it opens such a file; the rows themselves are not enciphered
// with it.
TEST_F(AccessQueries, EncodedFilesAndFilesWithAPasswordAreRead) {
    writeCustomers(file(), 0, 0x12345678);
    EXPECT_EQ(rows("SELECT nome FROM clienti WHERE codice=1"), "Rossi|");
    writeCustomers(file(), 0, 0, "segreta");
    EXPECT_EQ(rows("SELECT nome FROM clienti WHERE codice=1"), "Rossi|");
    EXPECT_EQ(rowsOf(connection() + ";Jet OLEDB:Database Password=segreta", "SELECT 1"), "1|");
}

TEST_F(AccessQueries, NamesOfEveryKind) {
    AccessWriter writer;
    for (const char* name : {"Località", "-x", "a.b", "l'anno 2024", "SELECT", "\"q\""})
        writer.table(name, {{"Ragione Sociale", JetType::Text, 9}, {"Order", JetType::Long}},
                     {{"riga", std::int64_t{7}}});
    writer.save(file());
    EXPECT_EQ(rows("SELECT [Ragione Sociale] FROM Località"), "riga|");
    EXPECT_EQ(rows("SELECT [Order] FROM [a.b]"), "7|");
    EXPECT_EQ(rows("SELECT t.[Order] FROM [l'anno 2024] t"), "7|");
    EXPECT_EQ(rows("SELECT [ragione sociale] FROM [select]"), "riga|");
    EXPECT_EQ(rowsOf(*openOn(connection(), "a.b", adCmdTable)), "riga,7|");
    EXPECT_NE(descriptionOf([&] { rows("SELECT * FROM [-x]"); }).find("«-x»"), std::string::npos);
    EXPECT_EQ(rows("SELECT [Order] FROM [\"q\"]"), "7|");
}

TEST_F(AccessQueries, APathInTheHostsNotation) {
    std::string path = file();
    std::ranges::replace(path, '/', '\\');
    EXPECT_EQ(rowsOf(jetProvider("C:" + path), "SELECT count(*) FROM clienti"), "4|");
}

TEST_F(AccessQueries, ADataSourceNamesTheFile) {
    std::ofstream(folder_.file("odbc.ini"))
        << "[gestionale]\nDriver=MDBTools\nDatabase=" << file() << "\n[senza]\nDriver=MDBTools\n";
    setenv("ODBCINI", folder_.file("odbc.ini").c_str(), 1);
    EXPECT_EQ(rowsOf("DSN=gestionale", "SELECT count(*) FROM clienti WHERE attivo=True"), "2|");
    EXPECT_NE(errorOf([] { rowsOf("DSN=senza", "SELECT 1"); }), 0);
    unsetenv("ODBCINI");
}

TEST_F(AccessQueries, ACopyIsReadAndCancelled) {
    writeCustomers(file(), 300000);
    const auto recordset = makeClientRecordset();
    recordset->Open("SELECT * FROM clienti ORDER BY nome", connection(), adOpenStatic,
                    adLockReadOnly, adAsyncExecute | adAsyncFetch);
    recordset->Cancel();
    EXPECT_EQ(rows("SELECT count(*) FROM [Righe Ordine]"), "3|");
    EXPECT_EQ(rows("SELECT count(*) FROM clienti"), "300004|");
}

TEST_F(AccessQueries, WithoutMdbtoolsTheMessageSaysWhatIsMissing) {
    const std::string path = std::getenv("PATH");
    setenv("PATH", "/manca", 1);
    const std::string text = descriptionOf([&] { rows("SELECT * FROM clienti"); });
    setenv("PATH", path.c_str(), 1);
    EXPECT_NE(text.find("«mdbtools»"), std::string::npos) << text;
}

TEST_F(AccessQueries, NoCopyIsLeftBehind) {
    const auto copies = [] {
        int count = 0;
        for (const auto& each :
             std::filesystem::directory_iterator(std::filesystem::temp_directory_path()))
            count += each.path().filename().string().starts_with("norvel-") ? 1 : 0;
        return count;
    };
    const TemporaryFolder own;
    const std::string before = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
    setenv("TMPDIR", own.file("").c_str(), 1);
    const auto recordset = openOn(connection(), "SELECT * FROM clienti");
    EXPECT_EQ(copies(), 0); // already while it is read
    before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", before.c_str(), 1);
}

} // namespace
} // namespace norvel::adodb
