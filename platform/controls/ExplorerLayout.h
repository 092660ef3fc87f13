// Where the parts of a side menu stand: the arithmetic, without the window.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::controls {

// An entry of a side menu. A note is a text to read, not a command: it wraps over many lines.
struct ExplorerItem {
    std::string Key;     // what its click tells
    std::string IconKey; // see Icons.h
    std::string Caption;
    std::string Description{}; // its tip
    bool Note = false;
};

// A box with a heading and its entries.
struct ExplorerGroup {
    std::string Key;       // what a click on its heading tells
    std::string IconKey{}; // "": none
    std::string Caption;
    std::string SecondTitle{}; // under the caption
    std::string Description{}; // under both, wrapped
    bool Special = false;      // the heading stands out
    std::vector<ExplorerItem> Items{};
};

// What is measured, in pixels.
struct ExplorerMetrics {
    int width = 0;      // of the whole menu
    int lineHeight = 0; // of a text
    int icon = 0;       // the side of its square
    int unit = 1;       // what margins are multiples of
    std::function<int(std::string_view text, bool bold)> textWidth;
};

struct ExplorerBox {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const ExplorerBox&) const = default;
};

// A heading or an entry, with what it says broken into lines.
struct ExplorerRow {
    static constexpr std::size_t heading = static_cast<std::size_t>(-1);
    std::size_t group = 0;
    std::size_t item = heading; // of the group
    ExplorerBox box;
    ExplorerBox icon;               // empty without one
    int textX = 0, textY = 0;       // of the first line
    std::vector<std::string> lines; // the caption
    std::vector<std::string> secondTitle, description;
    bool IsHeading() const { return item == heading; }
};

struct ExplorerRows {
    std::vector<ExplorerRow> rows; // from top to bottom
    std::vector<ExplorerBox> groups;
    int height = 0;
};

// Breaks at blanks; a word wider than a line has the line to itself. At least one line.
NR_API std::vector<std::string> wrapText(std::string_view text, bool bold, int width,
                                         const ExplorerMetrics& metrics);
NR_API ExplorerRows layoutExplorer(const std::vector<ExplorerGroup>& groups,
                                   const ExplorerMetrics& metrics);
// The least width at which no caption of a command and no single word is cut.
NR_API int explorerWidth(const std::vector<ExplorerGroup>& groups, const ExplorerMetrics& metrics);

} // namespace norvel::controls
