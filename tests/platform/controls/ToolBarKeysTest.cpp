// The toolbar under the keyboard.
#include "tests/platform/controls/BarWindow.h"

namespace norvel::tests {

using controls::Button;
using Told = std::vector<std::string>;

class ToolBarKeys : public BarTest {
  protected:
    void openOnBar(int width = 760) {
        open(width);
        robot.focus(*window->bar);
    }
};

TEST_F(ToolBarKeys, TheFocusBeginsAtTheFirstEnabledButton) {
    open();
    window->bar->Change("Apri", [](Button& b) { b.Enabled = false; });
    EXPECT_EQ(window->bar->FocusedKey(), "");
    robot.focus(*window->bar);
    EXPECT_EQ(window->bar->FocusedKey(), "Facilitata");
}

TEST_F(ToolBarKeys, LeftAndRightWalkTheEnabledButtonsAndStopAtTheEnds) {
    openOnBar();
    window->bar->Change("Facilitata", [](Button& b) { b.Enabled = false; });
    window->bar->Change("Modifica", [](Button& b) { b.Visible = false; });
    robot.press(WXK_LEFT);
    EXPECT_EQ(window->bar->FocusedKey(), "Apri");
    robot.press(WXK_RIGHT);
    EXPECT_EQ(window->bar->FocusedKey(), "Drop");
    robot.press(WXK_RIGHT); // over the separator
    EXPECT_EQ(window->bar->FocusedKey(), "Taglia");
    robot.press(WXK_END);
    robot.press(WXK_RIGHT);
    EXPECT_EQ(window->bar->FocusedKey(), "Chiudi");
    robot.press(WXK_HOME);
    EXPECT_EQ(window->bar->FocusedKey(), "Apri");
}

TEST_F(ToolBarKeys, SpaceAndEnterPressTheButton) {
    openOnBar();
    robot.press(WXK_RIGHT);
    robot.press(WXK_SPACE);
    robot.press(WXK_RETURN);
    robot.press(WXK_END);
    robot.press(WXK_RETURN);
    EXPECT_EQ(told, (Told{"Facilitata=1", "Facilitata=0", "Chiudi"}));
}

TEST_F(ToolBarKeys, DownOpensTheMenuOfADropDownButton) {
    openOnBar();
    Script script;
    script.then("opens", [&] { robot.press(WXK_DOWN); });
    script.then("first entry", [&] {
        robot.press(WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    script.run([&] { robot.waitUntil([&] { return !told.empty(); }); });
    EXPECT_EQ(told, (Told{"Apri>Base:clienti"}));
    robot.press(WXK_RIGHT); // a plain button has nothing to open
    robot.press(WXK_DOWN);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(ToolBarKeys, TabGoesIntoTheBarAndOutAgainBothWays) {
    open();
    window->field->Hide(); // it would keep the tab for itself
    auto* field = new wxTextCtrl(window, wxID_ANY, wxString(), wxPoint(5, 60));
    auto* last = new wxTextCtrl(window, wxID_ANY, wxString(), wxPoint(5, 110));
    robot.pump(); // they get their places, which Tab follows
    robot.focus(*field);
    robot.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(window->bar->HasFocus());
    EXPECT_EQ(window->bar->FocusedKey(), "Apri");
    robot.press(WXK_RIGHT);
    robot.press(WXK_TAB); // one stop for the whole bar
    EXPECT_TRUE(field->HasFocus());
    robot.focus(*last);
    robot.press(WXK_TAB);
    EXPECT_TRUE(window->bar->HasFocus());
    EXPECT_EQ(window->bar->FocusedKey(), "Facilitata");
    robot.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(last->HasFocus());
}

TEST_F(ToolBarKeys, ComingBackTheFocusStandsWhereItWas) {
    openOnBar();
    robot.pressTimes(4, WXK_RIGHT);
    const std::string key = window->bar->FocusedKey();
    robot.focus(*window->field);
    robot.focus(*window->bar);
    EXPECT_EQ(window->bar->FocusedKey(), key);
}

TEST_F(ToolBarKeys, AButtonDisabledUnderTheFocusIsNotPressed) {
    openOnBar();
    robot.pressTimes(2, WXK_RIGHT);
    window->bar->Change(window->bar->FocusedKey(), [](Button& b) { b.Enabled = false; });
    robot.press(WXK_SPACE);
    EXPECT_TRUE(told.empty());
    robot.press(WXK_RIGHT);
    robot.press(WXK_SPACE);
    EXPECT_EQ(told, (Told{"Apri"}));
}

TEST_F(ToolBarKeys, TheChevronIsTheLastStopAndOpensItsMenu) {
    openOnBar(330);
    robot.press(WXK_END);
    EXPECT_EQ(window->bar->FocusedKey(), "");
    Script script;
    script.then("opens", [&] { robot.press(WXK_SPACE); });
    script.then("last entry", [&] {
        robot.press(WXK_UP);
        robot.press(WXK_RETURN);
    });
    script.run([&] { robot.waitUntil([&] { return !told.empty(); }); });
    EXPECT_EQ(told, (Told{"Chiudi"}));
}

TEST_F(ToolBarKeys, ACommandsShortcutPressesItsButtonAsTheOperatorDoes) {
    open(330); // most buttons are behind the chevron
    window->bar->Press("stampa");
    window->bar->Press("facilitata");
    EXPECT_EQ(told, (Told{"Stampa", "Facilitata=1"}));
    EXPECT_EQ(window->bar->Item("Facilitata").Value, 1);
    window->bar->Change("Stampa", [](Button& b) { b.Enabled = false; });
    window->bar->Change("HTML", [](Button& b) { b.Visible = false; });
    window->bar->Press("Stampa");
    window->bar->Press("HTML");
    window->bar->Hide();
    window->bar->Press("Chiudi");
    window->bar->OpenMenu("Apri");
    EXPECT_EQ(told.size(), 2U) << "what the operator could not press stays as it is";
    EXPECT_TRUE(window->field->HasFocus());
}

TEST_F(ToolBarKeys, AShortcutOpensAButtonsMenu) {
    open();
    Script script;
    script.then("opens", [&] { window->bar->OpenMenu("Apri"); });
    script.then("second entry", [&] {
        robot.pressTimes(2, WXK_DOWN);
        robot.press(WXK_RETURN);
    });
    script.run([&] { robot.waitUntil([&] { return !told.empty(); }); });
    EXPECT_EQ(told, (Told{"Apri>v2"}));
    EXPECT_TRUE(window->field->HasFocus());
}

TEST_F(ToolBarKeys, KeysOfOthersPassThroughTheBar) {
    openOnBar();
    std::vector<int> passed;
    window->bar->Bind(wxEVT_CHAR, [&](wxKeyEvent& event) { passed.push_back(event.GetKeyCode()); });
    robot.press('A');
    robot.press(WXK_F5);
    robot.press(WXK_ESCAPE);
    EXPECT_EQ(passed, (std::vector<int>{'a', WXK_F5, WXK_ESCAPE}));
}

} // namespace norvel::tests
