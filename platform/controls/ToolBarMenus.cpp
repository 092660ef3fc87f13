// What a toolbar's buttons set off: commands, and the menus of drop-down buttons and of the
// overflow.
#include "platform/controls/ToolBarImpl.h"
#include "platform/controls/WxText.h"

#include <wx/menu.h>
#include <wx/weakref.h>

#include <utility>

namespace norvel::controls {

namespace {

// What an entry of an open menu stands for.
struct Entry {
    std::size_t button = 0;
    std::optional<std::size_t> menu; // of its ButtonMenus
};

// Texts are an operator's own: no character in them is a mnemonic or begins a shortcut.
wxString entryText(const std::string& text) {
    wxString shown = wxControl::EscapeMnemonics(toWx(text));
    shown.Replace("\t", " ");
    return shown.empty() ? wxString(" ") : shown;
}

// A menu that remembers what its entries stand for; an entry's identifier is its place, from 1.
class EntryMenu {
  public:
    wxMenu menu;
    std::vector<Entry> entries;

    wxMenuItem* add(wxMenu& to, const std::string& text, Entry entry,
                    wxItemKind kind = wxITEM_NORMAL) {
        entries.push_back(entry);
        return to.Append(static_cast<int>(entries.size()), entryText(text), wxString(), kind);
    }
    void addButtonMenus(wxMenu& to, const Button& button, std::size_t index) {
        for (std::size_t i = 0; i < button.ButtonMenus.size(); ++i)
            add(to, button.ButtonMenus[i].Text, {index, i});
    }
    void addButton(const Button& button, std::size_t index, bool usable) {
        if (button.Style == ButtonStyle::Separator) {
            menu.AppendSeparator();
        } else if (button.Style == ButtonStyle::DropDown && !button.ButtonMenus.empty()) {
            auto sub = std::make_unique<wxMenu>();
            add(*sub, nameOf(button), {index, std::nullopt});
            sub->AppendSeparator();
            addButtonMenus(*sub, button, index);
            wxMenu* owned = sub.release();
            menu.AppendSubMenu(owned, entryText(nameOf(button)))->Enable(usable);
        } else {
            const bool checkable = button.Style == ButtonStyle::Check;
            wxMenuItem* item = add(menu, nameOf(button), {index, std::nullopt},
                                   checkable ? wxITEM_CHECK : wxITEM_NORMAL);
            if (checkable) item->Check(button.Value != 0);
            item->Enable(usable);
        }
    }
    // Shows it under a button and waits; what was chosen, if anything. The menu is the focused
    // window's, since the toolkit takes an open menu's window for the one that has the focus: a
    // field would believe that it was left.
    std::optional<Entry> choose(ToolBar& bar, const wxRect& under) {
        wxWindow* const focused = wxWindow::FindFocus();
        wxWindow& owner = focused != nullptr ? *focused : bar;
        const wxPoint at = owner.ScreenToClient(bar.ClientToScreen(under.GetBottomLeft()));
        const int id = owner.GetPopupMenuSelectionFromUser(menu, at);
        if (id < 1 || id > static_cast<int>(entries.size())) return std::nullopt;
        return entries[static_cast<std::size_t>(id) - 1];
    }
};

} // namespace

const std::string& nameOf(const Button& button) {
    return button.Description.empty() ? button.Key : button.Description;
}

// Callbacks get copies and nothing is touched after them: a command may change the buttons or
// close the window with the bar in it.
void ToolBar::Impl::press(std::size_t button) {
    if (buttons[button].Style == ButtonStyle::Check) {
        buttons[button].Value = buttons[button].Value != 0 ? 0 : 1;
        refresh(Spot{Spot::Part::Button, button});
    }
    const Button copy = buttons[button];
    const auto callback = bar.OnButtonClick;
    if (callback) callback(copy);
}

void ToolBar::Impl::openButtonMenu(std::size_t button) {
    if (buttons[button].ButtonMenus.empty()) return;
    const Button copy = buttons[button]; // the menu's texts hold while it is open
    EntryMenu menu;
    menu.addButtonMenus(menu.menu, copy, button);
    const Spot spot =
        slotOf(button) ? Spot{Spot::Part::Arrow, button} : Spot{Spot::Part::Chevron, 0};
    opened = spot;
    showTip();
    refresh(opened);
    const wxWeakRef<ToolBar> alive(&bar);
    const std::optional<Entry> chosen = menu.choose(bar, rectOf(spot));
    if (!alive) return; // the window was closed under the open menu
    refresh(std::exchange(opened, std::nullopt));
    setHover(partAt(bar.ScreenToClient(wxGetMousePosition())));
    showTip();
    const auto callback = bar.OnButtonMenuClick;
    if (chosen && callback) callback(copy, copy.ButtonMenus[*chosen->menu]);
}

void ToolBar::Impl::openOverflowMenu() {
    EntryMenu menu;
    for (const std::size_t each : layout.overflow)
        menu.addButton(buttons[each], each, usable(each));
    const std::vector<Button> copies = buttons;
    opened = Spot{Spot::Part::Chevron, 0};
    showTip();
    refresh(opened);
    const wxWeakRef<ToolBar> alive(&bar);
    const std::optional<Entry> chosen = menu.choose(bar, rectOf(*opened));
    if (!alive) return;
    refresh(std::exchange(opened, std::nullopt));
    setHover(partAt(bar.ScreenToClient(wxGetMousePosition())));
    showTip();
    if (!chosen || !usable(chosen->button)) return;
    if (!chosen->menu) return press(chosen->button);
    const auto callback = bar.OnButtonMenuClick;
    const Button& copy = copies[chosen->button];
    if (callback) callback(copy, copy.ButtonMenus[*chosen->menu]);
}

} // namespace norvel::controls
