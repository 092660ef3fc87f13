#include "platform/grid/model/DefaultColumns.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

constexpr double narrowest = 480;
constexpr double pictureRoom = 300; // in a heading, for the arrow that sorting shows
constexpr double widest = 6000;
constexpr std::size_t measured = 3; // of a column's texts, the longest

// A text such as the field's type holds: the least a column of the type is made for.
std::string_view typicalText(DataTypeEnum type) {
    if (type == adDBTimeStamp || type == adFileTime) return "00/00/0000 00.00.00";
    if (type == adDBTime) return "00.00.00";
    if (isDateType(type)) return "00/00/0000";
    if (type == adBoolean) return "False";
    if (type == adSmallInt || type == adTinyInt || type == adUnsignedTinyInt) return "00000";
    if (isNumberType(type)) return "00000000";
    return "abcdefgh";
}

// Without a row to go by, a text field is as wide as a part of what it may hold.
std::string emptyText(Field& field) {
    const auto size = std::clamp<std::int64_t>(field.DefinedSize(), 8, 24);
    return std::string(static_cast<std::size_t>(size), 'n');
}

} // namespace

double fittingWidth(std::string_view caption, const std::vector<std::string>& texts,
                    const MeasureText& measure, double margin) {
    std::vector<std::size_t> order(texts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto length = [&](std::size_t i) { return lengthText(texts[i]); };
    const std::size_t count = std::min(measured, order.size());
    std::ranges::partial_sort(order, order.begin() + static_cast<std::ptrdiff_t>(count),
                              std::ranges::greater{}, length);
    double width = measure(caption) + pictureRoom;
    for (std::size_t i = 0; i < count; ++i)
        width = std::max(width, measure(texts[order[i]]));
    return std::clamp(width + margin, narrowest, widest);
}

Columns defaultColumns(Fields& fields, RowReader& rows, RowCache& cache, const MeasureText& measure,
                       double margin) {
    std::vector<int> all(static_cast<std::size_t>(fields.Count()));
    std::iota(all.begin(), all.end(), 0);
    rows.Fill(cache, 0, sampledRows, all);
    // Numbers grow towards the end: the last row is looked at too.
    const RowCount sampled = std::min(sampledRows, rows.Rows());
    rows.Fill(cache, rows.Rows() - 1, 1, all);
    Columns columns;
    for (const int i : all) {
        Field& field = fields(i);
        Column column;
        column.DataField = field.Name();
        column.Caption = column.DataField;
        column.Order = i;
        column.DataType = field.Type();
        std::vector<std::string> texts;
        for (RowCount row = 0; row < sampled; ++row)
            if (const std::string* text = cache.Text(row, i)) texts.push_back(*text);
        if (const std::string* text = cache.Text(rows.Rows() - 1, i)) texts.push_back(*text);
        const bool isText = alignmentOf(column) == Alignment::Left;
        if (texts.empty() && isText && !isBinaryType(column.DataType))
            texts.push_back(emptyText(field));
        if (!isText) texts.emplace_back(typicalText(column.DataType));
        column.Width = fittingWidth(column.Caption, texts, measure, margin);
        columns.Add(std::move(column));
    }
    return columns;
}

} // namespace norvel::grid
