#include "platform/controls/ToolBar.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::controls {

struct ToolBar::Impl {
    std::vector<Button> buttons;
    int heightTwips = 0;

    Button& find(std::string_view key) {
        const auto found = std::ranges::find_if(
            buttons, [&](const Button& button) { return equalsText(button.Key, key); });
        if (found == buttons.end()) throw Errore(35601, "Elemento non trovato");
        return *found;
    }
};

ToolBar::ToolBar(wxWindow* parent, int heightTwips)
    : wxControl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS),
      impl_(new Impl) {
    impl_->heightTwips = heightTwips;
}

ToolBar::~ToolBar() {
    delete impl_;
}

void ToolBar::Add(Button button) {
    impl_->buttons.push_back(std::move(button));
    Refresh();
}

std::size_t ToolBar::Count() const {
    return impl_->buttons.size();
}

const Button& ToolBar::Item(std::string_view key) const {
    return impl_->find(key);
}

const Button& ToolBar::Item(std::size_t index) const {
    return impl_->buttons.at(index);
}

void ToolBar::Change(std::string_view key, const std::function<void(Button&)>& change) {
    change(impl_->find(key));
    Refresh();
}

int ToolBar::HeightTwips() const {
    return impl_->heightTwips;
}

wxRect ToolBar::ButtonRect(std::string_view key) const {
    int x = 0;
    for (const Button& button : impl_->buttons) {
        if (!button.Visible) continue;
        if (equalsText(button.Key, key)) return {x, 0, 32, 32};
        x += 32;
    }
    return {};
}

} // namespace norvel::controls
