#include "platform/runtime/Errore.h"
#include "tests/platform/controls/BarWindow.h"

#include <wx/dcclient.h>

namespace norvel::tests {

class StatusBarTest : public BarTest {};

TEST_F(StatusBarTest, PanelsAreNumberedFromOne) {
    open();
    window->status->SetPanelText(1, "Record 3 di 120");
    window->status->SetPanelText(2, "due");
    EXPECT_EQ(window->status->PanelText(1), "Record 3 di 120");
    EXPECT_EQ(window->status->PanelText(2), "due");
    for (const int wrong : {0, 3, -1}) {
        try {
            window->status->SetPanelText(wrong, "x");
            ADD_FAILURE() << wrong;
        } catch (const Errore& errore) {
            EXPECT_EQ(errore.numero(), 35600);
        }
    }
}

TEST_F(StatusBarTest, TheFirstPanelTakesTheRoomTheOthersLeave) {
    open();
    window->status->SetPanelText(2, "Selezionati 3");
    const wxRect first = window->status->PanelRect(1);
    const wxRect second = window->status->PanelRect(2);
    EXPECT_EQ(first.x, 0);
    EXPECT_EQ(first.GetRight() + 1, second.x);
    EXPECT_EQ(second.GetRight() + 1, window->status->GetClientSize().x);
    EXPECT_GT(second.width, window->status->GetTextExtent("Selezionati 3").x);
    window->status->SetPanelText(2, "Selezionati 3000000");
    EXPECT_LT(window->status->PanelRect(1).width, first.width);
}

TEST_F(StatusBarTest, TheHeightInTwipsHoldsTheFontWhateverItsSize) {
    open();
    for (const double times : {0.5, 1.0, 2.0, 5.0}) {
        wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
        font.Scale(static_cast<float>(times));
        window->status->SetFont(font);
        const int pixels =
            twipsToPixels(window->status->HeightTwips(), window->FromDIP(1000) / 1000.0);
        EXPECT_GE(pixels, window->status->GetTextExtent("ÀÈÌgjpqyÅ").y) << times;
        EXPECT_EQ(pixels, window->status->GetBestSize().y) << times;
    }
}

TEST_F(StatusBarTest, ALargeTextIsNotClippedAboveOrBelow) {
    open();
    wxFont font = window->status->GetFont();
    font.Scale(2.5);
    window->status->SetFont(font);
    window->layOut();
    window->status->SetPanelText(1, "ÀÉÎÕÜÅ gjpqyç|");
    screenshot(*window, "status-large");
    const wxImage picture = imageOf(*window->status, window->status->PanelRect(1));
    const double scale = window->status->GetContentScaleFactor();
    const int edge = static_cast<int>(2 * scale);
    // The rows at the edges, but for the line on top, hold nothing but the background.
    for (const int y : {edge, picture.GetHeight() - 2})
        for (int x = edge; x < picture.GetWidth() - edge; ++x)
            ASSERT_EQ(picture.GetRed(x, y), picture.GetRed(picture.GetWidth() - 3, y))
                << x << ',' << y;
}

TEST_F(StatusBarTest, ATextThatIsTooLongEndsInDotsAndLeavesTheOtherPanelsAlone) {
    open(300);
    window->status->SetPanelText(2, "Selezionati 3");
    window->status->SetPanelText(1, std::string(200, 'm'));
    screenshot(*window, "status-narrow");
    EXPECT_EQ(window->status->PanelRect(2).GetRight() + 1, window->status->GetClientSize().x);
    window->SetClientSize(60, 100);
    robot.pump();
    EXPECT_GE(window->status->PanelRect(1).width, 0);
}

TEST_F(StatusBarTest, ALongOtherPanelGivesWayToTheFirstOnesText) {
    open(300);
    window->status->SetPanelText(1, "Record 3 di 120");
    window->status->SetPanelText(2, std::string(200, 'm'));
    screenshot(*window, "status-gives-way");
    const int text = window->status->GetTextExtent("Record 3 di 120").x;
    EXPECT_GT(window->status->PanelRect(1).width, text);
    EXPECT_EQ(window->status->PanelRect(2).GetRight() + 1, window->status->GetClientSize().x);
    window->status->SetPanelText(1, std::string(200, 'm'));
    EXPECT_EQ(window->status->PanelRect(1).width, window->status->GetClientSize().x / 2);
}

TEST_F(StatusBarTest, APanelWithoutATextIsNotThere) {
    open();
    window->status->SetPanelText(1, "Record 3 di 120");
    EXPECT_EQ(window->status->PanelRect(2).width, 0);
    EXPECT_EQ(window->status->PanelRect(1).width, window->status->GetClientSize().x);
}

TEST_F(StatusBarTest, ItTakesNoFocusFromTheKeyboardOrTheMouse) {
    open();
    robot.click(*window->status, {20, 8});
    EXPECT_TRUE(window->field->HasFocus());
    EXPECT_FALSE(window->status->AcceptsFocusFromKeyboard());
}

TEST_F(StatusBarTest, AnUnchangedTextRepaintsNothing) {
    open();
    window->status->SetPanelText(1, "uguale");
    robot.pump();
    int paints = 0;
    window->status->Bind(wxEVT_PAINT, [&](wxPaintEvent& event) {
        ++paints;
        event.Skip();
    });
    window->status->SetPanelText(1, "uguale");
    robot.pump();
    EXPECT_EQ(paints, 0);
    window->status->SetPanelText(1, "diverso");
    robot.pump();
    EXPECT_GT(paints, 0);
}

} // namespace norvel::tests
