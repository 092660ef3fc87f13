#include "platform/grid/export/ExportTable.h"

#include "tests/platform/grid/export/Articles.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

std::vector<std::string> fieldsOf(const ExportTable& table) {
    std::vector<std::string> fields;
    for (const ExportColumn& column : table.columns)
        fields.push_back(column.field);
    return fields;
}

using Names = std::vector<std::string>;

class ExportTableTest : public ::testing::Test {
  protected:
    adodb::RecordsetRef recordset = tests::articles();
    Columns columns = tests::columnsOf(*recordset);
    GridStyle style;
};

TEST_F(ExportTableTest, HasTheColumnsOnShowInTheOrderInWhichTheyAreShown) {
    columns.Item(0).Order = 9;
    columns.Item(2).Visible = false;
    const ExportTable table = exportTable(columns, style, "nome DESC");
    EXPECT_EQ(fieldsOf(table), (Names{"nome", "peso", "data", "attivo", "note", "codice"}));
    EXPECT_EQ(table.columns[0].caption, "Nome");
    EXPECT_EQ(table.sort, "nome DESC");
}

TEST_F(ExportTableTest, AlignsNumbersRightAndDatesInTheMiddleUnlessTheColumnSaysOtherwise) {
    columns.Item(6).Align = Alignment::Center;
    columns.Item(0).Align = Alignment::Left;
    const ExportTable table = exportTable(columns, style, "");
    std::vector<Alignment> aligned;
    for (const ExportColumn& column : table.columns)
        aligned.push_back(column.align);
    using enum Alignment;
    EXPECT_EQ(aligned, (std::vector<Alignment>{Left, Left, Right, Right, Center, Center, Center}));
}

TEST_F(ExportTableTest, PutsGroupColumnsFirstInTheGroupViewWhetherOrNotTheyAreShown) {
    style.DataView = groupView;
    style.GroupColumns = {"ATTIVO", "nome", "manca", "attivo"};
    columns.Item(1).Visible = false;
    columns.Item(6).Visible = false;
    const ExportTable table = exportTable(columns, style, "");
    EXPECT_EQ(fieldsOf(table), (Names{"attivo", "nome", "codice", "prezzo", "peso", "data"}));
    EXPECT_EQ(table.sort, "[attivo], [nome]");
}

TEST_F(ExportTableTest, SortsByGroupsAsTheGridDoesAndWithinThemAsTheHostDoes) {
    style.DataView = groupView;
    style.GroupColumns = {"attivo", "nome"};
    EXPECT_EQ(exportTable(columns, style, "codice, Nome DESC, [strano ]]nome]").sort,
              "[attivo], [nome], [codice], [strano ]]nome]");
    recordset->SetSort("prezzo DESC, nome DESC");
    const std::string sort = recordset->Sort();
    recordset->GroupBy(style.GroupColumns);
    EXPECT_EQ(exportTable(columns, style, sort).sort, recordset->Sort());
}

TEST_F(ExportTableTest, ForgetsGroupsOutsideTheGroupView) {
    style.GroupColumns = {"attivo"};
    const ExportTable table = exportTable(columns, style, "");
    EXPECT_EQ(table.columns.front().field, "codice");
    EXPECT_EQ(table.sort, "");
}

TEST_F(ExportTableTest, OfAGridWithoutColumnsIsEmpty) {
    EXPECT_TRUE(exportTable({}, style, "").columns.empty());
}

} // namespace
} // namespace norvel::grid
