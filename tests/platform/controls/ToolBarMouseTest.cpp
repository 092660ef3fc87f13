// The toolbar under the mouse.
#include "tests/platform/controls/BarWindow.h"

namespace norvel::tests {

using controls::Button;
using Told = std::vector<std::string>;

class ToolBarMouse : public BarTest {};

TEST_F(ToolBarMouse, AClickTellsTheButton) {
    open();
    clickButton("copia");
    clickButton("Chiudi");
    EXPECT_EQ(told, (Told{"copia", "Chiudi"}));
}

TEST_F(ToolBarMouse, AClickLeavesTheKeyboardFocusWhereItIs) {
    open();
    clickButton("copia");
    EXPECT_TRUE(window->field->HasFocus());
    robot.type("ancora qui");
    EXPECT_EQ(window->field->GetValue(), "ancora qui");
}

TEST_F(ToolBarMouse, ACheckButtonTurnsItsValueBeforeItsClickIsTold) {
    open();
    clickButton("Facilitata");
    clickButton("Facilitata");
    EXPECT_EQ(told, (Told{"Facilitata=1", "Facilitata=0"}));
    EXPECT_EQ(window->bar->Item("Facilitata").Value, 0);
}

TEST_F(ToolBarMouse, ADoubleClickIsTwoClicks) {
    open();
    robot.doubleClick(*window->bar, middleOf("avanti"));
    EXPECT_EQ(told, (Told{"avanti", "avanti"}));
}

TEST_F(ToolBarMouse, ADisabledButtonAndASeparatorDoNothing) {
    open();
    window->bar->Change("copia", [](Button& b) { b.Enabled = false; });
    clickButton("copia");
    const wxRect after = window->bar->ButtonRect("Stampa");
    robot.click(*window->bar, {after.GetRight() + 6, after.y + 10});
    EXPECT_TRUE(told.empty());
}

TEST_F(ToolBarMouse, ReleasedElsewhereAPressedButtonDoesNothing) {
    open();
    robot.drag(*window->bar, middleOf("copia"), middleOf("Stampa"));
    robot.drag(*window->bar, middleOf("copia"), middleOf("copia") + wxPoint(0, 120));
    EXPECT_TRUE(told.empty());
    robot.drag(*window->bar, middleOf("copia"), middleOf("copia") + wxPoint(4, 3));
    EXPECT_EQ(told, (Told{"copia"}));
}

TEST_F(ToolBarMouse, TheRightButtonPressesNothing) {
    open();
    robot.rightClick(*window->bar, middleOf("copia"));
    EXPECT_TRUE(told.empty());
}

TEST_F(ToolBarMouse, TheTipIsTheDescriptionAndFollowsTheMouse) {
    open();
    robot.moveTo(*window->bar, middleOf("copia"));
    EXPECT_EQ(window->bar->GetToolTipText(), "Esporta su clipboard in formato excel");
    robot.moveTo(*window->bar, middleOf("excel"));
    EXPECT_EQ(window->bar->GetToolTipText(), "excel") << "its key, where there is no description";
    window->bar->Change("excel", [](Button& b) { b.Shortcut = "Ctrl+S"; });
    EXPECT_EQ(window->bar->GetToolTipText(), "excel\nCtrl+S");
    robot.moveTo(*window->bar, middleOf("ultimo"));
    EXPECT_EQ(window->bar->GetToolTipText(), "Vai all'ultimo record");
    window->bar->Change("ultimo", [](Button& b) { b.Enabled = false; });
    EXPECT_EQ(window->bar->GetToolTipText(), "Vai all'ultimo record");
    robot.moveTo(*window->field, {80, 80});
    EXPECT_EQ(window->bar->GetToolTipText(), "");
}

TEST_F(ToolBarMouse, TheArrowOpensTheMenuAndAnEntryTellsItsKey) {
    open();
    Script script;
    script.then("opens the menu", [&] { robot.click(*window->bar, arrowOf("Apri")); });
    script.then("picture", [&] { screenshot(*window, "toolbar-menu"); });
    script.then("second entry", [&] { robot.pressTimes(2, WXK_DOWN); });
    script.then("chooses", [&] { robot.press(WXK_RETURN); });
    script.run([&] { robot.waitUntil([&] { return !told.empty(); }); });
    EXPECT_EQ(told, (Told{"Apri>v2"}));
}

TEST_F(ToolBarMouse, AMenuLeftWithEscapeTellsNothing) {
    open();
    Script script;
    script.then("opens the menu", [&] { robot.click(*window->bar, arrowOf("Apri")); });
    script.then("leaves it", [&] { robot.press(WXK_ESCAPE); });
    script.run([&] { robot.pumpFor(1200); });
    EXPECT_TRUE(told.empty());
    clickButton("avanti"); // the bar lives on
    EXPECT_EQ(told, (Told{"avanti"}));
}

TEST_F(ToolBarMouse, ThePushPartOfADropDownButtonIsAPlainClick) {
    open();
    clickButton("Apri");
    EXPECT_EQ(told, (Told{"Apri"}));
}

TEST_F(ToolBarMouse, AnArrowWithoutEntriesOpensNothing) {
    open();
    window->bar->Change("Apri", [](Button& b) { b.ButtonMenus.clear(); });
    robot.click(*window->bar, arrowOf("Apri"));
    EXPECT_TRUE(told.empty());
    clickButton("avanti");
    EXPECT_EQ(told, (Told{"avanti"}));
}

TEST_F(ToolBarMouse, ACommandMayChangeTheBarAndDestroyTheWindow) {
    open();
    window->bar->OnButtonClick = [&](const Button& button) {
        window->bar->Change(button.Key, [](Button& b) { b.Visible = false; });
        for (int i = 0; i < 40; ++i)
            window->bar->Add({.Key = "nuovo" + std::to_string(i)});
        told.push_back(button.Key);
        window->Destroy();
    };
    clickButton("Chiudi");
    EXPECT_EQ(told, (Told{"Chiudi"}));
    window = nullptr;
}

class ToolBarOverflow : public BarTest {
  protected:
    void openMenuAnd(const std::string& what, const std::function<void()>& then) {
        Script script;
        script.then("opens the overflow menu", [&] {
            const wxRect chevron = window->bar->OverflowRect();
            robot.click(*window->bar, chevron.GetPosition() + wxPoint(10, 14));
        });
        script.then(what, then);
        script.run([&] { robot.pumpFor(1500); });
    }
};

TEST_F(ToolBarOverflow, WhatDoesNotFitStandsBehindAChevronAtTheEnd) {
    open(330);
    const wxRect chevron = window->bar->OverflowRect();
    EXPECT_FALSE(chevron.IsEmpty());
    EXPECT_TRUE(window->bar->GetClientRect().Contains(chevron));
    EXPECT_FALSE(window->bar->ButtonRect("copia").IsEmpty());
    EXPECT_LE(window->bar->ButtonRect("copia").GetRight(), chevron.x);
    EXPECT_TRUE(window->bar->ButtonRect("Chiudi").IsEmpty());
    window->SetClientSize(760, 200);
    robot.pump();
    EXPECT_TRUE(window->bar->OverflowRect().IsEmpty());
    EXPECT_FALSE(window->bar->ButtonRect("Chiudi").IsEmpty());
}

TEST_F(ToolBarOverflow, ItsMenuRunsTheCommands) {
    open(330);
    openMenuAnd("last entry", [&] {
        screenshotOfDisplay("toolbar-overflow");
        robot.press(WXK_UP);
        robot.press(WXK_RETURN);
    });
    EXPECT_EQ(told, (Told{"Chiudi"}));
}

TEST_F(ToolBarOverflow, ItsMenuShowsADisabledCommandThatCannotBeChosen) {
    open(330);
    window->bar->Change("Chiudi", [](Button& b) { b.Enabled = false; });
    openMenuAnd("last entry that can be chosen", [&] {
        robot.pressTimes(stopsAtDisabledEntries ? 2 : 1, WXK_UP);
        robot.press(WXK_RETURN);
    });
    EXPECT_EQ(told, (Told{"configura"}));
}

TEST_F(ToolBarOverflow, ACheckButtonInItTurnsItsValue) {
    open(90); // or the least that the system allows
    const bool none = window->bar->ButtonRect("Facilitata").IsEmpty();
    ASSERT_TRUE(window->bar->ButtonRect("Modifica").IsEmpty());
    openMenuAnd("first entry", [&] {
        robot.press(WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    EXPECT_EQ(told, (Told{none ? "Facilitata=1" : "Modifica=1"}));
}

TEST_F(ToolBarOverflow, ADropDownButtonInItKeepsItsMenu) {
    auto buttons = allButtons();
    std::rotate(buttons.begin(), buttons.begin() + 1, buttons.end());
    open(330, buttons); // "Apri" is the last now
    openMenuAnd("its last entry", [&] {
        robot.press(WXK_UP);
        robot.press(WXK_RIGHT);
        screenshotOfDisplay("toolbar-overflow-submenu");
        robot.press(WXK_UP);
        robot.press(WXK_RETURN);
    });
    EXPECT_EQ(told, (Told{"Apri>v2"}));
}

TEST_F(ToolBarOverflow, AWindowTooNarrowForAnyButtonStillOffersThemAll) {
    open(200);
    window->bar->SetSize(20, 32);
    robot.pump();
    EXPECT_TRUE(window->bar->ButtonRect("Apri").IsEmpty());
    EXPECT_FALSE(window->bar->OverflowRect().IsEmpty());
}

} // namespace norvel::tests
