#include "platform/grid/export/ExportTable.h"

#include "platform/adodb/group/GroupRows.h"
#include "platform/grid/model/CheckBox.h"
#include "platform/runtime/Text.h"

#include <algorithm>

namespace norvel::grid {

namespace {

// The indexes of the group columns, outermost first, each once.
std::vector<int> groupColumns(const Columns& columns, const GridStyle& style) {
    std::vector<int> groups;
    if (style.DataView != groupView) return groups;
    for (const std::string& field : style.GroupColumns) {
        const int index = columns.IndexOf(field);
        if (index >= 0 && std::ranges::find(groups, index) == groups.end()) groups.push_back(index);
    }
    return groups;
}

ExportColumn exportColumn(const Column& column) {
    return {column.DataField, column.Caption, alignmentOf(column),
            column.DataType,  column.Width,   showsCheckBoxes(column)};
}

std::string sortByGroups(const Columns& columns, const std::vector<int>& groups,
                         const std::string& hostSort) {
    std::vector<std::string> fields;
    fields.reserve(groups.size());
    for (const int group : groups)
        fields.push_back(columns.Item(group).DataField);
    return adodb::sortText(adodb::groupKeys(fields, adodb::parseSort(hostSort)));
}

} // namespace

ExportTable exportTable(const Columns& columns, const GridStyle& style,
                        const std::string& hostSort) {
    const std::vector<int> groups = groupColumns(columns, style);
    ExportTable table;
    for (const int group : groups)
        table.columns.push_back(exportColumn(columns.Item(group)));
    for (const int shown : columns.Shown())
        if (std::ranges::find(groups, shown) == groups.end())
            table.columns.push_back(exportColumn(columns.Item(shown)));
    table.sort = groups.empty() ? hostSort : sortByGroups(columns, groups, hostSort);
    return table;
}

} // namespace norvel::grid
