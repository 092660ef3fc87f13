// A layout taken from a grid and given to one.
#include "platform/grid/layout/Layout.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

Columns columnsOf(const std::vector<std::string>& fields) {
    Columns columns;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        Column column;
        column.DataField = column.Caption = fields[i];
        column.Order = static_cast<int>(i);
        columns.Add(column);
    }
    return columns;
}

std::vector<std::string> shown(const Columns& columns) {
    std::vector<std::string> fields;
    for (const int index : columns.Shown())
        fields.push_back(columns.Item(index).DataField);
    return fields;
}

class LayoutTest : public testing::Test {
  protected:
    std::vector<LayoutColumn> apply(const Layout& layout, Columns& columns) {
        return applyLayout(layout, columns, split, style);
    }
    // codice, nome, citta: shown as citta, codice; nome hidden.
    Layout sample() const {
        Columns columns = columnsOf({"codice", "nome", "citta"});
        columns.Item(0).Order = 1;
        columns.Item(1).Order = 2;
        columns.Item(1).Visible = false;
        columns.Item(2).Order = 0;
        columns.Item(2).Caption = "Città";
        columns.Item(2).Width = 2000;
        columns.Item(0).ValueItems = {true, presentationCheckBox};
        return takeLayout(columns, split, style, {});
    }
    Split split;
    GridStyle style;
};

TEST_F(LayoutTest, GivesBackWhatWasTaken) {
    split.AllowColMove = true;
    split.EvenRowStyle.BackColor = 5;
    style.DataView = 2;
    style.GroupColumns = {"citta"};
    const Layout layout = sample();
    split = {};
    style = {};
    Columns columns = columnsOf({"codice", "nome", "citta"});
    EXPECT_TRUE(apply(layout, columns).empty());
    EXPECT_EQ(shown(columns), (std::vector<std::string>{"citta", "codice"}));
    EXPECT_EQ(columns.Item(2).Caption, "Città");
    EXPECT_EQ(columns.Item(2).Width, 2000);
    EXPECT_EQ(columns.Item(0).ValueItems.Presentation, presentationCheckBox);
    EXPECT_TRUE(split.AllowColMove);
    EXPECT_EQ(style.GroupColumns, std::vector<std::string>{"citta"});
    EXPECT_EQ(takeLayout(columns, split, style, {}), layout);
}

TEST_F(LayoutTest, ANewFieldComesBehindTheOthersAndKeepsItsOwnLook) {
    Columns columns = columnsOf({"nuovo", "codice", "nome", "citta", "altro"});
    columns.Item(0).Caption = "Nuovo";
    apply(sample(), columns);
    EXPECT_EQ(shown(columns), (std::vector<std::string>{"citta", "codice", "nuovo", "altro"}));
    EXPECT_EQ(columns.Item(0).Caption, "Nuovo");
    EXPECT_EQ(columns.IndexOf("nuovo"), 0) << "indexes stay";
}

TEST_F(LayoutTest, AFieldThatIsGoneStaysDormantAndRevives) {
    Columns two = columnsOf({"CODICE", "nome"});
    const auto dormant = apply(sample(), two);
    ASSERT_EQ(dormant.size(), 1U);
    EXPECT_EQ(dormant[0].DataField, "citta");
    two.Item(0).Width = 777;
    const Layout kept = takeLayout(two, split, style, dormant);
    Columns all = columnsOf({"codice", "nome", "citta"});
    EXPECT_TRUE(apply(kept, all).empty());
    EXPECT_EQ(shown(all), (std::vector<std::string>{"citta", "codice"}));
    EXPECT_EQ(all.Item(2).Caption, "Città");
    EXPECT_EQ(all.Item(0).Width, 777);
}

TEST_F(LayoutTest, FilterCellsAndTheirSwitchesStayAsTheyAre) {
    Columns columns = columnsOf({"codice", "nome", "citta"});
    columns.Item(1).FilterCombo = true;
    columns.Item(1).FilterText = "ros";
    apply(sample(), columns);
    EXPECT_TRUE(columns.Item(1).FilterCombo);
    EXPECT_FALSE(columns.Item(0).FilterCombo);
    EXPECT_EQ(columns.Item(1).FilterText, "ros");
}

} // namespace
} // namespace norvel::grid
