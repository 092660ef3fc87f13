#include "platform/grid/layout/Layout.h"

#include <algorithm>

namespace norvel::grid {

Layout takeLayout(const Columns& columns, const Split& split, const GridStyle& style,
                  const std::vector<LayoutColumn>& dormant) {
    Layout layout{split, style, {}};
    layout.Columns.reserve(static_cast<std::size_t>(columns.Count()) + dormant.size());
    for (int i = 0; i < columns.Count(); ++i) {
        const Column& column = columns.Item(i);
        layout.Columns.push_back({column.DataField, column.Caption, column.Width, column.Order,
                                  column.Visible, column.ValueItems});
    }
    for (const LayoutColumn& column : dormant)
        if (columns.IndexOf(column.DataField) < 0) layout.Columns.push_back(column);
    return layout;
}

std::vector<LayoutColumn> applyLayout(const Layout& layout, Columns& columns, Split& split,
                                      GridStyle& style) {
    split = layout.Split;
    style = layout.Style;
    return applyColumns(layout.Columns, columns);
}

std::vector<LayoutColumn> applyColumns(const std::vector<LayoutColumn>& looks, Columns& columns) {
    std::vector<LayoutColumn> dormant;
    std::vector<bool> named(static_cast<std::size_t>(columns.Count()));
    int behind = 0;
    for (const LayoutColumn& look : looks) {
        behind = std::max(behind, look.Order + 1);
        const int index = columns.IndexOf(look.DataField);
        if (index < 0) {
            dormant.push_back(look);
            continue;
        }
        named[static_cast<std::size_t>(index)] = true;
        Column& column = columns.Item(index);
        column.Caption = look.Caption;
        column.Width = look.Width;
        column.Order = look.Order;
        column.Visible = look.Visible;
        column.ValueItems = look.ValueItems;
    }
    for (const int index : columns.InOrder())
        if (!named[static_cast<std::size_t>(index)]) columns.Item(index).Order = behind++;
    return dormant;
}

} // namespace norvel::grid
