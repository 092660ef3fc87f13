// The grouping area: headings dragged in, boxes moved and dragged out, and the keyboard's way.
#include "tests/platform/grid/window/GroupFixture.h"

namespace norvel::tests {
namespace {

using namespace adodb;
using Texts = std::vector<std::string>;

class GroupAreaTest : public GroupTest {
  protected:
    void openArea() {
        openPlain();
        grid_->OnGroupColumnsChanged = [this] { ++changes; };
        grid_->SplitAt(0).AllowColMove = true;
        groupBy({});
    }
    Texts groups() { return grid_->Style().GroupColumns; }
    wxPoint heading(int column) const { return centre(grid_->HeadingRect(column)); }
    wxPoint box(int column) const { return centre(grid_->GroupBoxRect(column)); }
    wxPoint behindBoxes() const {
        const wxRect area = grid_->GroupAreaRect();
        return {area.GetRight() - 20, area.height / 2};
    }
    int changes = 0;
};

TEST_F(GroupAreaTest, StandsAboveTheHeadingsInGroupViewOnly) {
    openPlain();
    EXPECT_TRUE(grid_->GroupAreaRect().IsEmpty());
    const wxRect before = grid_->HeadingRect(Citta);
    groupBy({});
    EXPECT_FALSE(grid_->GroupAreaRect().IsEmpty());
    EXPECT_EQ(grid_->HeadingRect(Citta).y, grid_->GroupAreaRect().height);
    EXPECT_EQ(grid_->LineCount(), 60) << "no group column: rows as ever";
    screenshot(*frame_, "group_area_empty");
    grid_->Style().DataView = grid::dataViewNormal;
    grid_->Changed();
    EXPECT_EQ(grid_->HeadingRect(Citta), before);
}

TEST_F(GroupAreaTest, AHeadingDraggedInGroupsAndItsBoxDraggedOutEndsThat) {
    openArea();
    int sorts = 0;
    grid_->OnHeadClick = [&](int) { ++sorts; };
    std::vector<int> moved;
    grid_->OnColumnMoved = [&](int column) { moved.push_back(column); };
    robot_.drag(*grid_, heading(Citta), behindBoxes());
    EXPECT_EQ(groups(), Texts{"citta"});
    EXPECT_EQ(grid_->LineCount(), 5);
    EXPECT_EQ(changes, 1);
    robot_.drag(*grid_, heading(Zona), behindBoxes());
    EXPECT_EQ(groups(), (Texts{"citta", "zona"}));
    screenshot(*frame_, "group_area_boxes");
    robot_.drag(*grid_, box(Zona), {box(Citta).x - 20, box(Citta).y});
    EXPECT_EQ(groups(), (Texts{"zona", "citta"}));
    EXPECT_EQ(grid_->LineText(0), "zona: Nord (30)");
    robot_.drag(*grid_, box(Zona), cellCentre(3, Nome));
    EXPECT_EQ(groups(), Texts{"citta"});
    EXPECT_EQ(grid_->Columns().Ungrouped(), (std::vector<int>{Codice, Nome, Zona, Saldo}));
    EXPECT_EQ(moved, std::vector<int>{}) << "let go elsewhere it stands where it stood before";
    robot_.drag(*grid_, box(Citta), {grid_->HeadingRect(Codice).x + 3, heading(Codice).y});
    EXPECT_EQ(groups(), Texts{});
    EXPECT_EQ(moved, std::vector<int>{Citta});
    EXPECT_EQ(grid_->Columns().Shown(), (std::vector<int>{Citta, Codice, Nome, Zona, Saldo}));
    EXPECT_EQ(grid_->LineCount(), 60);
    EXPECT_EQ(changes, 5);
    EXPECT_EQ(sorts, 0);
}

TEST_F(GroupAreaTest, TheMarkShowsWhereADraggedHeadingLands) {
    openArea();
    groupBy({"zona"});
    robot_.buttonDown(*grid_, heading(Citta));
    for (int step = 1; step <= 5; ++step)
        robot_.moveTo(*grid_, {heading(Citta).x + 4 * step, heading(Citta).y - 6 * step});
    robot_.moveTo(*grid_, {box(Zona).x + 60, box(Zona).y});
    screenshot(*frame_, "group_area_mark");
    robot_.press(WXK_ESCAPE);
    robot_.buttonUp();
    EXPECT_EQ(groups(), Texts{"zona"}) << "Esc leaves all as it was";
    EXPECT_EQ(changes, 0);
}

TEST_F(GroupAreaTest, ColumnsThatMayNotBeMovedAreGroupedAllTheSame) {
    openArea();
    grid_->SplitAt(0).AllowColMove = false;
    grid_->Changed();
    robot_.drag(*grid_, heading(Saldo), heading(Codice));
    EXPECT_EQ(grid_->Columns().Shown().front(), Codice);
    robot_.drag(*grid_, heading(Zona), behindBoxes());
    EXPECT_EQ(groups(), Texts{"zona"});
    robot_.drag(*grid_, box(Zona), {grid_->HeadingRect(Codice).x + 3, heading(Codice).y});
    EXPECT_EQ(groups(), Texts{});
    EXPECT_EQ(grid_->Columns().Shown(), (std::vector<int>{Codice, Nome, Citta, Zona, Saldo}));
}

TEST_F(GroupAreaTest, TheKeyboardGroupsByTheCurrentColumnAndUngroups) {
    openArea();
    grid_->SetCurrentColumn(Zona);
    robot_.press('G', wxMOD_CONTROL);
    EXPECT_EQ(groups(), Texts{"zona"});
    EXPECT_EQ(grid_->CurrentColumn(), Codice) << "a grouped column has no cells";
    grid_->SetCurrentColumn(Citta);
    robot_.press('G', wxMOD_CONTROL);
    EXPECT_EQ(groups(), (Texts{"zona", "citta"}));
    robot_.press('G', wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(groups(), Texts{"zona"});
    EXPECT_EQ(grid_->CurrentColumn(), Citta);
    robot_.press('G', wxMOD_CONTROL | wxMOD_SHIFT);
    robot_.press('G', wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(groups(), Texts{});
    EXPECT_EQ(changes, 4);
}

TEST_F(GroupAreaTest, WithoutGroupViewItsKeysDoNothing) {
    openPlain();
    robot_.press('G', wxMOD_CONTROL);
    EXPECT_EQ(groups(), Texts{});
}

TEST_F(GroupAreaTest, ABoxAndALineThatAreCutSayTheirWholeTexts) {
    openArea();
    groupBy({"zona", "citta"});
    const auto tipAt = [&](wxPoint at) {
        robot_.moveTo(*grid_, at);
        return grid_->GetToolTipText().utf8_string();
    };
    EXPECT_EQ(tipAt(box(Zona)), "");
    EXPECT_EQ(tipAt(onLine(0)), "");
    std::string longCaption;
    for (int i = 0; i < 40; ++i)
        longCaption += "zona di vendita ";
    grid_->Columns().Item(Zona).Caption = longCaption;
    grid_->Changed();
    robot_.pump();
    EXPECT_EQ(tipAt(box(Zona)), longCaption);
    EXPECT_EQ(tipAt(box(Citta)), "");
    EXPECT_EQ(tipAt(onLine(1)), longCaption + ": Sud (30)");
}

TEST_F(GroupAreaTest, ALayoutGroupsAtOnceAndAFieldThatIsGoneWaits) {
    openPlain();
    grid_->OnGroupColumnsChanged = [this] { ++changes; };
    grid::Layout layout = grid_->Layouts().Present();
    layout.Style.DataView = grid::dataViewGroups;
    layout.Style.GroupColumns = {"manca", "ZONA"};
    grid_->Layouts().Apply(layout);
    robot_.pump();
    EXPECT_EQ(lines(), (Texts{"zona: Nord (30)", "zona: Sud (30)"}));
    EXPECT_EQ(changes, 0);
    grid_->SetCurrentColumn(Citta);
    robot_.press('G', wxMOD_CONTROL);
    EXPECT_EQ(groups(), (Texts{"manca", "ZONA", "citta"}));
    EXPECT_EQ(grid_->Layouts().Present().Style.GroupColumns, groups());
}

TEST_F(GroupAreaTest, AllColumnsMayBeGrouped) {
    openArea();
    groupBy({"zona", "citta", "nome", "saldo", "codice"});
    EXPECT_EQ(grid_->LineCount(), 2);
    EXPECT_EQ(grid_->CurrentColumn(), -1);
    grid_->SetAllGroupsOpen(true);
    EXPECT_EQ(grid_->LineCount(), 2 + 10 + 60 + 60 + 60 + 60);
    robot_.press(WXK_END, wxMOD_CONTROL);
    robot_.press(WXK_LEFT);
    EXPECT_TRUE(grid_->IsGroupRow(grid_->CurrentRow()));
    robot_.drag(*grid_, box(Zona), {box(Zona).x, grid_->GetClientSize().y / 2});
    EXPECT_EQ(groups(), (Texts{"citta", "nome", "saldo", "codice"}));
}

TEST_F(GroupAreaTest, ARecordsetThatCannotGroupShowsItsRowsAsTheyAreAndTheAreaSaysWhy) {
    open(GeneratedRecordset::make(customerColumns(), 50));
    groupBy({"citta"});
    EXPECT_EQ(grid_->LineCount(), 50);
    EXPECT_FALSE(grid_->HeadingRect(2).IsEmpty());
    screenshot(*frame_, "group_area_refused");
}

} // namespace
} // namespace norvel::tests
