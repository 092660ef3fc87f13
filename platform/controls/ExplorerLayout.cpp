#include "platform/controls/ExplorerLayout.h"

#include <algorithm>

namespace norvel::controls {

namespace {

// In units of the metrics.
constexpr int margin = 2;  // around and between the groups
constexpr int padding = 2; // inside a group, and around what stands in a row
constexpr int gap = 2;     // between an icon and its text

int textLeft(const ExplorerMetrics& metrics, bool withIcon) {
    const int left = (margin + 2 * padding) * metrics.unit;
    return withIcon ? left + metrics.icon + gap * metrics.unit : left;
}

int textRight(const ExplorerMetrics& metrics) {
    return metrics.width - (margin + 2 * padding) * metrics.unit;
}

// The words of a text, parted by single or several blanks.
std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0) words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

// A row as high as its lines, its icon level with the first of them.
ExplorerRow makeRow(std::size_t group, std::size_t item, int y, bool withIcon,
                    const ExplorerMetrics& metrics) {
    ExplorerRow row;
    row.group = group;
    row.item = item;
    const int inset = (margin + padding) * metrics.unit;
    row.box = {inset, y, std::max(0, metrics.width - 2 * inset), 0};
    row.textX = textLeft(metrics, withIcon);
    const int line = std::max(metrics.lineHeight, withIcon ? metrics.icon : 0);
    row.textY = y + padding * metrics.unit + (line - metrics.lineHeight) / 2;
    if (withIcon)
        row.icon = {textLeft(metrics, false),
                    y + padding * metrics.unit + (line - metrics.icon) / 2, metrics.icon,
                    metrics.icon};
    return row;
}

void closeRow(ExplorerRow& row, const ExplorerMetrics& metrics) {
    const auto lines =
        static_cast<int>(row.lines.size() + row.secondTitle.size() + row.description.size());
    const int below = row.textY - row.box.y;
    row.box.height = std::max(below + lines * metrics.lineHeight,
                              row.icon.height > 0 ? row.icon.y + row.icon.height - row.box.y : 0) +
                     padding * metrics.unit;
}

ExplorerRow headingRow(const ExplorerGroup& group, std::size_t index, int y,
                       const ExplorerMetrics& metrics) {
    ExplorerRow row = makeRow(index, ExplorerRow::heading, y, !group.IconKey.empty(), metrics);
    const int room = textRight(metrics) - row.textX;
    row.lines = wrapText(group.Caption, true, room, metrics);
    if (!group.SecondTitle.empty())
        row.secondTitle = wrapText(group.SecondTitle, false, room, metrics);
    if (!group.Description.empty())
        row.description = wrapText(group.Description, false, room, metrics);
    closeRow(row, metrics);
    return row;
}

ExplorerRow itemRow(const ExplorerItem& item, std::size_t group, std::size_t index, int y,
                    const ExplorerMetrics& metrics) {
    ExplorerRow row = makeRow(group, index, y, !item.IconKey.empty(), metrics);
    row.lines = wrapText(item.Caption, false, textRight(metrics) - row.textX, metrics);
    closeRow(row, metrics);
    return row;
}

} // namespace

std::vector<std::string> wrapText(std::string_view text, bool bold, int width,
                                  const ExplorerMetrics& metrics) {
    std::vector<std::string> lines(1);
    for (const std::string_view word : wordsOf(text)) {
        std::string& line = lines.back();
        const std::string longer =
            line.empty() ? std::string(word) : line + " " + std::string(word);
        if (line.empty() || metrics.textWidth(longer, bold) <= width)
            line = longer;
        else
            lines.emplace_back(word);
    }
    return lines;
}

ExplorerRows layoutExplorer(const std::vector<ExplorerGroup>& groups,
                            const ExplorerMetrics& metrics) {
    ExplorerRows all;
    const int side = margin * metrics.unit;
    int y = side;
    for (std::size_t g = 0; g < groups.size(); ++g) {
        const int top = y;
        y += padding * metrics.unit;
        all.rows.push_back(headingRow(groups[g], g, y, metrics));
        y += all.rows.back().box.height + padding * metrics.unit;
        for (std::size_t i = 0; i < groups[g].Items.size(); ++i) {
            all.rows.push_back(itemRow(groups[g].Items[i], g, i, y, metrics));
            y += all.rows.back().box.height;
        }
        y += padding * metrics.unit;
        all.groups.push_back({side, top, std::max(0, metrics.width - 2 * side), y - top});
        y += side;
    }
    all.height = y;
    return all;
}

int explorerWidth(const std::vector<ExplorerGroup>& groups, const ExplorerMetrics& metrics) {
    int widest = 0;
    const auto need = [&](std::string_view text, bool bold, bool withIcon, bool whole) {
        const std::vector<std::string_view> parts =
            whole ? std::vector<std::string_view>{text} : wordsOf(text);
        for (const std::string_view part : parts)
            widest = std::max(widest, textLeft(metrics, withIcon) + metrics.textWidth(part, bold));
    };
    for (const ExplorerGroup& group : groups) {
        for (const std::string* text : {&group.SecondTitle, &group.Description})
            need(*text, false, !group.IconKey.empty(), false);
        need(group.Caption, true, !group.IconKey.empty(), true);
        for (const ExplorerItem& item : group.Items)
            need(item.Caption, false, !item.IconKey.empty(), !item.Note);
    }
    return widest + (margin + 2 * padding) * metrics.unit;
}

} // namespace norvel::controls
