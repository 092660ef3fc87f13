// A side menu's mouse and keyboard.
#include "platform/controls/ExplorerBarImpl.h"
#include "platform/controls/Tip.h"

#include <wx/dcclient.h>
#include <wx/event.h>
#include <wx/scrolbar.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace norvel::controls {

void ExplorerBar::Impl::listen() {
    bar.Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(bar.GetUpdateRegion().GetBox()); });
    const auto placeAnew = [this](wxEvent& event) {
        layOut();
        event.Skip();
    };
    bar.Bind(wxEVT_SIZE, placeAnew);
    bar.Bind(wxEVT_DPI_CHANGED, placeAnew);
    const auto paintAnew = [this](wxEvent& event) {
        bar.Refresh();
        event.Skip();
    };
    bar.Bind(wxEVT_SYS_COLOUR_CHANGED, paintAnew);
    bar.Bind(wxEVT_KILL_FOCUS, paintAnew);
    bar.Bind(wxEVT_SET_FOCUS, [this, paintAnew](wxFocusEvent& event) {
        moveFocus(0); // back where it stood, if it still can
        paintAnew(event);
    });
    bar.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.ControlDown() || !keyDown(event.GetKeyCode(), event.ShiftDown(), event.AltDown()))
            event.Skip();
    });
    listenToMouse();
}

void ExplorerBar::Impl::listenToMouse() {
    const auto follow = [this](wxMouseEvent& event) { setHover(rowAt(event.GetPosition())); };
    bar.Bind(wxEVT_MOTION, follow);
    bar.Bind(wxEVT_ENTER_WINDOW, follow); // also when the window appears under a resting mouse
    bar.Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { setHover(std::nullopt); });
    const auto down = [this](wxMouseEvent& event) { mouseDown(event.GetPosition()); };
    bar.Bind(wxEVT_LEFT_DOWN, down);
    bar.Bind(wxEVT_LEFT_DCLICK, down);
    bar.Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) { mouseUp(event.GetPosition()); });
    bar.Bind(wxEVT_MOUSE_CAPTURE_LOST,
             [this](wxMouseCaptureLostEvent&) { refresh(std::exchange(pressed, std::nullopt)); });
    bar.Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        turnWheel(event.GetWheelRotation(), event.GetWheelDelta());
        setHover(rowAt(event.GetPosition()));
    });
}

ExplorerBar::Impl::Row ExplorerBar::Impl::rowAt(wxPoint at) const {
    if (!wxRect(area()).Contains(at)) return std::nullopt;
    for (std::size_t row = 0; row < layout.rows.size(); ++row)
        if (rectOf(row).Contains(at)) return row;
    return std::nullopt;
}

void ExplorerBar::Impl::refresh(Row row) {
    if (row) bar.RefreshRect(rectOf(*row), false);
}

// The description of the command under the mouse is the menu's tip.
void ExplorerBar::Impl::setHover(Row row) {
    if (row == hover) return;
    refresh(std::exchange(hover, row));
    refresh(hover);
    std::string wanted;
    if (hover && !layout.rows[*hover].IsHeading())
        wanted = groups[layout.rows[*hover].group].Items[layout.rows[*hover].item].Description;
    if (wanted == tip) return;
    tip = wanted;
    setTip(bar, tip, hover ? rectOf(*hover) : bar.GetClientRect());
}

// The pressed command takes the keyboard, so that the arrows go on from there.
void ExplorerBar::Impl::mouseDown(wxPoint at) {
    setHover(rowAt(at));
    if (!hover) return;
    if (isCommand(layout.rows[*hover])) {
        setFocus(hover);
        bar.SetFocus();
    }
    pressed = hover;
    refresh(pressed);
    if (!bar.HasCapture()) bar.CaptureMouse();
}

void ExplorerBar::Impl::mouseUp(wxPoint at) {
    if (bar.HasCapture()) bar.ReleaseMouse();
    const Row released = std::exchange(pressed, std::nullopt);
    refresh(released);
    setHover(rowAt(at));
    if (released && released == hover) click(*released);
}

std::vector<std::size_t> ExplorerBar::Impl::stops() const {
    std::vector<std::size_t> all;
    for (std::size_t row = 0; row < layout.rows.size(); ++row)
        if (isCommand(layout.rows[row])) all.push_back(row);
    return all;
}

void ExplorerBar::Impl::setFocus(Row row) {
    refresh(std::exchange(focus, row));
    refresh(focus);
    if (focus) show(*focus);
}

void ExplorerBar::Impl::moveFocusToEnd(bool last) {
    const std::vector<std::size_t> all = stops();
    if (all.empty())
        setFocus(std::nullopt);
    else
        setFocus(last ? all.back() : all.front());
}

// Stays at either end.
void ExplorerBar::Impl::moveFocus(int step) {
    const std::vector<std::size_t> all = stops();
    const auto at = focus ? std::ranges::find(all, *focus) : all.end();
    if (at == all.end()) return moveFocusToEnd(false);
    const auto place = at - all.begin() + step;
    if (place >= 0 && place < static_cast<std::ptrdiff_t>(all.size()))
        setFocus(all[static_cast<std::size_t>(place)]);
}

// True when the key was one of the menu's.
bool ExplorerBar::Impl::keyDown(int key, bool shift, bool alt) {
    switch (key) {
    case WXK_TAB:
        return bar.Navigate(shift ? wxNavigationKeyEvent::IsBackward
                                  : wxNavigationKeyEvent::IsForward);
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
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        moveFocusToEnd(false);
        return true;
    case WXK_END:
    case WXK_NUMPAD_END:
        moveFocusToEnd(true);
        return true;
    case WXK_SPACE:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (alt) return false;
        if (focus) click(*focus);
        return true;
    default:
        return false;
    }
}

// The last thing done of any event: what it calls may end the window.
void ExplorerBar::Impl::click(std::size_t row) {
    const auto told = bar.OnItemClick;
    const std::string key = keyOf(layout.rows[row]);
    if (told) told(key);
}

} // namespace norvel::controls
