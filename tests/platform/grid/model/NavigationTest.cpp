#include "platform/grid/model/Navigation.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using Kind = KeyCommand::Kind;

TEST(Navigation, ArrowsAndPagesMoveTheRowAndClearTheSelection) {
    const KeyCommand down = commandFor({Key::Down});
    EXPECT_EQ(down.kind, Kind::MoveRow);
    EXPECT_EQ(down.step, Step::RowDown);
    EXPECT_FALSE(down.extend);
    EXPECT_FALSE(down.keepSelection);
    EXPECT_EQ(commandFor({Key::PageUp}).step, Step::PageUp);
}

TEST(Navigation, ShiftExtendsAndControlKeepsTheSelection) {
    EXPECT_TRUE(commandFor({Key::Down, true, false}).extend);
    EXPECT_TRUE(commandFor({Key::Down, false, true}).keepSelection);
    EXPECT_TRUE(commandFor({Key::End, true, true}).extend);
    EXPECT_FALSE(commandFor({Key::End, true, true}).keepSelection);
}

TEST(Navigation, HomeAndEndMoveTheCellAndWithControlTheRow) {
    EXPECT_EQ(commandFor({Key::Home}).kind, Kind::MoveCell);
    EXPECT_EQ(commandFor({Key::Home}).side, Side::First);
    EXPECT_EQ(commandFor({Key::End, false, true}).kind, Kind::MoveRow);
    EXPECT_EQ(commandFor({Key::End, false, true}).step, Step::LastRow);
}

TEST(Navigation, ControlAndShiftWithTheSidewaysArrowsMoveTheColumn) {
    EXPECT_EQ(commandFor({Key::Left, true, true}).kind, Kind::MoveColumn);
    EXPECT_EQ(commandFor({Key::Left, true, true}).side, Side::Left);
    EXPECT_EQ(commandFor({Key::Right, true, true}).side, Side::Right);
    EXPECT_EQ(commandFor({Key::Right, false, true}).kind, Kind::MoveCell);
    EXPECT_EQ(commandFor({Key::Right, false, true}).side, Side::Last);
}

TEST(Navigation, PlusMinusAndZeroSizeTheColumnWithControlAndTheRowsWithAlt) {
    const auto stroke = [](Key key, bool control, bool alt) {
        return Stroke{.key = key, .shift = false, .control = control, .alt = alt};
    };
    EXPECT_EQ(commandFor(stroke(Key::Plus, true, false)).kind, Kind::SizeColumn);
    EXPECT_EQ(commandFor(stroke(Key::Plus, true, false)).sizing, Sizing::Larger);
    EXPECT_EQ(commandFor(stroke(Key::Minus, false, true)).kind, Kind::SizeRows);
    EXPECT_EQ(commandFor(stroke(Key::Minus, false, true)).sizing, Sizing::Smaller);
    EXPECT_EQ(commandFor(stroke(Key::Zero, true, false)).sizing, Sizing::Fit);
    EXPECT_EQ(commandFor(stroke(Key::Plus, true, true)).kind, Kind::None) << "AltGr";
    EXPECT_EQ(commandFor(stroke(Key::Zero, false, false)).kind, Kind::None);
}

TEST(Navigation, OtherKeysWithAltAreTheHosts) {
    for (const Key key : {Key::Left, Key::Down, Key::Home, Key::A, Key::F2, Key::Tab})
        EXPECT_EQ(commandFor({.key = key, .shift = false, .control = false, .alt = true}).kind,
                  Kind::None);
}

TEST(Navigation, SelectionKeysNeedTheirModifier) {
    EXPECT_EQ(commandFor({Key::A, false, true}).kind, Kind::SelectAll);
    EXPECT_EQ(commandFor({Key::A}).kind, Kind::None);
    EXPECT_EQ(commandFor({Key::Space, false, true}).kind, Kind::ToggleRow);
    EXPECT_EQ(commandFor({Key::Space, true, false}).kind, Kind::SelectRow);
    EXPECT_EQ(commandFor({Key::Space}).kind, Kind::None);
}

TEST(Navigation, ShiftSidewaysExtendsToTheCellAndControlCCopies) {
    EXPECT_FALSE(commandFor({Key::Left}).extend);
    EXPECT_TRUE(commandFor({Key::Left, true, false}).extend);
    EXPECT_TRUE(commandFor({Key::End, true, false}).extend);
    EXPECT_EQ(commandFor({Key::End, true, false}).kind, Kind::MoveCell);
    EXPECT_EQ(commandFor({Key::C, false, true}).kind, Kind::Copy);
    EXPECT_EQ(commandFor({Key::Insert, false, true}).kind, Kind::Copy);
    EXPECT_EQ(commandFor({Key::C}).kind, Kind::None);
}

TEST(Navigation, TabLeavesTheRowsInBothDirections) {
    EXPECT_EQ(commandFor({Key::Tab}).kind, Kind::NextControl);
    EXPECT_EQ(commandFor({Key::Tab, true, false}).kind, Kind::EnterFilter);
    EXPECT_EQ(commandFor({Key::Tab, false, true}).kind, Kind::None);
}

TEST(Navigation, AnUnknownKeyDoesNothing) {
    EXPECT_EQ(commandFor({}).kind, Kind::None);
}

TEST(Navigation, StepsStopAtBothEnds) {
    EXPECT_EQ(targetRow(Step::RowUp, 0, 10, 5), 0);
    EXPECT_EQ(targetRow(Step::RowDown, 9, 10, 5), 9);
    EXPECT_EQ(targetRow(Step::PageDown, 7, 10, 5), 9);
    EXPECT_EQ(targetRow(Step::PageUp, 3, 10, 5), 0);
    EXPECT_EQ(targetRow(Step::LastRow, 0, 10'000'000, 5), 9'999'999);
    EXPECT_EQ(targetRow(Step::FirstRow, 9'999'999, 10'000'000, 5), 0);
}

TEST(Navigation, BeforeTheFirstAndBehindTheLastRowStepsLeadBackIn) {
    EXPECT_EQ(targetRow(Step::RowDown, -1, 10, 5), 0);
    EXPECT_EQ(targetRow(Step::RowUp, 10, 10, 5), 9);
}

TEST(Navigation, WithoutRowsThereIsNoTarget) {
    for (const Step step :
         {Step::RowUp, Step::RowDown, Step::PageUp, Step::FirstRow, Step::LastRow})
        EXPECT_EQ(targetRow(step, -1, 0, 5), -1);
}

TEST(Navigation, APageOfNoRowsStillMovesOne) {
    EXPECT_EQ(targetRow(Step::PageDown, 3, 10, 0), 4);
}

} // namespace
} // namespace norvel::grid
