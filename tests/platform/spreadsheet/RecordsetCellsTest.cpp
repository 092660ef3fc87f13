#include "platform/spreadsheet/RecordsetCells.h"

#include "platform/runtime/Errore.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

#include <limits>

namespace norvel::spreadsheet {
namespace {

using namespace adodb;

RecordsetRef openOn(const std::string& sql) {
    auto recordset = makeClientRecordset();
    recordset->Open(sql, "Provider=SQLite;Data Source=:memory:");
    return recordset;
}

// Every cell as kind and value: "N1.5", "B1", "D40617", "H0.5", "Ttext", "-" for a blank.
std::string shown(const Cell& cell) {
    std::string number = std::to_string(cell.number);
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.')) number.pop_back();
    switch (cell.kind) {
    case CellKind::Blank:
        return "-";
    case CellKind::Number:
        return "N" + number;
    case CellKind::Boolean:
        return "B" + number;
    case CellKind::Date:
        return "D" + number;
    case CellKind::Time:
        return "H" + number;
    case CellKind::Text:
        return "T" + std::string(cell.text);
    }
    return "?";
}

using Line = std::vector<std::string>;

Line read(const RecordsetCells& source, std::int64_t first, std::size_t count) {
    Line line;
    const auto reader = source.reader();
    for (const Cell& cell : reader->read(first, count))
        line.push_back(shown(cell));
    return line;
}

TEST(RecordsetCells, KeepsEveryTypeOfValue) {
    const auto rows =
        openOn("SELECT CAST(12 AS INTEGER) AS i, 12.5 AS r, 'città' AS t, NULL AS n, x'0102' AS b");
    const RecordsetCells cells(*rows);
    EXPECT_EQ(cells.rows(), 1);
    EXPECT_EQ(cells.columns(), 5);
    EXPECT_EQ(read(cells, 0, 1), (Line{"N12", "N12.5", "Tcittà", "-", "T(binario)"}));
}

TEST(RecordsetCells, KeepsTheTypesOfDeclaredColumns) {
    auto connection = makeConnection();
    connection->Open("Provider=SQLite;Data Source=:memory:");
    connection->Execute("CREATE TABLE t (s BOOLEAN, g DATE, m DATETIME, c CURRENCY, d "
                        "NUMERIC(10,2), l BIGINT)");
    connection->Execute("INSERT INTO t VALUES (1, '2011-03-15', '2011-03-15 18:00:00', 12.34, "
                        "-0.05, 123456789012345), (0, NULL, '12:00:00', -5, 1, "
                        "9223372036854775807)");
    auto rows = makeClientRecordset();
    rows->Open("SELECT * FROM t", Variant(std::static_pointer_cast<Object>(connection)));
    const RecordsetCells cells(*rows);
    EXPECT_EQ(read(cells, 0, 2),
              (Line{"B1", "D40617", "D40617.75", "N12.34", "N-0.05", "N123456789012345", "B0", "-",
                    "H0.5", "N-5", "N1", "T9223372036854775807"}));
    EXPECT_EQ(cells.columnKind(0), CellKind::Boolean);
    EXPECT_EQ(cells.columnKind(1), CellKind::Date);
    EXPECT_EQ(cells.columnKind(3), CellKind::Number);
}

TEST(RecordsetCells, ADateThatIsNoneIsTheNumberThatItIs) {
    const auto rows = makeClientRecordset();
    rows->Fields().Append("giorno", adDate, 0, adFldIsNullable);
    rows->SetLockType(adLockOptimistic);
    rows->Open();
    for (const double days : {1e10, -1e10, std::numeric_limits<double>::infinity(), -657434.0})
        rows->AddNew({Variant("giorno")}, {Variant(Date{days})});
    rows->Update();
    rows->MoveFirst();
    const RecordsetCells cells(*rows);
    EXPECT_EQ(read(cells, 0, 4), (Line{"N10000000000", "N-10000000000", "Ninf", "D-657434"}));
}

TEST(RecordsetCells, ValuesThatAreNotOfTheirColumnsTypeAreKept) {
    const auto rows = openOn("SELECT 1 AS n UNION ALL SELECT 'due' UNION ALL SELECT 3.5");
    EXPECT_EQ(read(RecordsetCells(*rows), 0, 3), (Line{"N1", "Tdue", "N3.5"}));
}

TEST(RecordsetCells, AreTheRowsOnShowFromTheCurrentOneOn) {
    const auto rows = openOn("SELECT 1 AS n UNION ALL SELECT 2 UNION ALL SELECT 3 UNION ALL "
                             "SELECT 4 UNION ALL SELECT 5");
    rows->SetFilter("n <> 2");
    rows->SetSort("n DESC");
    rows->MoveFirst();
    EXPECT_EQ(read(RecordsetCells(*rows), 0, 10), (Line{"N5", "N4", "N3", "N1"}));
    rows->MoveNext();
    rows->MoveNext();
    const RecordsetCells rest(*rows);
    EXPECT_EQ(rest.rows(), 2);
    EXPECT_EQ(read(rest, 1, 10), Line{"N1"});
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_EQ(RecordsetCells(*rows).rows(), 0);
}

TEST(RecordsetCells, ReadersReadManyRowsInAnyOrder) {
    const auto rows = openOn("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT "
                             "200000) SELECT i FROM n");
    const RecordsetCells cells(*rows);
    const auto reader = cells.reader();
    EXPECT_EQ(reader->read(199'990, 100).size(), 10U);
    EXPECT_EQ(reader->read(0, 1)[0].number, 1);
    const auto block = reader->read(131'000, 1000);
    for (std::size_t i = 0; i < block.size(); ++i)
        ASSERT_EQ(block[i].number, 131'001.0 + static_cast<double>(i));
    EXPECT_TRUE(reader->read(200'000, 5).empty());
}

TEST(RecordsetCells, OutliveTheRecordset) {
    auto rows = openOn("SELECT 'resta' AS t");
    const RecordsetCells cells(*rows);
    rows->Close();
    rows.reset();
    EXPECT_EQ(read(cells, 0, 1), Line{"Tresta"});
}

TEST(RecordsetCells, RefuseWhatTheyCannotRead) {
    const auto closed = makeClientRecordset();
    EXPECT_THROW(RecordsetCells{*closed}, Errore);
    const auto other = tests::GeneratedRecordset::make(tests::customerColumns(), 3);
    EXPECT_THROW(RecordsetCells{*other}, Errore);
}

} // namespace
} // namespace norvel::spreadsheet
