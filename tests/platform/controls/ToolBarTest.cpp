// The toolbar's buttons as a host of the control sees them.
#include "platform/runtime/Errore.h"
#include "tests/platform/controls/BarWindow.h"

#include <cmath>

namespace norvel::tests {

using controls::Button;
using controls::ButtonStyle;

namespace {

std::int64_t errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Errore& errore) {
        return errore.numero();
    }
    return 0;
}

} // namespace

class ToolBarTest : public BarTest {
  protected:
    // The parts of the bar that an action repaints.
    std::vector<wxRect> repaintedBy(const std::function<void()>& action) {
        robot.pump();
        std::vector<wxRect> areas;
        const auto note = [&](wxPaintEvent& event) {
            areas.push_back(window->bar->GetUpdateRegion().GetBox());
            event.Skip();
        };
        window->bar->Bind(wxEVT_PAINT, note);
        action();
        robot.pump();
        window->bar->Unbind(wxEVT_PAINT, note);
        return areas;
    }
};

TEST_F(ToolBarTest, ButtonsAreFoundByKeyWhateverItsCase) {
    open();
    EXPECT_EQ(window->bar->Item("STAMPA").Description, "Stampa il documento");
    EXPECT_EQ(window->bar->Item("html").Key, "HTML");
    EXPECT_EQ(window->bar->Item(std::size_t{0}).Key, "Apri");
    EXPECT_EQ(window->bar->Count(), 19U);
}

TEST_F(ToolBarTest, AMissingKeyAndAnIndexOutOfRangeRaiseTheirErrors) {
    open();
    EXPECT_EQ(errorOf([&] { (void)window->bar->Item("manca"); }), 35601);
    EXPECT_EQ(errorOf([&] { (void)window->bar->ButtonRect("manca"); }), 35601);
    EXPECT_EQ(errorOf([&] { window->bar->Change("manca", [](Button&) {}); }), 35601);
    EXPECT_EQ(errorOf([&] { (void)window->bar->Item(std::size_t{19}); }), 35600);
}

TEST_F(ToolBarTest, AKeyThatIsThereIsRefused) {
    open();
    Button again;
    again.Key = "APRI";
    EXPECT_EQ(errorOf([&] { window->bar->Add(again); }), 35602);
    EXPECT_EQ(window->bar->Count(), 19U);
}

TEST_F(ToolBarTest, AChangeThatFailsHalfWayLeavesTheButtonAsItWas) {
    open();
    EXPECT_THROW(window->bar->Change("copia",
                                     [](Button& button) {
                                         button.Enabled = false;
                                         throw Errore(5, "a metà");
                                     }),
                 Errore);
    EXPECT_TRUE(window->bar->Item("copia").Enabled);
}

TEST_F(ToolBarTest, TheBarIsFourHundredAndEightyTwipsHighAndItsButtonsFitInside) {
    open();
    EXPECT_EQ(window->bar->HeightTwips(), 480);
    EXPECT_EQ(window->bar->GetSize().y, 32);
    EXPECT_EQ(window->bar->GetBestSize().y, 32);
    wxFont large = window->bar->GetFont();
    large.Scale(3);
    window->bar->SetFont(large);
    EXPECT_EQ(window->bar->GetBestSize().y, 32);
    for (const char* key : {"Apri", "Facilitata", "Chiudi"})
        EXPECT_TRUE(window->bar->GetClientRect().Contains(window->bar->ButtonRect(key))) << key;
}

TEST_F(ToolBarTest, ButtonsStandInTheirOrderWithoutOverlap) {
    open();
    int right = 0;
    for (const Button& button : allButtons()) {
        if (button.Style == ButtonStyle::Separator) continue;
        const wxRect place = window->bar->ButtonRect(button.Key);
        EXPECT_GE(place.x, right) << button.Key;
        right = place.GetRight() + 1;
    }
    EXPECT_TRUE(window->bar->OverflowRect().IsEmpty());
}

TEST_F(ToolBarTest, AHiddenButtonTakesNoPlaceUntilItIsShown) {
    open();
    const wxRect before = window->bar->ButtonRect("Modifica");
    const int drop = window->bar->ButtonRect("Drop").x;
    window->bar->Change("Modifica", [](Button& b) { b.Visible = false; });
    EXPECT_TRUE(window->bar->ButtonRect("Modifica").IsEmpty());
    EXPECT_EQ(window->bar->ButtonRect("Drop").x, before.x);
    window->bar->Change("Modifica", [](Button& b) { b.Visible = true; });
    EXPECT_EQ(window->bar->ButtonRect("Modifica"), before);
    EXPECT_EQ(window->bar->ButtonRect("Drop").x, drop);
}

TEST_F(ToolBarTest, AChangeRepaintsItsButtonOnly) {
    open();
    robot.moveTo(*window->field, {50, 50});
    const auto areas =
        repaintedBy([&] { window->bar->Change("Stampa", [](Button& b) { b.Enabled = false; }); });
    ASSERT_FALSE(areas.empty());
    const wxRect own = window->bar->ButtonRect("Stampa");
    for (const wxRect& area : areas)
        EXPECT_TRUE(own.Contains(area)) << area.x << ' ' << area.width;
}

TEST_F(ToolBarTest, AChangeThatShowsNothingRepaintsNothing) {
    open();
    robot.moveTo(*window->field, {50, 50});
    const auto areas = repaintedBy([&] {
        window->bar->Change("Stampa", [](Button& b) { b.Description = "Stampa"; });
        window->bar->Change("Stampa", [](Button& b) { b.Enabled = true; });
        window->bar->Change("Apri", [](Button& b) { b.ButtonMenus.push_back({"v3", "Terza"}); });
    });
    EXPECT_TRUE(areas.empty());
}

TEST_F(ToolBarTest, ACheckedButtonLooksPressedAndADisabledOnePale) {
    open();
    robot.moveTo(*window->field, {50, 50});
    const double face = brightnessOf(imageOf(*window->bar, wxRect(700, 4, 20, 20)));
    const auto difference = [&](std::string_view key) {
        robot.pump();
        return std::abs(brightnessOf(imageOf(*window->bar, window->bar->ButtonRect(key))) - face);
    };
    const double released = difference("Facilitata");
    window->bar->Change("Facilitata", [](Button& b) { b.Value = 1; });
    EXPECT_GT(difference("Facilitata"), released + 10);
    const double alive = difference("Taglia");
    window->bar->Change("Taglia", [](Button& b) { b.Enabled = false; });
    EXPECT_LT(difference("Taglia"), alive - 3);
}

} // namespace norvel::tests
