#include "tests/platform/adodb/access/AccessTest.h"

#include <cstdlib>
#include <filesystem>

namespace norvel::adodb {

namespace {

std::string exampleFile(const std::string& path) {
    std::string file = NR_SOURCE_DIR "/build/examples/" + path;
    EXPECT_TRUE(std::filesystem::exists(file)) << "run packaging/prepara test first";
    return file;
}

} // namespace

std::string jetProvider(const std::string& path) {
    return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path;
}

std::string accessDriver(const std::string& path) {
    return "Driver={Microsoft Access Driver (*.mdb)};DBQ=" + path;
}

std::string fileOfAccess2000() {
    return exampleFile(
        "mrtg-contrib/usr/share/doc/mrtg-contrib/examples/contrib/monitor/Monitor.mdb");
}

std::string fileOfAccess97(const TemporaryFolder& folder) {
    const std::string packed = exampleFile("fp-units-db-3.2.2/usr/share/doc/fp-units-db/3.2.2/"
                                           "examples/odbc/testodbc.mdb.gz");
    std::string file = folder.file("testodbc.mdb");
    EXPECT_EQ(std::system(("gzip -dc '" + packed + "' >'" + file + "'").c_str()), 0);
    return file;
}

std::string rowsOf(Recordset& recordset) {
    std::string text;
    for (; !recordset.EOF_(); recordset.MoveNext()) {
        for (int i = 0; i < recordset.Fields().Count(); ++i)
            text.append(i ? "," : "").append(recordset.Fields()(i).Value().toDisplay());
        text += "|";
    }
    return text;
}

std::string rowsOf(const std::string& connection, const std::string& sql) {
    return rowsOf(*openOn(connection, sql));
}

void writeCustomers(const std::string& path, int more, std::uint32_t key,
                    const std::string& password) {
    using Whole = std::int64_t;
    std::vector<JetRow> rows{
        {Whole{1}, "Rossi", "Roma", true, Whole{105000}, 40617.0, "paga"},
        {Whole{2}, "D'Amì €", "L'Aquila", false, Whole{-123456}, 40618.5, "linea \"uno\"\r\ndue"},
        {Whole{3}, "Bianchi", "roma", true, Whole{0}, JetValue(), JetValue()},
        {Whole{12}, JetValue(), JetValue(), false, JetValue(), 2.0, std::string(1990, 'x')},
    };
    for (int i = 0; i < more; ++i)
        rows.push_back({Whole{100 + i}, "Cliente " + std::to_string(i),
                        "Comune " + std::to_string(i % 50), i % 2 == 0, Whole{i}, 40000.0 + i % 999,
                        "nota"});
    AccessWriter writer;
    writer.table("clienti",
                 {{"codice", JetType::Long},
                  {"nome", JetType::Text, 40},
                  {"citta", JetType::Text, 40},
                  {"attivo", JetType::Boolean},
                  {"saldo", JetType::Currency},
                  {"nato", JetType::Date},
                  {"note", JetType::Memo}},
                 rows);
    writer.table("Righe Ordine", {{"codice", JetType::Long}, {"pezzi", JetType::Short}},
                 {{Whole{1}, Whole{3}}, {Whole{1}, Whole{4}}, {Whole{2}, Whole{5}}});
    writer.save(path, key, password);
}

} // namespace norvel::adodb
