#include "platform/controls/ToolBarLayout.h"

namespace norvel::controls {

BarMetrics BarMetrics::forHeight(int height) {
    BarMetrics metrics;
    metrics.height = height;
    metrics.top = height / 16;
    metrics.side = height - 2 * metrics.top;
    metrics.icon = height * 5 / 8;
    metrics.icon -= (metrics.side - metrics.icon) % 2; // centred without half pixels
    metrics.arrow = height * 7 / 16;
    metrics.separator = height / 4 + 1;
    metrics.margin = height / 8;
    metrics.gap = height / 16;
    metrics.chevron = height * 5 / 8;
    return metrics;
}

namespace {

bool isSeparator(const Button& button) {
    return button.Style == ButtonStyle::Separator;
}

Slot slotFor(const Button& button, std::size_t index, int x, const BarMetrics& metrics) {
    Slot slot{index, x, metrics.side, 0};
    if (isSeparator(button)) slot.width = metrics.separator;
    if (button.Style == ButtonStyle::DropDown) {
        slot.arrow = metrics.arrow;
        slot.width += metrics.arrow;
    }
    return slot;
}

// A separator at an end of a list separates nothing.
void trimSeparators(std::vector<std::size_t>& list, const std::vector<Button>& buttons) {
    while (!list.empty() && isSeparator(buttons[list.back()]))
        list.pop_back();
    while (!list.empty() && isSeparator(buttons[list.front()]))
        list.erase(list.begin());
}

} // namespace

BarLayout layoutBar(const std::vector<Button>& buttons, const BarMetrics& metrics, int width) {
    BarLayout layout;
    int x = metrics.margin;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (!buttons[i].Visible) continue;
        layout.slots.push_back(slotFor(buttons[i], i, x, metrics));
        x += layout.slots.back().width + metrics.gap;
    }
    layout.naturalWidth = x - metrics.gap + metrics.margin;
    if (layout.slots.empty() || layout.naturalWidth <= width) return layout;

    const int room = width - metrics.chevron - metrics.margin;
    while (!layout.slots.empty() && (layout.slots.back().x + layout.slots.back().width > room ||
                                     isSeparator(buttons[layout.slots.back().button]))) {
        layout.overflow.insert(layout.overflow.begin(), layout.slots.back().button);
        layout.slots.pop_back();
    }
    trimSeparators(layout.overflow, buttons);
    if (!layout.overflow.empty())
        layout.chevron = Slot{buttons.size(), room < 0 ? 0 : room, metrics.chevron, 0};
    return layout;
}

} // namespace norvel::controls
