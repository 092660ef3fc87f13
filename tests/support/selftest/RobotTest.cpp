// The robot's keys and mouse reach a window as an operator's would.
#include "tests/support/Robot.h"

#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace norvel::tests {

namespace {

// Writes down what the mouse and the keyboard do to it.
class Pad : public wxPanel {
  public:
    std::vector<std::string> seen;
    std::vector<wxPoint> places;

    explicit Pad(wxWindow* parent)
        : wxPanel(parent, wxID_ANY, wxPoint(0, 60), wxSize(400, 200), wxWANTS_CHARS) {
        const auto mouse = [this](const char* what) {
            return [this, what](wxMouseEvent& event) {
                seen.push_back((event.ControlDown() ? "ctrl+" : std::string()) +
                               (event.ShiftDown() ? "shift+" : "") + what);
                places.push_back(event.GetPosition());
            };
        };
        Bind(wxEVT_LEFT_DOWN, mouse("down"));
        Bind(wxEVT_LEFT_UP, mouse("up"));
        Bind(wxEVT_LEFT_DCLICK, mouse("double"));
        Bind(wxEVT_RIGHT_DOWN, mouse("right"));
        Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
            if (event.Dragging()) ++drags;
            last = event.GetPosition();
        });
        Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
            wheel += event.GetWheelRotation() / event.GetWheelDelta();
        });
        Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
            keys.push_back({event.GetKeyCode(), event.GetModifiers()});
            event.Skip();
        });
    }
    int drags = 0;
    int wheel = 0;
    wxPoint last;
    std::vector<std::pair<int, int>> keys;
};

} // namespace

class RobotTest : public testing::Test {
  protected:
    using Seen = std::vector<std::string>;
    Robot robot;
    wxFrame* frame = nullptr;
    wxTextCtrl* field = nullptr;
    Pad* pad = nullptr;

    void SetUp() override {
        frame = new wxFrame(nullptr, wxID_ANY, "Prova", wxPoint(120, 90), wxSize(420, 320));
        field = new wxTextCtrl(frame, wxID_ANY, wxString(), wxPoint(5, 5), wxSize(380, -1));
        pad = new Pad(frame);
        robot.show(*frame);
    }
    void TearDown() override {
        frame->Destroy();
        robot.pump();
    }
};

TEST_F(RobotTest, TypesAnyUnicodeText) {
    robot.focus(*field);
    const std::string text = "Forlì, L'Aquila & Zoë 12,50 € «ß» Ωж 漢 ABC _|\\#@";
    robot.type(text);
    EXPECT_EQ(field->GetValue().utf8_string(), text);
}

TEST_F(RobotTest, TypesMoreDifferentCharactersThanAKeyboardHasSpareKeys) {
    robot.focus(*field);
    std::string text;
    for (char32_t c = 0x410; c < 0x410 + 64; ++c) { // Cyrillic
        text.push_back(static_cast<char>(0xC0 | (c >> 6)));
        text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
    robot.type(text);
    robot.type(text);
    EXPECT_EQ(field->GetValue().utf8_string(), text + text);
}

TEST_F(RobotTest, PressesKeysWithModifiers) {
    robot.focus(*pad);
    robot.press('A', wxMOD_CONTROL);
    robot.press(WXK_HOME, wxMOD_CONTROL | wxMOD_SHIFT);
    robot.press(WXK_F5);
    robot.pressTimes(2, WXK_DOWN);
    std::vector<std::pair<int, int>> keys;
    for (const auto& key : pad->keys)
        if (key.first != WXK_CONTROL && key.first != WXK_SHIFT) keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::pair<int, int>>{{'A', wxMOD_CONTROL},
                                                      {WXK_HOME, wxMOD_CONTROL | wxMOD_SHIFT},
                                                      {WXK_F5, 0},
                                                      {WXK_DOWN, 0},
                                                      {WXK_DOWN, 0}}));
}

TEST_F(RobotTest, ClicksWhereItIsTold) {
    robot.click(*pad, {37, 51});
    EXPECT_EQ(pad->seen, (Seen{"down", "up"}));
    EXPECT_EQ(pad->places.front(), wxPoint(37, 51));
}

TEST_F(RobotTest, ClicksWithModifiersDoubleAndRight) {
    robot.click(*pad, {30, 30}, wxMOD_CONTROL);
    robot.click(*pad, {60, 30}, wxMOD_SHIFT);
    robot.click(*pad, {90, 30}, wxMOD_CONTROL | wxMOD_SHIFT);
    robot.rightClick(*pad, {120, 30});
    EXPECT_EQ(pad->seen, (Seen{"ctrl+down", "ctrl+up", "shift+down", "shift+up", "ctrl+shift+down",
                               "ctrl+shift+up", "right"}));
    pad->seen.clear();
    robot.doubleClick(*pad, {200, 100});
    EXPECT_EQ(pad->seen, (Seen{"down", "up", "double", "up"}));
}

TEST_F(RobotTest, TwoClicksOneAfterTheOtherAreNoDoubleClick) {
    robot.click(*pad, {30, 30});
    robot.click(*pad, {30, 30});
    EXPECT_EQ(pad->seen, (Seen{"down", "up", "down", "up"}));
}

TEST_F(RobotTest, DragsInSteps) {
    robot.drag(*pad, {20, 20}, {180, 120});
    EXPECT_EQ(pad->seen, (Seen{"down", "up"}));
    EXPECT_EQ(pad->places.front(), wxPoint(20, 20));
    EXPECT_EQ(pad->places.back(), wxPoint(180, 120));
    EXPECT_GE(pad->drags, 5);
}

TEST_F(RobotTest, TurnsTheWheelBothWays) {
    robot.wheel(*pad, {50, 50}, 3);
    EXPECT_EQ(pad->wheel, -3); // the toolkit counts away from the operator
    robot.wheel(*pad, {50, 50}, -5);
    EXPECT_EQ(pad->wheel, 2);
}

TEST_F(RobotTest, WaitUntilGivesUpInTime) {
    int asked = 0;
    EXPECT_FALSE(robot.waitUntil(
        [&] {
            ++asked;
            return false;
        },
        100));
    EXPECT_GT(asked, 2);
    EXPECT_TRUE(robot.waitUntil([] { return true; }, 0));
}

TEST_F(RobotTest, APictureHasTheWindowsPixels) {
    pad->SetBackgroundColour(wxColour(10, 200, 30));
    pad->Refresh();
    const wxImage picture = imageOf(*pad);
    const double scale = pad->GetContentScaleFactor();
    EXPECT_EQ(picture.GetWidth(), static_cast<int>(pad->GetClientSize().x * scale));
    const int x = picture.GetWidth() / 2;
    const int y = picture.GetHeight() / 2;
    EXPECT_EQ(picture.GetRed(x, y), 10);
    EXPECT_EQ(picture.GetGreen(x, y), 200);
    EXPECT_EQ(picture.GetBlue(x, y), 30);
    const auto path = screenshot(*frame, "robot");
    EXPECT_TRUE(std::filesystem::exists(path));
}

} // namespace norvel::tests
