// A list of values that drops down under a cell.
#pragma once

#include "platform/controls/ValueItems.h"
#include "platform/runtime/Api.h"

#include <wx/control.h>
#include <wx/timer.h>

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>

class wxScrollBar;

namespace norvel::controls {

// A list box over its sibling windows, hidden until DropUnder. It is virtual: entries may be added
// by the hundred thousand while it is open, and only those in view are measured and drawn. It is as
// wide as what has come into view needs, as far as the area that it is given reaches.
//
// Mouse: an entry is clicked when the button comes up over it; the wheel scrolls. Keyboard: arrows,
// page keys, Home and End move the current entry; letters lead to the next entry that begins with
// them (what is typed within a second is one text); Enter clicks the current entry; Esc, Tab, F4
// and Alt+Up close the list. With several choices a click turns an entry on or off, as does Space;
// Enter takes the current entry if nothing is on, and closes.
//
// Focus that goes elsewhere hides the list. Entries count from 0.
class NR_API ValueList : public wxControl {
  public:
    explicit ValueList(wxWindow* parent);

    // --- entries ---
    void Clear(); // the current entry and what is selected go with them
    void AddItem(std::string_view text);
    std::size_t ListCount() const { return items_.Count(); }
    std::string List(std::size_t index) const; // Errore 9 on a bad index
    int ListIndex() const { return current_; } // -1: none
    void SetListIndex(int index);              // scrolls it into view; Errore 9 on a bad index
    std::string Text() const;                  // of the current entry, "" without one
    // One choice: the current entry is the selected one.
    bool Selected(std::size_t index) const;
    void SetSelected(std::size_t index, bool selected); // with several choices
    bool MultiSelect() const { return multiple_; }
    void SetMultiSelect(bool multiple);
    // A line below the entries, for what the operator should know of them; "": none.
    void SetNote(const std::string& note);
    const std::string& Note() const { return note_; }

    // --- on screen ---
    // Shows the list under a cell, or over it where there is no room, with the keyboard focus. It
    // keeps within an area that holds the cell. Both in the parent's client area.
    void DropUnder(const wxRect& cell, const wxRect& within);
    // Hides it and calls OnCloseUp; nothing when it is hidden.
    void CloseUp();
    std::size_t FirstItem() const { return static_cast<std::size_t>(top_); }
    int ItemsInView() const; // whole ones
    // In the list's client area; empty for what is not in view.
    wxRect ItemRect(std::size_t index) const;

    std::function<void()> OnClick; // the current entry was clicked; the list is still open
    // The list was hidden. hadFocus: it had the keyboard focus until then, nobody has it now.
    std::function<void(bool hadFocus)> OnCloseUp;

    bool AcceptsFocus() const override { return true; }

  private:
    // placing (ValueList.cpp)
    double scale() const;
    int itemHeight() const;
    int noteHeight() const;
    int border() const;
    void changed();
    void settle();
    void place();
    int widthInView() const;
    void scrollTo(long long first);
    void makeCurrent(int index);
    void checkIndex(std::size_t index) const;
    wxRect roomForItems() const;

    // input (ValueListInput.cpp)
    void listen();
    void focusLost();
    int itemAt(wxPoint at) const;
    void mouseMoved(wxPoint at, bool dragging);
    void showTip(int index);
    bool keyDown(const wxKeyEvent& event);
    void typed(wxChar32 character);
    void step(long long by);
    void enter();
    void click();
    void toggle();

    // painting (ValueListPaint.cpp)
    void paint();
    void paintItem(wxDC& dc, std::size_t index, const wxRect& box);

    ValueItems items_;
    std::set<std::size_t> selected_;
    wxScrollBar* bar_ = nullptr;
    wxRect cell_, within_;
    int current_ = -1;
    int hot_ = -1;  // under the mouse
    int top_ = 0;   // the first entry in view
    int width_ = 0; // the widest so far of what came into view
    bool multiple_ = false;
    bool pressed_ = false;
    bool settleAsked_ = false;
    std::string note_;
    std::string typed_; // what was typed within the last second
    wxLongLong typedAt_ = 0;
    int wheel_ = 0; // what a notch is still to be made of
};

} // namespace norvel::controls
