// What a toolbar knows, shared by the files that lay it out, draw it and listen to the operator.
#pragma once

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

struct ToolBar::Impl {
    ToolBar& bar;
    int heightTwips;
    std::vector<Button> buttons;
    BarLayout layout;

    std::optional<Spot> hover;   // under the mouse
    std::optional<Spot> pressed; // where the mouse button went down
    std::optional<Spot> opened;  // whose menu is open
    std::optional<Spot> focus;   // where the keyboard is while the bar has the focus
    std::string tip;

    Impl(ToolBar& owner, int twips) : bar(owner), heightTwips(twips) {}

    // ToolBar.cpp
    double scale() const; // logical pixels a 1/96 inch
    BarMetrics metrics() const;
    std::size_t indexOf(std::string_view key) const;
    bool usable(std::size_t button) const;
    void layOut();
    void changed(std::size_t index, const Button& before);
    const Slot* slotOf(std::size_t button) const;
    wxRect rectOf(const Slot& slot) const;
    wxRect rectOf(const Spot& spot) const;

    // ToolBarPaint.cpp
    void paint(const wxRect& damaged);
    void paintSlot(wxGraphicsContext& context, const Slot& slot) const;
    void paintChevron(wxGraphicsContext& context) const;
    void paintFace(wxGraphicsContext& context, const wxRect& face, Spot spot, bool checked) const;

    // ToolBarInput.cpp
    void listen();
    std::optional<Spot> spotAt(wxPoint at) const;
    void setHover(std::optional<Spot> spot);
    void showTip();
    void mouseDown(wxPoint at);
    void mouseUp(wxPoint at);
    bool keyDown(int key, bool shift, bool alt);
    std::vector<Spot> stops() const; // where the keyboard may stand, left to right
    void moveFocus(int step);
    void moveFocusToEnd(bool last);
    void setFocus(std::optional<Spot> spot);
    void activate(Spot spot);
    void refresh(const std::optional<Spot>& spot);

    // ToolBarMenus.cpp
    void openButtonMenu(std::size_t button);
    void openOverflowMenu();
    void press(std::size_t button);
};

} // namespace norvel::controls
