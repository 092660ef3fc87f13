// A toolbar's mouse and keyboard.
#include "platform/controls/Keyboard.h"
#include "platform/controls/ToolBarImpl.h"

#include <wx/event.h>

namespace norvel::controls {

std::optional<Spot> ToolBar::Impl::partAt(wxPoint at) const {
    if (layout.chevron && rectOf(*layout.chevron).Contains(at)) return Spot{Spot::Part::Chevron, 0};
    for (const Slot& slot : layout.slots) {
        if (!rectOf(slot).Contains(at) || buttons[slot.button].Style == ButtonStyle::Separator)
            continue;
        const bool onArrow = at.x >= slot.x + slot.width - slot.arrow;
        return Spot{onArrow ? Spot::Part::Arrow : Spot::Part::Button, slot.button};
    }
    return std::nullopt;
}

// A disabled button explains itself as well. None while a menu is open: it would cover the entries.
std::string ToolBar::Impl::tipOf(Spot spot) const {
    if (opened) return {};
    if (spot.part == Spot::Part::Chevron) return "Altri comandi";
    const Button& button = buttons[spot.button];
    return button.Shortcut.empty() ? nameOf(button) : nameOf(button) + "\n" + button.Shortcut;
}

std::vector<Spot> ToolBar::Impl::stops() const {
    std::vector<Spot> all;
    for (const Slot& slot : layout.slots)
        if (usable(slot.button)) all.push_back({Spot::Part::Button, slot.button});
    if (layout.chevron) all.push_back({Spot::Part::Chevron, 0});
    return all;
}

// Menus open when the mouse goes down, commands run when it comes up again on the same button.
bool ToolBar::Impl::takePress(Spot spot) {
    if (spot.part == Spot::Part::Chevron) {
        openOverflowMenu();
        return false;
    }
    if (!usable(spot.button)) return false;
    if (spot.part == Spot::Part::Button) return true;
    openButtonMenu(spot.button);
    return false;
}

void ToolBar::Impl::click(Spot spot) {
    if (usable(spot.button)) press(spot.button);
}

bool ToolBar::Impl::otherKey(int key) {
    switch (key) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
        moveFocus(-1);
        return true;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
        moveFocus(1);
        return true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        if (focus && focus->part == Spot::Part::Chevron)
            openOverflowMenu();
        else if (focus && usable(focus->button))
            openButtonMenu(focus->button);
        return true;
    default:
        return false;
    }
}

void ToolBar::Impl::pressKey(Spot spot) {
    if (spot.part == Spot::Part::Chevron) {
        forgetTypedCharacter(bar);
        openOverflowMenu();
    } else if (usable(spot.button))
        press(spot.button);
}

} // namespace norvel::controls
