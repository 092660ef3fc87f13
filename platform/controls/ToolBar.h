// A toolbar whose buttons are found by key, drawn by itself so that its height is ours to set.
#pragma once

#include "platform/runtime/Api.h"

#include <wx/control.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::controls {

enum class ButtonStyle { Push, Check, DropDown, Separator };

struct ButtonMenu {
    std::string Key;
    std::string Text;
};

struct Button {
    std::string Key;
    std::string Description{}; // shown as the tip; without one, the key
    std::string Shortcut{};    // the keys that press it, told below that; empty: none
    ButtonStyle Style = ButtonStyle::Push;
    bool Enabled = true;
    bool Visible = true;
    int Value = 0; // 1 pressed, 0 released (Check)
    std::vector<ButtonMenu> ButtonMenus{};
};

// A row of buttons with icons of the system's own (Icons.h), found by key. It is heightTwips high
// at every scale and font: give it that height. Buttons that do not fit go into a menu behind a
// chevron at the right end.
//
// Mouse: a command runs when the button comes up where it went down; a click leaves the keyboard
// focus where it is. Keyboard: Tab into and out of the bar, Left/Right/Home/End between the enabled
// buttons, Space or Enter presses, Down opens a drop-down's menu. A Check button changes its Value
// before its click is told. Description is the tip and the name in the overflow menu.
//
// Events are plain callbacks; they may change the bar or destroy the window. All changes go through
// Change, which repaints only what they show.
class NR_API ToolBar : public wxControl {
  public:
    ToolBar(wxWindow* parent, int heightTwips);
    ~ToolBar() override;

    // At the end. Errore 35602 ("Chiave non univoca nell'insieme") on a key that is there; empty
    // keys may repeat.
    void Add(Button button);
    std::size_t Count() const;
    // By key, case-blind; Errore 35601 ("Elemento non trovato") on a miss. By place, from 0;
    // Errore 35600 ("Indice fuori dai limiti").
    const Button& Item(std::string_view key) const;
    const Button& Item(std::size_t index) const;
    // What the function throws leaves the button as it was.
    void Change(std::string_view key, const std::function<void(Button&)>& change);
    int HeightTwips() const;
    // Where a button stands, in the bar's client pixels, the arrow part included; empty when it is
    // not visible or in the overflow menu.
    wxRect ButtonRect(std::string_view key) const;
    // Where the chevron of the overflow menu stands; empty when every button fits.
    wxRect OverflowRect() const;
    // The button where the keyboard stands; "" while the bar has no focus.
    std::string FocusedKey() const;

    // As the operator does it, from the keyboard for one: a button that is not visible, disabled or
    // on a bar that is not shown stays as it is.
    void Press(std::string_view key);
    void OpenMenu(std::string_view key); // of a drop-down button, by its arrow

    std::function<void(const Button&)> OnButtonClick;
    std::function<void(const Button&, const ButtonMenu&)> OnButtonMenuClick;

  protected:
    wxSize DoGetBestClientSize() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace norvel::controls
