// What keys do where rows are grouped, what the lines of groups say, where boxes stand.
#include "platform/grid/groups/GroupKeys.h"

#include "platform/grid/groups/GroupBoxes.h"
#include "platform/grid/groups/GroupText.h"
#include "platform/grid/model/Geometry.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

Stroke stroke(Key key, bool control = false, bool shift = false) {
    Stroke made;
    made.key = key;
    made.control = control;
    made.shift = shift;
    return made;
}

TEST(GroupKeys, OnTheLineOfAGroupTheyOpenAndClose) {
    const auto does = [](Key key) { return groupCommandFor(stroke(key), true, true); };
    EXPECT_EQ(does(Key::Enter), GroupCommand::Toggle);
    EXPECT_EQ(does(Key::Right), GroupCommand::OpenOrEnter);
    EXPECT_EQ(does(Key::Plus), GroupCommand::Open);
    EXPECT_EQ(does(Key::Left), GroupCommand::CloseOrLeave);
    EXPECT_EQ(does(Key::Minus), GroupCommand::Close);
    EXPECT_EQ(does(Key::Multiply), GroupCommand::OpenAll);
    EXPECT_EQ(does(Key::Divide), GroupCommand::CloseAll);
    EXPECT_EQ(does(Key::Down), GroupCommand::None);
}

TEST(GroupKeys, OnARowTheyAreTheRowsOwnButLeftInTheFirstCell) {
    for (const Key key : {Key::Enter, Key::Right, Key::Plus, Key::Minus, Key::Multiply})
        EXPECT_EQ(groupCommandFor(stroke(key), false, true), GroupCommand::None);
    EXPECT_EQ(groupCommandFor(stroke(Key::Left), false, true), GroupCommand::ToGroup);
    EXPECT_EQ(groupCommandFor(stroke(Key::Left), false, false), GroupCommand::None);
}

TEST(GroupKeys, WithModifiersOnlyThoseForColumns) {
    EXPECT_EQ(groupCommandFor(stroke(Key::G, true), false, false), GroupCommand::GroupColumn);
    EXPECT_EQ(groupCommandFor(stroke(Key::G, true, true), true, false), GroupCommand::Ungroup);
    EXPECT_EQ(groupCommandFor(stroke(Key::G), true, false), GroupCommand::None);
    EXPECT_EQ(groupCommandFor(stroke(Key::Plus, false, true), true, false), GroupCommand::None);
    EXPECT_EQ(groupCommandFor(stroke(Key::Left, false, true), true, true), GroupCommand::None);
    EXPECT_EQ(groupCommandFor(stroke(Key::Left, true), true, true), GroupCommand::None);
    EXPECT_EQ(groupCommandFor(stroke(Key::Plus, true), true, true), GroupCommand::None);
    Stroke alt = stroke(Key::Left);
    alt.alt = true;
    EXPECT_EQ(groupCommandFor(alt, true, true), GroupCommand::None);
}

TEST(GroupKeys, ASignCountsAsTyped) {
    EXPECT_EQ(signOf('+'), Key::Plus);
    EXPECT_EQ(signOf('-'), Key::Minus);
    EXPECT_EQ(signOf('*'), Key::Multiply);
    EXPECT_EQ(signOf('/'), Key::Divide);
    EXPECT_EQ(signOf('8'), Key::Other);
}

TEST(GroupText, SaysCaptionValueAndRows) {
    Column column;
    column.Caption = "Città";
    EXPECT_EQ(groupText(column, "Forlì", false, 1, false), "Città: Forlì (1)");
    EXPECT_EQ(groupText(column, "3,5", false, 1234567, false), "Città: 3,5 (1234567)");
    EXPECT_EQ(groupText(column, "Roma", false, 12, true), "Città: Roma (12…)");
    EXPECT_EQ(groupText(column, "", true, 2, false), "Città: (nessun valore) (2)");
    EXPECT_EQ(groupText(column, "", false, 2, false), "Città: (vuoto) (2)");
    EXPECT_EQ(groupText(column, "  ", false, 2, false), "Città: (vuoto) (2)");
}

TEST(GroupBoxes, StandSideBySideAndTellPlacesByTheirMiddles) {
    GroupBoxes boxes;
    boxes.Arrange({{4, 0, 60}, {2, 0, 40}}, 0, 400, 8);
    EXPECT_EQ(boxes.All()[0].left, 8);
    EXPECT_EQ(boxes.All()[1].left, 76);
    EXPECT_EQ(boxes.ColumnAt(8), 4);
    EXPECT_EQ(boxes.ColumnAt(67), 4);
    EXPECT_EQ(boxes.ColumnAt(70), -1);
    EXPECT_EQ(boxes.ColumnAt(115), 2);
    EXPECT_EQ(boxes.PlaceAt(0), 0);
    EXPECT_EQ(boxes.PlaceAt(38), 1);
    EXPECT_EQ(boxes.PlaceAt(95), 1);
    EXPECT_EQ(boxes.PlaceAt(396), 2);
    EXPECT_EQ(boxes.BorderAt(0), 4);
    EXPECT_EQ(boxes.BorderAt(1), 72);
    EXPECT_EQ(boxes.BorderAt(2), 120);
}

TEST(GroupBoxes, WhereRoomIsShortTheWidestGiveWay) {
    GroupBoxes boxes;
    boxes.Arrange({{0, 0, 30}, {1, 0, 300}, {2, 0, 200}}, 0, 230, 5);
    EXPECT_EQ(boxes.All()[0].width, 30);
    EXPECT_EQ(boxes.All()[1].width, 90);
    EXPECT_EQ(boxes.All()[2].width, 90);
    EXPECT_LE(boxes.All()[2].left + boxes.All()[2].width, 230);
    boxes.Arrange({{0, 0, 30}, {1, 0, 30}}, 0, 0, 5);
    EXPECT_EQ(boxes.All()[1].width, 1);
    boxes.Arrange({}, 0, 100, 8);
    EXPECT_EQ(boxes.PlaceAt(50), 0);
    EXPECT_EQ(boxes.ColumnAt(50), -1);
    EXPECT_GE(boxes.BorderAt(0), 0);
}

// Three columns of 100 pixels; the middle one is grouped.
class GroupAreaGeometry : public testing::Test {
  protected:
    GroupAreaGeometry() {
        for (int i = 0; i < 3; ++i) {
            Column column;
            column.Width = 1500;
            column.Order = i;
            column.Grouped = i == 1;
            columns.Add(column);
        }
        Measures sizes;
        sizes.width = 500;
        sizes.height = 400;
        sizes.selectorWidth = 20;
        sizes.areaHeight = 40;
        sizes.headingHeight = 25;
        sizes.filterHeight = 25;
        sizes.rowHeight = 20;
        places.Update(columns, sizes, 100);
        places.Boxes().Arrange({{1, 0, 50}}, 0, 500, 8);
    }
    Spot spotAt(int x, int y) const { return places.HitTest(x, y, columns).spot; }

    Columns columns;
    Geometry places;
};

TEST_F(GroupAreaGeometry, HeadingsFilterCellsAndRowsStandBelowTheArea) {
    EXPECT_EQ(places.ShownCount(), 2);
    EXPECT_EQ(places.PlaceOf(1), -1);
    EXPECT_EQ(places.Heading(0), (Rect{20, 40, 100, 25}));
    EXPECT_EQ(places.FilterCell(2), (Rect{120, 65, 100, 25}));
    EXPECT_EQ(places.DataTop(), 90);
    EXPECT_EQ(places.BoxOf(1), (Rect{8, 7, 50, 25}));
    EXPECT_TRUE(places.BoxOf(0).Empty());
    EXPECT_EQ(spotAt(300, 39), Spot::GroupArea);
    EXPECT_EQ(spotAt(20, 20), Spot::GroupBox);
    EXPECT_EQ(spotAt(20, 3), Spot::GroupArea);
    EXPECT_EQ(spotAt(60, 50), Spot::Heading);
    EXPECT_EQ(spotAt(60, 70), Spot::FilterCell);
    EXPECT_EQ(spotAt(5, 50), Spot::Corner);
    EXPECT_EQ(spotAt(60, 95), Spot::Cell);
}

TEST_F(GroupAreaGeometry, AHeadingLandsInTheAreaOrAmongTheHeadings) {
    EXPECT_EQ(places.DropAt(300, 10), (ColumnDrop{Spot::GroupArea, 1}));
    EXPECT_EQ(places.DropAt(10, 10), (ColumnDrop{Spot::GroupArea, 0}));
    EXPECT_EQ(places.DropAt(300, -10), (ColumnDrop{Spot::GroupArea, 1}));
    EXPECT_EQ(places.DropAt(30, 50), (ColumnDrop{Spot::Heading, 0}));
    EXPECT_EQ(places.DropAt(300, 80), (ColumnDrop{Spot::Heading, 2}));
    EXPECT_EQ(places.DropAt(300, 200).spot, Spot::Outside);
}

} // namespace
} // namespace norvel::grid
