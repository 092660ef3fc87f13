// What a toolbar knows, shared by the files that lay it out, draw it and listen to the operator.
#pragma once

#include "platform/controls/PartsInput.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/ToolBarLayout.h"

#include <wx/gdicmn.h>

#include <optional>

class wxGraphicsContext;

namespace norvel::controls {

// A place on the bar that takes the mouse and the keyboard.
struct Spot {
    enum class Part { Button, Arrow, Chevron };
    Part part = Part::Button;
    std::size_t button = 0; // no meaning for the chevron
    bool operator==(const Spot&) const = default;
};

// What a button is called where its icon is not enough: its description, or else its key.
const std::string& nameOf(const Button& button);

struct ToolBar::Impl : PartsInput<Spot> {
    ToolBar& bar;
    int heightTwips;
    std::vector<Button> buttons;
    BarLayout layout;

    std::optional<Spot> opened; // whose menu is open

    Impl(ToolBar& owner, int twips) : PartsInput(owner), bar(owner), heightTwips(twips) {}

    // ToolBar.cpp
    double scale() const; // logical pixels a 1/96 inch
    BarMetrics metrics() const;
    std::size_t indexOf(std::string_view key) const;
    bool usable(std::size_t button) const;
    void layOut() override;
    void changed(std::size_t index, const Button& before);
    const Slot* slotOf(std::size_t button) const;
    wxRect rectOf(const Slot& slot) const;
    wxRect rectOf(Spot spot) const override;

    // ToolBarPaint.cpp
    void paint(const wxRect& damaged) override;
    void paintSlot(wxGraphicsContext& context, const Slot& slot) const;
    void paintChevron(wxGraphicsContext& context) const;
    void paintFace(wxGraphicsContext& context, const wxRect& face, Spot spot, bool checked) const;

    // ToolBarInput.cpp
    std::optional<Spot> partAt(wxPoint at) const override;
    std::vector<Spot> stops() const override; // left to right
    std::string tipOf(Spot spot) const override;
    bool otherKey(int key) override;
    bool takePress(Spot spot) override;
    void click(Spot spot) override;
    void pressKey(Spot spot) override;

    // ToolBarMenus.cpp
    void openButtonMenu(std::size_t button);
    void openOverflowMenu();
    void press(std::size_t button);
};

} // namespace norvel::controls
