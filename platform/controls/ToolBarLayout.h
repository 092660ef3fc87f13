// Where a toolbar's buttons stand: pure arithmetic on pixels.
#pragma once

#include "platform/controls/ToolBar.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace norvel::controls {

// Sizes in logical pixels, all following from the bar's height.
struct BarMetrics {
    int height = 0;
    int top = 0;       // of a button
    int side = 0;      // of a button without arrow
    int icon = 0;      // side of its icon
    int arrow = 0;     // width of the arrow part of a drop-down button
    int separator = 0; // width
    int margin = 0;    // before the first button and after the last
    int gap = 0;       // between buttons
    int chevron = 0;   // width of the overflow button
    static BarMetrics forHeight(int height);
};

struct Slot {
    std::size_t button = 0;
    int x = 0;
    int width = 0; // arrow part included
    int arrow = 0; // width of that part, 0 without one
};

struct BarLayout {
    std::vector<Slot> slots;           // visible buttons that fit, left to right, separators too
    std::vector<std::size_t> overflow; // visible buttons that do not, without outer separators
    std::optional<Slot> chevron;       // what opens the overflow menu; its button counts nothing
    int naturalWidth = 0;              // that would hold them all
};

// Lays out the visible buttons in their order. Once one does not fit, none after it is shown.
BarLayout layoutBar(const std::vector<Button>& buttons, const BarMetrics& metrics, int width);

} // namespace norvel::controls
