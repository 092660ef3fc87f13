// The drop-down list of values: where it stands, mouse, keyboard, very many entries.
#include "platform/controls/ValueList.h"

#include "platform/runtime/Errore.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace norvel::tests {
namespace {

class ValueListTest : public testing::Test {
  protected:
    void SetUp() override {
        frame = new wxFrame(nullptr, wxID_ANY, "Elenco", {40, 40}, {500, 420});
        field =
            new wxTextCtrl(frame, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_MULTILINE);
        list = new controls::ValueList(frame);
        field->SetSize(frame->GetClientSize());
        list->OnClick = [this] { clicked.push_back(list->Text()); };
        list->OnCloseUp = [this](bool hadFocus) { closed.push_back(hadFocus); };
        robot.show(*frame);
        robot.focus(*field);
    }
    void TearDown() override {
        frame->Destroy();
        robot.pump();
    }
    void fill(int count, const std::string& text = "Voce ") {
        for (int i = 0; i < count; ++i)
            list->AddItem(text + std::to_string(i));
    }
    void drop() {
        list->DropUnder(cell, frame->GetClientSize());
        robot.pump();
    }
    wxPoint middleOf(std::size_t index) const {
        const wxRect r = list->ItemRect(index);
        return {r.x + 10, r.y + r.height / 2};
    }
    const wxRect cell{60, 30, 90, 22};
    wxFrame* frame = nullptr;
    wxTextCtrl* field = nullptr;
    controls::ValueList* list = nullptr;
    std::vector<std::string> clicked;
    std::vector<bool> closed;
    Robot robot;
};

TEST_F(ValueListTest, ItStandsUnderItsCellAsWideAsItsEntriesNeed) {
    EXPECT_FALSE(list->IsShown());
    fill(4, "Una voce piuttosto larga, più della cella ");
    drop();
    EXPECT_TRUE(list->HasFocus());
    EXPECT_EQ(list->GetPosition(), wxPoint(60, 52));
    EXPECT_GT(list->GetSize().x, list->GetTextExtent(wxString::FromUTF8(list->List(0))).x);
    EXPECT_EQ(list->ItemsInView(), 4);
    EXPECT_FALSE(list->ItemRect(3).IsEmpty());
    screenshot(*frame, "value_list");
}

TEST_F(ValueListTest, ItKeepsWithinItsAreaAndNeverGetsNarrowerThanItsCell) {
    fill(300);
    list->AddItem(std::string(5000, 'W'));
    list->DropUnder({380, 250, 90, 22}, frame->GetClientSize());
    robot.pump();
    EXPECT_TRUE(wxRect(frame->GetClientSize()).Contains(list->GetRect()));
    EXPECT_GE(list->GetSize().x, 90);
    EXPECT_GE(list->ItemsInView(), 6) << "over its cell rather than a slit below it";
    robot.press(WXK_END);
    EXPECT_TRUE(wxRect(frame->GetClientSize()).Contains(list->GetRect()));
    screenshot(*frame, "value_list_edge");
}

TEST_F(ValueListTest, AClickTakesTheEntryWhereTheButtonComesUp) {
    fill(30);
    drop();
    robot.click(*list, middleOf(2));
    EXPECT_EQ(clicked, (std::vector<std::string>{"Voce 2"}));
    EXPECT_EQ(list->ListIndex(), 2);
    EXPECT_TRUE(list->IsShown()) << "closing is its owner's affair";
    robot.drag(*list, middleOf(1), middleOf(5));
    EXPECT_EQ(clicked.back(), "Voce 5");
    robot.drag(*list, middleOf(1), {-40, 10});
    EXPECT_EQ(clicked.size(), 2U) << "let go outside";
}

TEST_F(ValueListTest, TheWheelScrollsWithoutChoosing) {
    fill(300);
    drop();
    robot.wheel(*list, middleOf(1), 4);
    EXPECT_EQ(list->FirstItem(), 12U);
    robot.wheel(*list, middleOf(14), -10);
    EXPECT_EQ(list->FirstItem(), 0U);
    EXPECT_EQ(list->ListIndex(), -1);
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ValueListTest, TheKeysMoveTheCurrentEntryAndEnterClicksIt) {
    fill(100);
    drop();
    robot.press(WXK_DOWN);
    EXPECT_EQ(list->ListIndex(), 0);
    robot.press(WXK_UP);
    EXPECT_EQ(list->ListIndex(), 0);
    robot.press(WXK_PAGEDOWN);
    EXPECT_EQ(list->ListIndex(), list->ItemsInView() - 1);
    robot.press(WXK_END);
    EXPECT_EQ(list->Text(), "Voce 99");
    EXPECT_FALSE(list->ItemRect(99).IsEmpty()) << "scrolled into view";
    robot.press(WXK_DOWN);
    EXPECT_EQ(list->ListIndex(), 99);
    robot.press(WXK_HOME);
    EXPECT_EQ(list->FirstItem(), 0U);
    EXPECT_TRUE(clicked.empty()) << "moving chooses nothing";
    robot.press(WXK_RETURN);
    EXPECT_EQ(clicked, (std::vector<std::string>{"Voce 0"}));
}

TEST_F(ValueListTest, LettersLeadToTheEntryThatBeginsWithThem) {
    for (const char* text :
         {"Bari", "Roma", "Rieti", "Rimini", "Forlì", "Forlimpopoli", "De Rossi"})
        list->AddItem(text);
    drop();
    robot.type("ri");
    EXPECT_EQ(list->Text(), "Rieti");
    robot.type("m");
    EXPECT_EQ(list->Text(), "Rimini");
    robot.pumpFor(1100);
    robot.type("forlì");
    EXPECT_EQ(list->Text(), "Forlì");
    robot.pumpFor(1100);
    robot.type("de r");
    EXPECT_EQ(list->Text(), "De Rossi") << "a blank belongs to what is typed";
    EXPECT_TRUE(clicked.empty());
    robot.pumpFor(1100);
    for (const char* next : {"Roma", "Rieti", "Rimini", "Roma"}) {
        robot.type("r");
        EXPECT_EQ(list->Text(), next) << "one letter again and again goes round";
    }
    robot.type("zz");
    EXPECT_EQ(list->Text(), "Roma") << "nothing begins so";
}

TEST_F(ValueListTest, EscTabAndF4CloseItAndTellThatItHadTheFocus) {
    fill(5);
    for (const int key :
         {static_cast<int>(WXK_ESCAPE), static_cast<int>(WXK_TAB), static_cast<int>(WXK_F4)}) {
        drop();
        robot.press(key);
        EXPECT_FALSE(list->IsShown());
        ASSERT_FALSE(closed.empty());
        EXPECT_TRUE(closed.back());
    }
    EXPECT_TRUE(clicked.empty());
    EXPECT_EQ(closed.size(), 3U) << "told once each";
}

TEST_F(ValueListTest, FocusThatGoesElsewhereHidesIt) {
    fill(5);
    drop();
    robot.click(*field, {400, 300});
    EXPECT_TRUE(robot.waitUntil([&] { return !list->IsShown(); }));
    EXPECT_EQ(closed, (std::vector<bool>{false}));
    EXPECT_TRUE(field->HasFocus());
}

TEST_F(ValueListTest, SeveralChoicesAreTurnedOnAndOff) {
    fill(8);
    list->SetMultiSelect(true);
    drop();
    robot.click(*list, middleOf(1));
    robot.click(*list, middleOf(4));
    EXPECT_TRUE(list->Selected(1) && list->Selected(4));
    robot.click(*list, middleOf(1));
    EXPECT_FALSE(list->Selected(1));
    robot.press(WXK_DOWN);
    robot.press(WXK_SPACE);
    EXPECT_TRUE(list->Selected(2));
    EXPECT_EQ(clicked.size(), 4U);
    screenshot(*frame, "value_list_several");
    robot.press(WXK_RETURN);
    EXPECT_FALSE(list->IsShown());
    EXPECT_EQ(clicked.size(), 4U) << "something was on already";
    list->SetMultiSelect(false);
    EXPECT_FALSE(list->Selected(4));
    EXPECT_TRUE(list->Selected(2)) << "one choice: the current entry";
}

TEST_F(ValueListTest, EnterTakesTheCurrentEntryWhereNothingIsOn) {
    fill(8);
    list->SetMultiSelect(true);
    drop();
    robot.pressTimes(2, WXK_DOWN);
    robot.press(WXK_RETURN);
    EXPECT_EQ(clicked, (std::vector<std::string>{"Voce 1"}));
    EXPECT_TRUE(list->Selected(1));
    EXPECT_FALSE(list->IsShown());
}

TEST_F(ValueListTest, SevenHundredThousandEntriesScrollAndAreFound) {
    fill(700000);
    drop();
    robot.press(WXK_END);
    EXPECT_EQ(list->Text(), "Voce 699999");
    robot.type("voce 350000");
    EXPECT_EQ(list->Text(), "Voce 350000");
    EXPECT_FALSE(list->ItemRect(350000).IsEmpty());
    robot.click(*list, middleOf(350000));
    EXPECT_EQ(clicked.back(), "Voce 350000");
}

TEST_F(ValueListTest, EntriesThatComeWhileItIsOpenMakeItGrowAndLeaveTheOperatorWhereHeWas) {
    fill(3);
    drop();
    const int before = list->GetSize().y;
    robot.pressTimes(2, WXK_DOWN);
    fill(500, "Nuova ");
    robot.pump();
    EXPECT_GT(list->GetSize().y, before);
    EXPECT_EQ(list->Text(), "Voce 1");
    EXPECT_EQ(list->FirstItem(), 0U);
    list->SetNote("Lettura dei valori in corso");
    robot.pump();
    screenshot(*frame, "value_list_note");
    list->Clear();
    robot.pump();
    EXPECT_EQ(list->ListCount(), 0U);
    EXPECT_EQ(list->Text(), "");
    robot.press(WXK_DOWN);
    robot.press(WXK_RETURN);
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ValueListTest, BadIndexesAreRefused) {
    fill(2);
    for (const auto& wrong : std::vector<std::function<void()>>{
             [&] { list->List(2); }, [&] { list->SetListIndex(2); }, [&] { list->Selected(2); },
             [&] { list->SetSelected(2, true); }}) {
        try {
            wrong();
            ADD_FAILURE() << "not refused";
        } catch (const Errore& errore) {
            EXPECT_EQ(errore.numero(), 9);
        }
    }
    list->SetListIndex(-1);
    EXPECT_EQ(list->Text(), "");
}

TEST_F(ValueListTest, ItMayGoWithItsWindowWhileItIsOpen) {
    fill(50);
    drop();
    frame->Destroy();
    robot.pump();
    frame = new wxFrame(nullptr, wxID_ANY, "");
}

} // namespace
} // namespace norvel::tests
