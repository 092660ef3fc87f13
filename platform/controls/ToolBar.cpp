#include "platform/controls/ToolBar.h"

#include "platform/controls/ToolBarImpl.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Twips.h"

#include <algorithm>
#include <utility>

namespace norvel::controls {

ToolBar::ToolBar(wxWindow* parent, int heightTwips)
    : wxControl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS),
      impl_(std::make_unique<Impl>(*this, heightTwips)) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    impl_->layOut();
    impl_->listen();
    SetInitialSize();
}

ToolBar::~ToolBar() = default;

void ToolBar::Add(Button button) {
    const bool taken = std::ranges::any_of(impl_->buttons, [&](const Button& other) {
        return !button.Key.empty() && equalsText(other.Key, button.Key);
    });
    if (taken) throw Errore(35602, "Chiave non univoca nell'insieme");
    impl_->buttons.push_back(std::move(button));
    impl_->layOut();
}

std::size_t ToolBar::Count() const {
    return impl_->buttons.size();
}

const Button& ToolBar::Item(std::string_view key) const {
    return impl_->buttons[impl_->indexOf(key)];
}

const Button& ToolBar::Item(std::size_t index) const {
    if (index >= Count()) throw Errore(35600, "Indice fuori dai limiti");
    return impl_->buttons[index];
}

// On a copy, so that a change that fails half way leaves the button as it was.
void ToolBar::Change(std::string_view key, const std::function<void(Button&)>& change) {
    const std::size_t index = impl_->indexOf(key);
    Button button = impl_->buttons[index];
    change(button);
    std::swap(impl_->buttons[index], button);
    impl_->changed(index, button);
}

int ToolBar::HeightTwips() const {
    return impl_->heightTwips;
}

wxRect ToolBar::ButtonRect(std::string_view key) const {
    const Slot* slot = impl_->slotOf(impl_->indexOf(key));
    return slot != nullptr ? impl_->rectOf(*slot) : wxRect();
}

wxRect ToolBar::OverflowRect() const {
    return impl_->layout.chevron ? impl_->rectOf(*impl_->layout.chevron) : wxRect();
}

std::string ToolBar::FocusedKey() const {
    if (!HasFocus() || !impl_->focus || impl_->focus->part == Spot::Part::Chevron) return {};
    return impl_->buttons[impl_->focus->button].Key;
}

void ToolBar::Press(std::string_view key) {
    const std::size_t index = impl_->indexOf(key);
    if (IsShown() && impl_->usable(index)) impl_->press(index);
}

void ToolBar::OpenMenu(std::string_view key) {
    const std::size_t index = impl_->indexOf(key);
    if (IsShown() && impl_->usable(index)) impl_->openButtonMenu(index);
}

wxSize ToolBar::DoGetBestClientSize() const {
    return {impl_->layout.naturalWidth, impl_->metrics().height};
}

double ToolBar::Impl::scale() const {
    return bar.FromDIP(1000) / 1000.0;
}

BarMetrics ToolBar::Impl::metrics() const {
    return BarMetrics::forHeight(twipsToPixels(heightTwips, scale()));
}

std::size_t ToolBar::Impl::indexOf(std::string_view key) const {
    const auto found = std::ranges::find_if(
        buttons, [&](const Button& button) { return equalsText(button.Key, key); });
    if (found == buttons.end()) throw Errore(35601, "Elemento non trovato");
    return static_cast<std::size_t>(found - buttons.begin());
}

bool ToolBar::Impl::usable(std::size_t button) const {
    return button < buttons.size() && buttons[button].Enabled && buttons[button].Visible &&
           buttons[button].Style != ButtonStyle::Separator && bar.IsThisEnabled();
}

// Places everything anew: the buttons, their visibility or the bar's width changed.
void ToolBar::Impl::layOut() {
    layout = layoutBar(buttons, metrics(), bar.GetClientSize().x);
    bar.InvalidateBestSize();
    bar.Refresh();
}

// Repaints what a change of one button shows, which may be nothing.
void ToolBar::Impl::changed(std::size_t index, const Button& before) {
    const Button& now = buttons[index];
    if (now.Visible != before.Visible || now.Style != before.Style) return layOut();
    const bool looksOther = now.Enabled != before.Enabled || now.Value != before.Value ||
                            now.ButtonMenus.empty() != before.ButtonMenus.empty() ||
                            !equalsText(now.Key, before.Key);
    const Slot* slot = slotOf(index);
    if (slot != nullptr && looksOther) bar.RefreshRect(rectOf(*slot), false);
    if (now.Description != before.Description || now.Shortcut != before.Shortcut) showTip();
}

const Slot* ToolBar::Impl::slotOf(std::size_t button) const {
    const auto found =
        std::ranges::find_if(layout.slots, [&](const Slot& slot) { return slot.button == button; });
    return found != layout.slots.end() ? &*found : nullptr;
}

wxRect ToolBar::Impl::rectOf(const Slot& slot) const {
    const BarMetrics sizes = metrics();
    return {slot.x, sizes.top, slot.width, sizes.side};
}

wxRect ToolBar::Impl::rectOf(Spot spot) const {
    if (spot.part == Spot::Part::Chevron)
        return layout.chevron ? rectOf(*layout.chevron) : wxRect();
    const Slot* slot = slotOf(spot.button);
    return slot != nullptr ? rectOf(*slot) : wxRect();
}

} // namespace norvel::controls
