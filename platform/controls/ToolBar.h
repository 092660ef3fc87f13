// A toolbar whose buttons are found by key, drawn by itself so that its height is ours to set.
#pragma once

#include "platform/runtime/Api.h"

#include <wx/control.h>

#include <cstddef>
#include <functional>
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
    std::string Description; // shown as the tip
    ButtonStyle Style = ButtonStyle::Push;
    bool Enabled = true;
    bool Visible = true;
    int Value = 0; // 1 pressed, 0 released (Check)
    std::vector<ButtonMenu> ButtonMenus;
};

// Events are plain callbacks. All changes go through Change so that the bar repaints itself.
class NR_API ToolBar : public wxControl {
  public:
    ToolBar(wxWindow* parent, int heightTwips);
    ~ToolBar() override;

    void Add(Button button);
    std::size_t Count() const;
    // By key, case-blind; Errore 35601 ("Elemento non trovato") on a miss.
    const Button& Item(std::string_view key) const;
    const Button& Item(std::size_t index) const;
    void Change(std::string_view key, const std::function<void(Button&)>& change);
    int HeightTwips() const;
    // Where a button stands, in the bar's client pixels; empty when it is not visible.
    wxRect ButtonRect(std::string_view key) const;

    std::function<void(const Button&)> OnButtonClick;
    std::function<void(const Button&, const ButtonMenu&)> OnButtonMenuClick;

  private:
    struct Impl;
    Impl* impl_;
};

} // namespace norvel::controls
