#include "platform/grid/export/ExportRows.h"

#include "tests/platform/grid/data/GeneratedRecordset.h"
#include "tests/platform/grid/export/Articles.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using Texts = std::vector<std::vector<std::string>>;

ExportTable tableOf(adodb::Recordset& recordset) {
    return exportTable(tests::columnsOf(recordset), {}, recordset.Sort());
}

TEST(ExportRows, ShowsValuesAsCellsDo) {
    const auto host = tests::articles();
    ExportRows rows(*host, tableOf(*host));
    EXPECT_EQ(rows.Count(), 3);
    EXPECT_EQ(rows.Texts(0, 100), (Texts{{"1", "2", "3"},
                                         {"Vite M4", "Rondella <4> & \"dado\"; più", ""},
                                         {"12,34", "-0,5", ""},
                                         {"0,5", "1234567,25", ""},
                                         {"15/03/2011", "15/03/2011 18.00.00", ""},
                                         {"True", "False", ""},
                                         {"prima seconda", "à è ì", ""}}));
}

TEST(ExportRows, NeverMovesTheHostsCurrentRecord) {
    const auto host = tests::GeneratedRecordset::make(tests::customerColumns(), 1000);
    host->SetAbsolutePosition(77);
    const int moves = host->moves();
    ExportRows rows(*host, tableOf(*host));
    rows.Texts(0, 1000);
    rows.Texts(990, 1);
    EXPECT_EQ(host->AbsolutePosition(), 77);
    EXPECT_EQ(host->moves(), moves);
}

TEST(ExportRows, FollowTheFilterAndTheOrderOnShow) {
    const auto host = tests::articles();
    host->SetFilter("codice < 3");
    host->SetSort("codice DESC");
    ExportTable table = tableOf(*host);
    table.columns.resize(1);
    ExportRows rows(*host, table);
    EXPECT_EQ(rows.Texts(0, 10), (Texts{{"2", "1"}}));
    EXPECT_EQ(rows.Texts(1, 1), (Texts{{"1"}}));
    EXPECT_EQ(rows.Texts(2, 5), Texts{{}});
}

TEST(ExportRows, KeepALongTextWhole) {
    const std::string text(100'000, 'x');
    const auto host = tests::fabricated({{"note", adodb::adLongVarWChar}}, {{text}});
    EXPECT_EQ(ExportRows(*host, tableOf(*host)).Texts(0, 1), (Texts{{text}}));
}

TEST(ExportRows, LeaveAColumnWithoutAFieldEmpty) {
    const auto host = tests::articles();
    Columns columns = tests::columnsOf(*host);
    columns.Item(1).DataField = "manca";
    columns.Item(2).Visible = columns.Item(3).Visible = columns.Item(4).Visible = false;
    columns.Item(5).Visible = columns.Item(6).Visible = false;
    ExportRows rows(*host, exportTable(columns, {}, ""));
    EXPECT_EQ(rows.FieldNumbers(), (std::vector<int>{0, -1}));
    EXPECT_EQ(rows.Texts(0, 3), (Texts{{"1", "2", "3"}, {"", "", ""}}));
    columns.Item(0).Visible = false;
    EXPECT_EQ(ExportRows(*host, exportTable(columns, {}, "")).Texts(0, 3), (Texts{{"", "", ""}}));
}

TEST(ExportRows, AreColumnsWhereTheRecordsetIsOfThisEngine) {
    const auto own = tests::articles();
    EXPECT_TRUE(ExportRows(*own, tableOf(*own)).AsColumns());
    const auto other = tests::GeneratedRecordset::make(tests::customerColumns(), 3);
    EXPECT_FALSE(ExportRows(*other, tableOf(*other)).AsColumns());
}

TEST(ExportRows, RaiseWhatTheRecordsetRaises) {
    const auto closed = tests::articles();
    const ExportTable table = tableOf(*closed);
    closed->Close();
    EXPECT_THROW(ExportRows(*closed, table), Errore);
    const auto failing = tests::GeneratedRecordset::make(tests::customerColumns(), 3);
    ExportRows rows(*failing, tableOf(*failing));
    failing->failReads(Errore(3601, "linea caduta"));
    EXPECT_THROW(rows.Texts(0, 1), Errore);
}

} // namespace
} // namespace norvel::grid
