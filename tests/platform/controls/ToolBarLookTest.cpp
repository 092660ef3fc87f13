// What a toolbar and a status bar look like: pictures of every state.
#include "tests/platform/controls/BarWindow.h"

namespace norvel::tests {

class BarPictures : public BarTest {};

TEST_F(BarPictures, EveryStateOfAButton) {
    open();
    window->bar->Change("Facilitata", [](auto& b) { b.Value = 1; });
    window->bar->Change("Taglia", [](auto& b) { b.Enabled = false; });
    window->bar->Change("ultimo", [](auto& b) { b.Enabled = false; });
    window->status->SetPanelText(1, "Totale record 125, città àèìòù ÀÈÌ gjpqy");
    window->status->SetPanelText(2, "Selezionati 3");
    robot.focus(*window->bar);
    robot.pressTimes(3, WXK_RIGHT);
    robot.moveTo(*window->bar, middleOf("Aggiorna"));
    EXPECT_EQ(window->bar->FocusedKey(), "Drop");
    screenshot(*window, "toolbar-states");
}

} // namespace norvel::tests
