// The side menu on screen, under mouse and keyboard.
#include "platform/controls/ExplorerBar.h"

#include "platform/controls/Keyboard.h"
#include "platform/runtime/Errore.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/textctrl.h>
#include <wx/tooltip.h>

#include <memory>
#include <set>

namespace norvel::tests {
namespace {

using controls::ExplorerBar;
using controls::ExplorerGroup;
using Told = std::vector<std::string>;

std::vector<ExplorerGroup> sampleGroups() {
    return {{.Key = "G1",
             .IconKey = "configura",
             .Caption = "Configurazione",
             .SecondTitle = "Parametri",
             .Description = "Personalizza ciò che si vede.",
             .Special = true,
             .Items = {{"UNO", "nuovo", "Posizione colonne", "Sposta le colonne"},
                       {"DUE", "vista", "Scopri/nascondi", "Nasconde le colonne"},
                       {"TRE", "salva", "Salvataggio vista", "Salva"},
                       {"FINE", "chiudi", "Chiudi", "Chiude"}}},
            {.Key = "G2",
             .Caption = "NOTE",
             .Items = {{"NOTA", "nota",
                        "Tramite le voci sopra riportate è possibile creare visualizzazioni di "
                        "numero, dimensione e ordine di campi",
                        "", true}}}};
}

class ExplorerBarTest : public testing::Test {
  protected:
    void open(int height = 520) {
        window = new wxFrame(nullptr, wxID_ANY, "Menu", wxPoint(60, 60), wxSize(420, height + 80));
        before = new wxTextCtrl(window, wxID_ANY, "prima");
        bar = new ExplorerBar(window, 3300);
        after = new wxTextCtrl(window, wxID_ANY, "dopo");
        for (ExplorerGroup& group : sampleGroups())
            bar->AddGroup(std::move(group));
        bar->OnItemClick = [this](const std::string& key) { told.push_back(key); };
        window->Bind(wxEVT_SIZE, [this](wxSizeEvent&) { place(); });
        controls::travelByTab(*window);
        robot.show(*window);
        place();
        robot.pump();
    }
    void place() const {
        const wxSize area = window->GetClientSize();
        const int width = bar->GetBestSize().x;
        before->SetSize(0, 0, 100, 30);
        bar->SetSize(0, 40, width, area.y - 80);
        after->SetSize(0, area.y - 35, 100, 30);
    }
    void TearDown() override {
        if (window != nullptr) window->Destroy();
        robot.pump();
    }
    wxPoint middleOf(std::string_view key) const {
        const wxRect place = bar->ItemRect(key);
        return {place.x + place.width / 2, place.y + place.height / 2};
    }
    void click(std::string_view key) { robot.click(*bar, middleOf(key)); }

    Robot robot;
    wxFrame* window = nullptr;
    ExplorerBar* bar = nullptr;
    wxTextCtrl* before = nullptr;
    wxTextCtrl* after = nullptr;
    Told told;
};

TEST_F(ExplorerBarTest, AClickTellsTheKeyOfACommandAHeadingAndANote) {
    open();
    for (const char* key : {"DUE", "G1", "NOTA", "G2", "FINE"})
        click(key);
    EXPECT_EQ(told, (Told{"DUE", "G1", "NOTA", "G2", "FINE"}));
}

TEST_F(ExplorerBarTest, AButtonThatComesUpElsewhereClicksNothing) {
    open();
    robot.drag(*bar, middleOf("UNO"), middleOf("TRE"));
    EXPECT_TRUE(told.empty());
    click("UNO");
    EXPECT_EQ(told, Told{"UNO"});
}

TEST_F(ExplorerBarTest, ArrowsHomeAndEndWalkTheCommandsAndStopAtTheEnds) {
    open();
    robot.focus(*bar);
    EXPECT_EQ(bar->FocusedKey(), "UNO");
    robot.press(WXK_UP);
    EXPECT_EQ(bar->FocusedKey(), "UNO");
    robot.press(WXK_DOWN);
    robot.press(WXK_RIGHT);
    EXPECT_EQ(bar->FocusedKey(), "TRE");
    robot.press(WXK_LEFT);
    EXPECT_EQ(bar->FocusedKey(), "DUE");
    robot.press(WXK_END);
    robot.press(WXK_DOWN);
    EXPECT_EQ(bar->FocusedKey(), "FINE") << "a note is no stop";
    robot.press(WXK_HOME);
    EXPECT_EQ(bar->FocusedKey(), "UNO");
    EXPECT_TRUE(told.empty()) << "walking chooses nothing";
}

TEST_F(ExplorerBarTest, EnterAndSpaceClickTheCommandWithTheRing) {
    open();
    robot.focus(*bar);
    robot.press(WXK_DOWN);
    robot.press(WXK_RETURN);
    robot.press(WXK_SPACE);
    EXPECT_EQ(told, (Told{"DUE", "DUE"}));
}

TEST_F(ExplorerBarTest, TabGoesInAndOutBothWaysAndTheRingStaysWhereItWas) {
    open();
    robot.focus(*before);
    robot.press(WXK_TAB);
    EXPECT_TRUE(bar->HasFocus());
    robot.press(WXK_DOWN);
    robot.press(WXK_TAB);
    EXPECT_TRUE(after->HasFocus());
    EXPECT_EQ(bar->FocusedKey(), "");
    robot.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_EQ(bar->FocusedKey(), "DUE");
    robot.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(before->HasFocus());
}

TEST_F(ExplorerBarTest, AClickedCommandTakesTheKeyboard) {
    open();
    robot.focus(*before);
    click("TRE");
    EXPECT_EQ(bar->FocusedKey(), "TRE");
    click("G2");
    EXPECT_EQ(bar->FocusedKey(), "TRE") << "a heading is no stop";
}

TEST_F(ExplorerBarTest, TheCommandUnderTheMouseSaysWhatItDoes) {
    open();
    robot.moveTo(*bar, middleOf("DUE"));
    ASSERT_NE(bar->GetToolTip(), nullptr);
    EXPECT_EQ(bar->GetToolTip()->GetTip(), "Nasconde le colonne");
    robot.moveTo(*bar, middleOf("NOTA"));
    EXPECT_EQ(bar->GetToolTip(), nullptr);
}

TEST_F(ExplorerBarTest, HoverFocusAndTheCommandInForceCanBeSeen) {
    open();
    const auto look = [&] {
        robot.pump();
        const wxImage image = imageOf(*bar, bar->ItemRect("DUE"));
        return std::string(reinterpret_cast<const char*>(image.GetData()),
                           static_cast<std::size_t>(image.GetWidth() * image.GetHeight() * 3));
    };
    robot.focus(*before);
    robot.moveTo(*before, {5, 5});
    const std::string plain = look();
    robot.moveTo(*bar, middleOf("DUE"));
    const std::string hovered = look();
    EXPECT_NE(hovered, plain);
    robot.moveTo(*before, {5, 5});
    EXPECT_EQ(look(), plain);
    robot.focus(*bar);
    robot.press(WXK_DOWN);
    const std::string ringed = look();
    EXPECT_NE(ringed, plain);
    robot.focus(*before);
    bar->SetSelectedKey("due");
    EXPECT_NE(look(), plain);
    EXPECT_NE(look(), ringed);
    bar->SetSelectedKey("");
    EXPECT_EQ(look(), plain);
}

TEST_F(ExplorerBarTest, EveryCaptionIsWrittenOnScreen) {
    open();
    robot.moveTo(*before, {5, 5});
    for (const char* key : {"G1", "UNO", "FINE", "G2", "NOTA"}) {
        wxRect words = bar->ItemRect(key); // right of the icon
        words.x += words.width / 6;
        words.width /= 3;
        const wxImage image = imageOf(*bar, words);
        std::set<int> shades;
        for (int x = 0; x < image.GetWidth(); ++x)
            for (int y = 4; y < image.GetHeight() - 4; ++y)
                shades.insert(image.GetGreen(x, y));
        EXPECT_GT(shades.size(), 2U) << key;
    }
}

TEST_F(ExplorerBarTest, KeysStayUniqueAndUnknownOnesAreRefused) {
    open();
    const auto number = [&](const std::function<void()>& act) -> std::int64_t {
        try {
            act();
        } catch (const Errore& errore) {
            return errore.numero();
        }
        return 0;
    };
    EXPECT_EQ(number([&] { bar->AddGroup({.Key = "uno", .Caption = "x"}); }), 35602);
    EXPECT_EQ(number([&] {
                  bar->AddGroup({.Key = "G3", .Caption = "x", .Items = {{"g3", "", "y"}}});
              }),
              35602);
    EXPECT_EQ(bar->Groups().size(), 2U);
    EXPECT_EQ(number([&] { bar->SetSelectedKey("boh"); }), 35601);
    EXPECT_EQ(number([&] { static_cast<void>(bar->ItemRect("boh")); }), 35601);
}

TEST_F(ExplorerBarTest, ClearedItIsEmptyAndMayBeFilledAnew) {
    open();
    bar->SetSelectedKey("UNO");
    robot.focus(*bar);
    bar->StopRedraw();
    bar->Clear();
    EXPECT_TRUE(bar->Groups().empty());
    EXPECT_EQ(bar->SelectedKey(), "");
    bar->AddGroup(sampleGroups()[1]);
    EXPECT_TRUE(bar->ItemRect("NOTA").IsEmpty()) << "nothing is placed while it is stopped";
    bar->ResumeRedraw();
    robot.pump();
    EXPECT_FALSE(bar->ItemRect("NOTA").IsEmpty());
    EXPECT_EQ(bar->FocusedKey(), "") << "a note alone gives the keyboard no place";
    robot.press(WXK_RETURN);
    robot.press(WXK_DOWN);
    EXPECT_TRUE(told.empty());
    click("NOTA");
    EXPECT_EQ(told, Told{"NOTA"});
    bar->Clear();
    bar->AddGroup(sampleGroups()[0]);
    EXPECT_EQ(bar->FocusedKey(), "UNO") << "filled under the keyboard";
}

TEST_F(ExplorerBarTest, WhatDoesNotFitScrollsUnderTheWheelAndTheKeys) {
    open(180);
    EXPECT_GT(bar->ItemRect("FINE").y, bar->GetClientSize().y);
    robot.focus(*bar);
    robot.press(WXK_END);
    EXPECT_LE(bar->ItemRect("FINE").GetBottom(), bar->GetClientSize().y);
    robot.press(WXK_RETURN);
    EXPECT_EQ(told, Told{"FINE"});
    robot.wheel(*bar, {30, 30}, 10);
    EXPECT_LE(bar->ItemRect("NOTA").GetBottom(), bar->GetClientSize().y);
    click("NOTA");
    EXPECT_EQ(told.back(), "NOTA");
    robot.wheel(*bar, {30, 30}, -20);
    EXPECT_GE(bar->ItemRect("G1").y, 0);
    screenshot(*window, "explorer-bar-scrolled");
}

TEST_F(ExplorerBarTest, ALargerFontMakesItWiderThanItWasMade) {
    open();
    const wxSize usual = bar->GetBestSize();
    bar->SetFont(bar->GetFont().Scaled(2.4F));
    place();
    robot.pump();
    EXPECT_GT(bar->GetBestSize().x, usual.x);
    EXPECT_GT(bar->ItemRect("UNO").height, bar->GetCharHeight());
    screenshot(*window, "explorer-bar-large");
}

TEST_F(ExplorerBarTest, ACallbackMayDestroyTheWindow) {
    open();
    bar->OnItemClick = [this](const std::string&) {
        window->Destroy();
        window = nullptr;
    };
    robot.focus(*bar);
    robot.press(WXK_RETURN);
    EXPECT_EQ(window, nullptr);
}

TEST_F(ExplorerBarTest, PictureOfEveryState) {
    open();
    bar->SetSelectedKey("UNO");
    robot.focus(*bar);
    robot.press(WXK_DOWN);
    robot.moveTo(*bar, middleOf("TRE"));
    screenshot(*window, "explorer-bar");
}

TEST_F(ExplorerBarTest, AMenuTooLowForAScrollBarScrollsWithoutOne) {
    open();
    const wxWindow* scrollBar = bar->GetChildren().front();
    const int width = bar->GetSize().x;
    bar->SetSize(0, 40, width, 120);
    EXPECT_TRUE(scrollBar->IsShown());
    for (const int height : {50, 30, 5, 0}) {
        bar->SetSize(0, 40, width, height);
        robot.pump();
        EXPECT_FALSE(scrollBar->IsShown()) << height << " pixels";
    }
    bar->SetSize(0, 40, width, 50);
    robot.focus(*bar);
    robot.press(WXK_END);
    EXPECT_EQ(bar->FocusedKey(), "FINE");
    EXPECT_TRUE(bar->GetClientRect().Contains(bar->ItemRect("FINE")));
}

} // namespace
} // namespace norvel::tests
