// Mouse and keyboard: see the contract in ValueList.h.
#include "platform/controls/ValueList.h"
#include "platform/controls/ValueListTexts.h"
#include "platform/controls/WxText.h"

#include <wx/dcclient.h>
#include <wx/scrolbar.h>
#include <wx/time.h>

#include <algorithm>

namespace norvel::controls {

namespace {

constexpr int oneText = 1000; // milliseconds within which letters belong together
constexpr int linesPerNotch = 3;

} // namespace

void ValueList::listen() {
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& e) {
        Refresh(false);
        e.Skip();
    });
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& e) {
        pressed_ = true;
        if (!HasCapture()) CaptureMouse();
        mouseMoved(e.GetPosition(), true);
    });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& e) {
        pressed_ = true;
        if (!HasCapture()) CaptureMouse();
        mouseMoved(e.GetPosition(), true);
    });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& e) {
        const bool clicked = pressed_ && itemAt(e.GetPosition()) >= 0;
        pressed_ = false;
        if (HasCapture()) ReleaseMouse();
        if (clicked) click();
    });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { pressed_ = false; });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& e) { mouseMoved(e.GetPosition(), pressed_); });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
        hot_ = -1;
        Refresh(false);
    });
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& e) {
        wheel_ += e.GetWheelRotation();
        const int notches = wheel_ / std::max(1, e.GetWheelDelta());
        wheel_ -= notches * e.GetWheelDelta();
        const int lines = e.IsPageScroll() ? ItemsInView() : linesPerNotch;
        scrollTo(static_cast<long long>(top_) - notches * lines);
        mouseMoved(e.GetPosition(), false);
    });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& e) {
        if (!keyDown(e)) e.Skip();
    });
    Bind(wxEVT_CHAR, [this](wxKeyEvent& e) {
        const wxChar32 character = static_cast<wxChar32>(e.GetUnicodeKey());
        if (character < ' ' || character == WXK_DELETE || e.ControlDown() || e.AltDown())
            return e.Skip();
        typed(character);
    });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& e) {
        CallAfter(&ValueList::focusLost);
        e.Skip();
    });
}

// Once the focus is where it goes: some systems give it to a scroll bar that is clicked.
void ValueList::focusLost() {
    if (HasFocus()) return;
    if (IsShown() && FindFocus() == bar_)
        SetFocus();
    else
        CloseUp();
}

// --- mouse ---

int ValueList::itemAt(wxPoint at) const {
    const wxRect room = roomForItems();
    if (!room.Contains(at)) return -1;
    const long long index = top_ + (at.y - room.y) / itemHeight();
    return index < static_cast<long long>(ListCount()) ? static_cast<int>(index) : -1;
}

void ValueList::mouseMoved(wxPoint at, bool dragging) {
    const int item = itemAt(at);
    if (item != hot_) {
        hot_ = item;
        showTip(item);
        Refresh(false);
    }
    if (dragging && item >= 0 && item != current_) makeCurrent(item);
}

// An entry that is cut shows all of itself while the mouse rests on it.
void ValueList::showTip(int index) {
    UnsetToolTip();
    if (index < 0) return;
    const std::string_view entry = items_.At(static_cast<std::size_t>(index));
    wxClientDC dc(this);
    dc.SetFont(GetFont());
    const int room =
        roomForItems().width - 2 * FromDIP(textMargin) - (multiple_ ? itemHeight() : 0);
    if (dc.GetTextExtent(shownText(entry)).x > room) SetToolTip(shownText(entry));
}

// --- keyboard ---

bool ValueList::keyDown(const wxKeyEvent& event) {
    if (event.ControlDown()) return false;
    const int code = event.GetKeyCode();
    if (event.AltDown()) {
        if (code != WXK_UP && code != WXK_NUMPAD_UP) return false;
        CloseUp();
        return true;
    }
    const auto count = static_cast<long long>(ListCount());
    const bool inText = !typed_.empty() && wxGetUTCTimeMillis() - typedAt_ < oneText;
    switch (code) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
        return step(-1), true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        return step(1), true;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
        return step(1 - std::max(2, ItemsInView())), true;
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
        return step(std::max(2, ItemsInView()) - 1), true;
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        return step(-count), true;
    case WXK_END:
    case WXK_NUMPAD_END:
        return step(count), true;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        return enter(), true;
    case WXK_SPACE:
        if (inText) return false; // a blank inside what is typed
        return (multiple_ ? toggle() : enter()), true;
    case WXK_ESCAPE:
    case WXK_TAB:
    case WXK_F4:
        return CloseUp(), true;
    default:
        return false;
    }
}

void ValueList::step(long long by) {
    const auto count = static_cast<long long>(ListCount());
    if (count == 0) return;
    typed_.clear();
    const long long from = current_ < 0 && by > 0 ? -1 : current_;
    makeCurrent(static_cast<int>(std::clamp(from + by, 0LL, count - 1)));
}

// One letter again and again leads to one entry after the other; otherwise the letters are one
// text, and an entry that still begins with it stays the current one.
void ValueList::typed(wxChar32 character) {
    const wxLongLong now = wxGetUTCTimeMillis();
    if (now - typedAt_ >= oneText) typed_.clear();
    typedAt_ = now;
    const std::string letter = fromWx(wxString(wxUniChar(character)));
    const bool again = typed_ == letter;
    if (!again) typed_ += letter;
    const auto from = static_cast<std::size_t>(std::max(0, current_));
    const bool onwards = again || typed_ == letter;
    const auto found = items_.FindPrefix(typed_, from + (onwards ? 1 : 0));
    if (found) makeCurrent(static_cast<int>(*found));
}

void ValueList::enter() {
    if (!multiple_) return click();
    if (selected_.empty() && current_ >= 0) click();
    CloseUp();
}

// The entry is current by now.
void ValueList::click() {
    if (current_ < 0) return;
    if (multiple_) return toggle();
    if (OnClick) OnClick();
}

void ValueList::toggle() {
    if (current_ < 0) return;
    const auto index = static_cast<std::size_t>(current_);
    SetSelected(index, !Selected(index));
    if (OnClick) OnClick();
}

} // namespace norvel::controls
