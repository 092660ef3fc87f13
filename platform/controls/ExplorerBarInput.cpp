// A side menu's mouse and keyboard.
#include "platform/controls/ExplorerBarImpl.h"

#include <wx/event.h>

namespace norvel::controls {

namespace {
constexpr int scrollStep = 24; // logical pixels at 96 dpi: of a notch of the wheel a third
} // namespace

void ExplorerBar::Impl::listenToWheel() {
    bar.Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        turnWheel(event.GetWheelRotation(), event.GetWheelDelta());
        setHover(partAt(event.GetPosition()));
    });
}

void ExplorerBar::Impl::turnWheel(int rotation, int delta) {
    wheel += rotation;
    const int notches = delta > 0 ? wheel / delta : 0;
    wheel -= notches * delta;
    scrollTo(top - notches * 3 * bar.FromDIP(scrollStep));
}

ExplorerBar::Impl::Place ExplorerBar::Impl::partAt(wxPoint at) const {
    if (!wxRect(area()).Contains(at)) return std::nullopt;
    for (std::size_t row = 0; row < layout.rows.size(); ++row)
        if (rectOf(row).Contains(at)) return row;
    return std::nullopt;
}

// The description of a command.
std::string ExplorerBar::Impl::tipOf(std::size_t row) const {
    const ExplorerRow& at = layout.rows[row];
    return at.IsHeading() ? std::string() : groups[at.group].Items[at.item].Description;
}

std::vector<std::size_t> ExplorerBar::Impl::stops() const {
    std::vector<std::size_t> all;
    for (std::size_t row = 0; row < layout.rows.size(); ++row)
        if (isCommand(layout.rows[row])) all.push_back(row);
    return all;
}

// The pressed command takes the keyboard, so that the arrows go on from there.
bool ExplorerBar::Impl::takePress(std::size_t row) {
    if (isCommand(layout.rows[row])) {
        setFocus(row);
        bar.SetFocus();
    }
    return true;
}

bool ExplorerBar::Impl::otherKey(int key) {
    switch (key) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
        moveFocus(-1);
        return true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
        moveFocus(1);
        return true;
    default:
        return false;
    }
}

void ExplorerBar::Impl::click(std::size_t row) {
    const auto told = bar.OnItemClick;
    const std::string key = keyOf(layout.rows[row]);
    if (told) told(key);
}

} // namespace norvel::controls
